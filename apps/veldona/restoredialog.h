// The kept backups and the books that one took the place of, of which the operator chooses one.
#pragma once

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QDialog>

#include "backup/keeping.h"

class QPushButton;
class QTableWidget;
class QThread;

namespace veldona {

// What they hold is read on a thread of its own and appears row by row, the newest first.
class RestoreDialog : public QDialog {
public:
    // `all`: the oldest first. `folder`: of the backups, which is told.
    RestoreDialog(QWidget* parent, const std::string& folder, std::vector<backup::Restorable> all);
    ~RestoreDialog() override;

    // The whole path; nothing where no row is chosen.
    [[nodiscard]] std::optional<std::string> chosen() const;

private:
    void fill();
    void readAll();
    void showRow(int row, const QStringList& cells);

    std::vector<backup::Restorable> all_; // the newest first, as the rows
    QTableWidget* table_;
    QPushButton* go_;
    std::atomic<bool> stopped_ = false;
    std::unique_ptr<QThread> reader_;
};

} // namespace veldona
