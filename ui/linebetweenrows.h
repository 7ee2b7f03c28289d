// Draws the rows of a list, and a line between two of them with its words beside it.
//
// The words stand at the left of a list whose drawing says so (property "lineWords") and whose texts stand at
// the right, as far as the rows leave room.
#pragma once

#include <QString>
#include <QStyledItemDelegate>

class QListView;

namespace veldona {

class LineBetweenRows : public QStyledItemDelegate {
public:
    explicit LineBetweenRows(QListView& view);

    // Above this row, or below the last one; -1: none.
    void show(int row, const QString& words);
    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override;
    // Without the sign, which leaves the rows of parallel lists as high as their neighbours'.
    [[nodiscard]] QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;

private:
    QListView& view_;
    bool withWords_;
    int row_ = -1;
    QString words_;
};

} // namespace veldona
