#include "ui/locknote.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QTimer>

#include "ui/host.h"
#include "ui/housestyle.h"
#include "ui/operatorinput.h"

namespace veldona {

namespace {

constexpr std::chrono::milliseconds kUnseen{500}; // most waits are over before anybody could read of them
constexpr std::chrono::milliseconds kAgain{20};

bool isEscape(const QEvent& event) {
    return (event.type() == QEvent::KeyPress || event.type() == QEvent::KeyRelease) &&
           static_cast<const QKeyEvent&>(event).key() == Qt::Key_Escape;
}

} // namespace

bool LockNote::goesOn(std::chrono::milliseconds waited) {
    if (waited < kUnseen) return true;
    if (!note_) show();
    waiting_ = true;
    givenUp_ = false;
    QCoreApplication::processEvents();
    waiting_ = false;
    endSoon();
    return !givenUp_;
}

bool LockNote::keeps(QObject& receiver, QEvent& event) {
    if (!waiting_) return false;
    if (event.type() == QEvent::ShortcutOverride) {
        event.accept(); // else it would run a command of the menu here and now
        return true;
    }
    if (!isOfOperator(event.type())) return false;
    if (!isEscape(event))
        kept_.emplace_back(&receiver, std::unique_ptr<QEvent>(event.clone()));
    else if (event.type() == QEvent::KeyPress)
        givenUp_ = true;
    return true;
}

void LockNote::show() {
    QWidget* front = host_.frontWindow();
    if (front == nullptr) return;
    note_ = new QLabel("Başka bir bilgisayarın kaydı bekleniyor …   Esc: vazgeç", front);
    note_->setStyleSheet(
        "background: #fff3c4; color: #3a2500; border: 1px solid #e0c060; padding: 6px 12px;");
    note_->adjustSize();
    note_->move((front->width() - note_->width()) / 2, front->height() - note_->height() - scaled(12));
    note_->show();
    note_->raise();
}

// Behind the statement, when the event loop comes round; within the wait it is too early.
void LockNote::endSoon() {
    if (std::exchange(endWaits_, true)) return;
    QMetaObject::invokeMethod(
        this, [this] { end(); }, Qt::QueuedConnection);
}

void LockNote::end() {
    endWaits_ = false;
    if (waiting_) return;
    delete note_;
    if (kept_.empty()) return;
    if (host_.keepsInputOut()) { // the procedure goes on, and lets the windows be painted
        endWaits_ = true;
        QTimer::singleShot(kAgain, this, [this] { end(); });
        return;
    }
    const auto kept = std::exchange(kept_, {});
    if (host_.asks()) return;
    for (const auto& [receiver, event] : kept)
        if (receiver) QCoreApplication::postEvent(receiver, event->clone());
}

} // namespace veldona
