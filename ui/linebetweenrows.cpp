#include "ui/linebetweenrows.h"

#include <QListView>
#include <QPainter>
#include <QStyle>
#include <QVariant>

#include "ui/housestyle.h"

namespace veldona {

LineBetweenRows::LineBetweenRows(QListView& view)
    : QStyledItemDelegate(&view), view_(view), withWords_(view.property("lineWords").toBool()) {}

void LineBetweenRows::show(int row, const QString& words) {
    if (row == row_ && words == words_) return;
    row_ = row;
    words_ = words;
    view_.viewport()->update();
}

void LineBetweenRows::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
    QStyledItemDelegate::paint(painter, option, index);
    const bool isBelow = row_ == index.model()->rowCount() && index.row() == row_ - 1;
    if (index.row() != row_ && !isBelow) return;
    const QRect& rect = option.rect;
    const int thick = scaled(2);
    painter->save();
    painter->fillRect(rect.left(), isBelow ? rect.bottom() + 1 - thick : rect.top(), rect.width(), thick,
                      lineColour());
    QFont small = option.font;
    small.setPointSizeF(small.pointSizeF() * 0.75);
    const int wanted = QFontMetrics(small).horizontalAdvance(words_) + scaled(8);
    const int taken = option.fontMetrics.horizontalAdvance(index.data().toString()) + scaled(8);
    if (withWords_ && wanted + taken <= rect.width()) {
        painter->setFont(small);
        painter->setPen(lineColour().darker(140));
        const int gap = thick + scaled(1);
        painter->drawText(rect.adjusted(scaled(4), isBelow ? 0 : gap, 0, isBelow ? -gap : 0),
                          static_cast<int>(Qt::AlignLeft | (isBelow ? Qt::AlignBottom : Qt::AlignTop)),
                          words_);
    }
    painter->restore();
}

QSize LineBetweenRows::sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const {
    QStyleOptionViewItem plain = option;
    initStyleOption(&plain, index);
    plain.features &= ~QStyleOptionViewItem::HasDecoration;
    return view_.style()->sizeFromContents(QStyle::CT_ItemViewItem, &plain, {}, &view_);
}

} // namespace veldona
