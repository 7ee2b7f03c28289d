// What the program keeps for the person at this machine, beside the books: where a file went last, which
// printer took a receipt. Losing it costs a click, so a file that can't be read or written is passed over.
#pragma once

#include <memory>

#include <QSettings>
#include <QVariantMap>

namespace veldona {

class UserSettings {
public:
    // Until then, and in the tests, it is kept for the run alone.
    void keepIn(const QString& file) { file_ = std::make_unique<QSettings>(file, QSettings::IniFormat); }

    [[nodiscard]] QVariant value(const QString& key) const {
        return file_ ? file_->value(key) : ofThisRun_.value(key);
    }
    void set(const QString& key, const QVariant& value) {
        file_ ? file_->setValue(key, value) : void(ofThisRun_.insert(key, value));
    }

private:
    std::unique_ptr<QSettings> file_;
    QVariantMap ofThisRun_;
};

} // namespace veldona
