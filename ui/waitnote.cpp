#include "ui/waitnote.h"

#include <QApplication>
#include <QFrame>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QVBoxLayout>

#include "ui/host.h"
#include "ui/housestyle.h"
#include "ui/operatorinput.h"

namespace veldona {

namespace {

// What makes a command of it as well, and the mouse's way over the windows.
bool isInput(QEvent::Type type) {
    return isOfOperator(type) || type == QEvent::ShortcutOverride || type == QEvent::Shortcut ||
           type == QEvent::MouseMove;
}

} // namespace

WindowWaitNote::~WindowWaitNote() {
    hide();
}

void WindowWaitNote::open() {
    QWidget* over = QApplication::activeModalWidget();
    if (over == nullptr) over = host_.frontWindow();
    frame_ = new QFrame(over, over == nullptr ? Qt::ToolTip : Qt::Widget);
    frame_->setObjectName("waitNote");
    frame_->setFrameShape(QFrame::StyledPanel);
    frame_->setAutoFillBackground(true);
    frame_->setAttribute(Qt::WA_ShowWithoutActivating);
    frame_->setFocusPolicy(Qt::NoFocus);
    auto* column = new QVBoxLayout(frame_);
    words_ = new QLabel;
    words_->setAlignment(Qt::AlignCenter);
    column->addWidget(words_);
    auto* bar = new QProgressBar;
    bar->setRange(0, 0);
    bar->setTextVisible(false);
    column->addWidget(bar);
    auto* key = new QLabel(QStringLiteral("Vazgeçmek için Esc"));
    key->setAlignment(Qt::AlignCenter);
    column->addWidget(key);
    frame_->resize(scaled(380), frame_->sizeHint().height());
    if (over != nullptr) frame_->move((over->width() - frame_->width()) / 2, over->height() / 3);
    givenUp_ = false;
    qApp->installEventFilter(this);
}

void WindowWaitNote::show(const std::string& words) {
    if (!frame_) open();
    words_->setText(QString::fromStdString(words));
    frame_->show();
    frame_->raise();
}

void WindowWaitNote::hide() {
    qApp->removeEventFilter(this);
    delete frame_;
}

bool WindowWaitNote::isGivenUp() {
    host_.letFilteredEventsRun();
    return givenUp_;
}

bool WindowWaitNote::eventFilter(QObject*, QEvent* event) {
    if (!isInput(event->type())) return false;
    if (event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape)
        givenUp_ = true;
    event->accept();
    if (event->type() == QEvent::Close) event->ignore();
    return true;
}

} // namespace veldona
