#include "ui/celleditors.h"

#include <algorithm>

#include <QEvent>
#include <QScrollBar>
#include <QTableView>
#include <QVariant>

namespace veldona {

CellEditors::CellEditors(QTableView& sheet) : QObject(&sheet), sheet_(sheet) {
    sheet.viewport()->installEventFilter(this);
    for (QScrollBar* bar : {sheet.verticalScrollBar(), sheet.horizontalScrollBar()})
        connect(bar, &QScrollBar::valueChanged, this, [this] { place(); });
    // A row that was added is reached only once the sheet knows that it is longer.
    connect(sheet.verticalScrollBar(), &QScrollBar::rangeChanged, this, [this] {
        sheet_.scrollTo(sheet_.currentIndex());
        place();
    });
}

// As large as the cell, or as the editor needs to be read.
void CellEditors::place() {
    QWidget* holder = sheet_.parentWidget();
    const int row = sheet_.currentIndex().row();
    for (QWidget* editor : holder->findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
        if (editor->property("cellOf").toString() != sheet_.objectName()) continue;
        const QModelIndex cell = sheet_.model()->index(row, editor->property("cellColumn").toInt());
        if (!cell.isValid()) continue;
        const QRect shown = sheet_.visualRect(cell);
        const QSize size = shown.size().expandedTo(editor->minimumSizeHint());
        const QPoint corner = sheet_.viewport()->mapTo(holder, shown.topLeft());
        if (!sheet_.viewport()->rect().contains(shown.center())) {
            editor->move(-editor->width(), 0); // scrolled out of sight
            continue;
        }
        const int left = std::clamp(corner.x(), 0, std::max(0, holder->width() - size.width()));
        editor->setGeometry(QRect(QPoint(left, corner.y() - (size.height() - shown.height()) / 2), size));
        editor->raise();
    }
}

bool CellEditors::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) place();
    return QObject::eventFilter(watched, event);
}

} // namespace veldona
