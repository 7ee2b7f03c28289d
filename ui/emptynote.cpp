#include "ui/emptynote.h"

#include <QAbstractItemView>
#include <QEvent>
#include <QLabel>
#include <QVariant>

#include "ui/housestyle.h"

namespace veldona {

EmptyNote::EmptyNote(QAbstractItemView& view) : QObject(&view), view_(view) {
    const QString words = view.property("whenEmpty").toString();
    if (words.isEmpty()) return;
    words_ = new QLabel(words, view.viewport());
    words_->setProperty("role", "hint");
    words_->setWordWrap(true);
    words_->setAlignment(Qt::AlignHCenter | Qt::AlignTop);
    words_->setAttribute(Qt::WA_TransparentForMouseEvents);
    view.viewport()->installEventFilter(this);
    for (const auto change : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(view.model(), change, this, [this] { follow(); });
    connect(view.model(), &QAbstractItemModel::modelReset, this, [this] { follow(); });
    follow();
}

bool EmptyNote::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize) follow();
    return QObject::eventFilter(watched, event);
}

void EmptyNote::follow() {
    words_->setVisible(view_.model()->rowCount() == 0);
    const int edge = scaled(12);
    words_->setGeometry(view_.viewport()->rect().adjusted(edge, edge, -edge, -edge));
}

} // namespace veldona
