// The words that the toolkit itself puts on the screen, in Turkish: the menu of a text field, a calendar's
// tips, the dialogs that ask for a file or a printer.
//
// The house's own words come first, so that one thing has one name in all windows; the toolkit's translation
// says the rest.
#pragma once

#include <QTranslator>

class QFileDialog;

namespace veldona {

class TurkishTexts : public QTranslator {
public:
    explicit TurkishTexts(QObject* parent = nullptr);
    [[nodiscard]] bool isEmpty() const override { return false; }
    [[nodiscard]] QString translate(const char* context, const char* source, const char* disambiguation,
                                    int n) const override;

private:
    QTranslator toolkit_;
};

// The times in a list of files: the toolkit writes them as the system's language does, which may be none.
void showTurkishTimes(QFileDialog& dialog);

} // namespace veldona
