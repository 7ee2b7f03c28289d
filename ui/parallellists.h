// Lists that are columns of one table: they scroll as one, under one scroll bar at the right, and show the
// focus as one (property "active" of the table and its lists).
#pragma once

#include <vector>

#include <QFrame>

class QListView;
class QScrollBar;

namespace veldona {

class ParallelLists : public QFrame {
    Q_OBJECT

public:
    explicit ParallelLists(QWidget* parent = nullptr);

    // Once the lists stand in its grid layout (headings in row 0, lists in row 1).
    void link();
    [[nodiscard]] const std::vector<QListView*>& lists() const { return lists_; } // left to right

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showFocus();
    void followRange();
    void scrollTo(int value);

    std::vector<QListView*> lists_;
    QScrollBar* bar_;
    bool scrolling_ = false;
};

} // namespace veldona
