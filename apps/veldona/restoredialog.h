// The kept backups, of which the operator chooses one.
#pragma once

#include <atomic>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <QDialog>

class QPushButton;
class QTableWidget;
class QThread;

namespace veldona {

// What the backups hold is read on a thread of its own and appears row by row, the newest first.
class RestoreDialog : public QDialog {
public:
    // `names`: of the backups in `folder`, the oldest first.
    RestoreDialog(QWidget* parent, std::string folder, const std::vector<std::string>& names);
    ~RestoreDialog() override;

    // The whole path; nothing where no row is chosen.
    [[nodiscard]] std::optional<std::string> chosen() const;

private:
    void fill();
    void readAll();
    void showRow(int row, const QStringList& cells);

    std::string folder_;
    std::vector<std::string> names_; // the newest first, as the rows
    QTableWidget* table_;
    QPushButton* go_;
    std::atomic<bool> stopped_ = false;
    std::unique_ptr<QThread> reader_;
};

} // namespace veldona
