// The kept backups and the books that one took the place of, of which the operator chooses one.
#pragma once

#include <atomic>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QDialog>

#include "backup/keeping.h"

class QLabel;
class QPushButton;
class QTableWidget;
class QThread;

namespace veldona {

// What they hold is read on a thread of its own and appears row by row, the newest first.
class RestoreDialog : public QDialog {
public:
    using Browse = std::function<std::optional<std::string>()>;
    // `all`: the oldest first. `folder`: the usual one, which is told where there is none. `browse` has the
    // operator look for a file that is not in the list.
    RestoreDialog(QWidget* parent, const std::string& folder, std::vector<backup::Restorable> all,
                  Browse browse);
    ~RestoreDialog() override;

    // The whole path; nothing where neither a row nor a file is chosen.
    [[nodiscard]] std::optional<std::string> chosen() const;

private:
    void fill();
    void lookElsewhere(const Browse& browse);
    void showFile();
    void readAll();
    void showRow(int row, const QStringList& cells);

    std::vector<backup::Restorable> all_;  // the newest first, as the rows
    std::optional<std::string> elsewhere_; // a file that was looked for
    QTableWidget* table_;
    QLabel* file_;
    QPushButton* go_;
    std::atomic<bool> stopped_ = false;
    std::unique_ptr<QThread> reader_;
};

} // namespace veldona
