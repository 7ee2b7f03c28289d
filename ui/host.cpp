#include "ui/host.h"

#include <algorithm>
#include <utility>

#include <QApplication>
#include <QDialog>
#include <QEventLoop>
#include <QKeyEvent>
#include <QMessageBox>
#include <QScreen>
#include <QTimer>
#include <QVariant>
#include <QWindow>

#include "platform/controls/control.h"
#include "ui/keytranslation.h"
#include "ui/longtext.h"

namespace veldona {

namespace {

// Sets `place` for as long as it stands.
template <class T> class Scoped {
public:
    Scoped(T& place, T value) : place_(place), before_(std::exchange(place, value)) {}
    ~Scoped() { place_ = before_; }
    Scoped(const Scoped&) = delete;
    Scoped& operator=(const Scoped&) = delete;

private:
    T& place_;
    T before_;
};

template <class T> class Listed {
public:
    Listed(std::vector<T>& list, T entry) : list_(list) { list_.push_back(std::move(entry)); }
    ~Listed() { list_.pop_back(); }
    Listed(const Listed&) = delete;
    Listed& operator=(const Listed&) = delete;

private:
    std::vector<T>& list_;
};

class Cursor {
public:
    explicit Cursor(Qt::CursorShape shape) { QGuiApplication::setOverrideCursor(shape); }
    ~Cursor() { QGuiApplication::restoreOverrideCursor(); }
    Cursor(const Cursor&) = delete;
    Cursor& operator=(const Cursor&) = delete;
};

bool fitsScreen(const QWidget& window) {
    const QSize screen = window.screen()->availableSize();
    return screen.width() >= window.minimumWidth() && screen.height() >= window.minimumHeight();
}

} // namespace

WindowHost::WindowHost(Clock& clock) : clock_(clock) {
    qApp->installEventFilter(this);
}

WindowHost::~WindowHost() {
    qApp->removeEventFilter(this);
    for (const auto& [form, window] : std::exchange(windows_, {}))
        delete window;
}

void WindowHost::draw(const std::string& form, Drawing drawing) {
    drawings_[form] = std::move(drawing);
}

void WindowHost::addTo(const std::string& form, const std::function<void(FormWindow&)>& more) {
    additions_[form] = more;
}

void WindowHost::formLoaded(Form& form) {
    const auto drawing = drawings_.find(form.name());
    if (drawing == drawings_.end()) qFatal("%s has no window drawn for it", form.name().c_str());
    auto* made = new FormWindow(*this, form, drawing->second);
    windows_[&form] = made;
    if (const auto more = additions_.find(form.name()); more != additions_.end()) more->second(*made);
}

void WindowHost::formShown(Form& form, Kip kip) {
    FormWindow* shown = window(form);
    if (!shown) return;
    if (!shown->isVisible()) open(*shown, kip);
    shown->raise();
    shown->activateWindow();
}

// The main screen stands by itself. Every other one is a dialog: in front of the screens that were open, in
// the middle of the one it was called from, minimised with them.
void WindowHost::open(FormWindow& window, Kip kip) {
    const QString name = QString::fromStdString(window.form().name());
    const bool isMain = window.property("startMaximized").toBool();
    const QWidget* origin = isMain ? nullptr : behind(window);
    if (origin)
        window.setWindowFlags(Qt::Dialog | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                              Qt::WindowMaximizeButtonHint | Qt::WindowCloseButtonHint);
    window.setWindowModality(kip == Kip::Modal ? Qt::ApplicationModal : Qt::NonModal);
    window.prepare();
    // Made native here, so that its owner is known before it shows. A modal one belongs to the window that
    // was opened last, so that none of those it keeps waiting can come to lie over it.
    window.winId();
    if (origin && !opened_.empty()) {
        const QWidget* owner = kip == Kip::Modal ? opened_.back() : opened_.front();
        window.windowHandle()->setTransientParent(owner->windowHandle());
    }
    memory.place(window, name, origin);
    opened_.push_back(&window);
    const bool fills = isMain && memory.filled(name).value_or(true) && fitsScreen(window);
    fills ? window.showMaximized() : window.show();
}

// The window of the screen that was in front before this one.
QWidget* WindowHost::behind(const FormWindow& window) const {
    const std::vector<Form*> forms = window.form().forms().loadedForms();
    for (auto each = forms.rbegin(); each != forms.rend(); ++each) {
        FormWindow* other = this->window(**each);
        if (other && other != &window && other->isVisible()) return other;
    }
    return nullptr;
}

void WindowHost::keepPlace(const FormWindow& window) {
    const bool isMain = window.property("startMaximized").toBool();
    memory.keep(window, QString::fromStdString(window.form().name()), isMain ? nullptr : behind(window));
}

void WindowHost::formUnloaded(Form& form) {
    const auto found = windows_.find(&form);
    if (found == windows_.end()) return;
    FormWindow* gone = found->second;
    const bool wasOpen = std::erase(opened_, gone) > 0;
    if (wasOpen) keepPlace(*gone);
    windows_.erase(found);
    gone->retire();
    // Where a box over it closed in the same moment, a window manager may have given the keys to nobody.
    if (wasOpen && !opened_.empty()) opened_.back()->activateWindow();
    followPointer();
    for (const Modal& each : modals_)
        if (each.form == &form) each.loop->quit();
    if (windows_.empty() && onAllClosed) onAllClosed();
}

void WindowHost::formChanged(Form& form) {
    followPointer();
    if (FormWindow* changed = window(form)) changed->touchForm();
    flushSoon();
}

void WindowHost::controlChanged(Control& control) {
    FormWindow* changed = window(control.form());
    if (!changed) return;
    changed->touch(control);
    flushSoon();
}

void WindowHost::focusMoved(Form& form) {
    FormWindow* changed = window(form);
    if (!changed) return;
    changed->touchFocus();
    flushSoon();
}

void WindowHost::runModal(Form& form) {
    if (!window(form)) return;
    QEventLoop loop;
    const Listed<Modal> listed(modals_, {&form, &loop});
    const Scoped<int> keys(keysUnderWay_, 0);
    const Scoped<bool> letting(lettingEventsRun_, false);
    const Scoped<bool> keptOut(inputKeptOut_, false);
    flush();
    giveHeldSoon();
    runLoop([&loop] { loop.exec(); });
}

void WindowHost::processEnded() {
    for (const FormWindow* each : opened_)
        keepPlace(*each);
    for (const Modal& each : modals_)
        each.loop->quit();
    for (QDialog* each : dialogs_)
        each->done(QDialog::Rejected);
    if (onProcessEnded) onProcessEnded();
}

FormWindow* WindowHost::window(const Form& form) const {
    const auto found = windows_.find(&form);
    return found == windows_.end() ? nullptr : found->second;
}

void WindowHost::flush() {
    if (flushing_) return;
    const Scoped<bool> flushing(flushing_, true);
    for (const auto& [form, each] : windows_)
        each->refresh();
}

void WindowHost::flushSoon() {
    if (std::exchange(flushWaits_, true)) return;
    QMetaObject::invokeMethod(
        this,
        [this] {
            flushWaits_ = false;
            flush();
        },
        Qt::QueuedConnection);
}

bool WindowHost::screenshot(Form& form, const std::string& path) {
    FormWindow* drawn = window(form);
    if (!drawn) return false;
    flush();
    QCoreApplication::sendPostedEvents();
    return drawn->grab().save(QString::fromStdString(path), "PNG");
}

bool WindowHost::typeKey(Form& form, const KeyEvent& key) {
    if (!window(form)) return false;
    const auto send = [&](QEvent::Type type) {
        FormWindow* receiver = window(form);
        if (!receiver) return;
        const QtKey qt = toQt(key);
        QKeyEvent event(type, qt.key, qt.modifiers, qt.text);
        QWidget* focused = receiver->focusWidget();
        QCoreApplication::sendEvent(focused ? focused : receiver, &event);
        // A window that is not the active one moves its focus without a word.
        if (FormWindow* still = window(form)) still->followFocus();
    };
    flush();
    send(QEvent::KeyPress);
    send(QEvent::KeyRelease);
    flush();
    return true;
}

void WindowHost::letEventsRun() {
    flush();
    const bool keepsInputOut = keysUnderWay_ > 0 || lettingEventsRun_ || !deferred_.isEmpty();
    {
        const Scoped<bool> letting(lettingEventsRun_, true);
        const Scoped<bool> keptOut(inputKeptOut_, keepsInputOut);
        runLoop([keepsInputOut] {
            QCoreApplication::processEvents(keepsInputOut ? QEventLoop::ExcludeUserInputEvents
                                                          : QEventLoop::AllEvents);
        });
    }
    giveHeldSoon();
    flush();
}

void WindowHost::letFilteredEventsRun() {
    const Scoped<bool> letting(lettingEventsRun_, true);
    runLoop([] { QCoreApplication::processEvents(); });
}

void WindowHost::giveHeldSoon() {
    if (deferred_.isEmpty()) return;
    // Behind the pause that it waits for, which tries again at its own end.
    QMetaObject::invokeMethod(
        this,
        [this] {
            while (!inputKeptOut_ && !deferred_.isEmpty())
                deferred_.giveOne();
        },
        Qt::QueuedConnection);
}

void WindowHost::standStill(int milliseconds) {
    flush();
    const Cursor cursor(Qt::WaitCursor);
    const Scoped<bool> standing(standingStill_, true);
    QEventLoop loop;
    QTimer::singleShot(milliseconds, &loop, &QEventLoop::quit);
    {
        const Scoped<bool> keptOut(inputKeptOut_, true);
        runLoop([&loop] { loop.exec(QEventLoop::ExcludeUserInputEvents); });
    }
    giveHeldSoon();
}

bool WindowHost::goOnWaiting(std::chrono::milliseconds waited) {
    return windows_.empty() || lockNote_.goesOn(waited);
}

int WindowHost::run(QDialog& dialog) {
    flush();
    if (auto* box = qobject_cast<QMessageBox*>(&dialog)) keepOnScreen(*box);
    // The operator is asked: no wait cursor over the question.
    const Cursor cursor(Qt::ArrowCursor);
    const Listed<QDialog*> listed(dialogs_, &dialog);
    const Scoped<int> keys(keysUnderWay_, 0);
    const Scoped<bool> letting(lettingEventsRun_, false);
    const Scoped<bool> keptOut(inputKeptOut_, false);
    giveHeldSoon();
    int result = QDialog::Rejected;
    QWidget* origin = dialog.parentWidget();
    const QString name = dialog.objectName();
    dialog.winId();
    if (!opened_.empty()) dialog.windowHandle()->setTransientParent(opened_.back()->windowHandle());
    if (!name.isEmpty()) memory.place(dialog, name, origin);
    runLoop([&] { result = dialog.exec(); });
    if (!name.isEmpty()) memory.keep(dialog, name, origin);
    return result;
}

QWidget* WindowHost::frontWindow() const {
    for (const auto& [form, each] : windows_)
        if (form->forms().active() == form) return each;
    return nullptr;
}

bool WindowHost::eventFilter(QObject* watched, QEvent* event) {
    if (lockNote_.keeps(*watched, *event)) return true;
    if (!watched->isWidgetType()) return false;
    auto* widget = static_cast<QWidget*>(watched);
    if (inputKeptOut_ && deferred_.take(*widget, *event)) return true;
    auto* formWindow = dynamic_cast<FormWindow*>(widget->window());
    return formWindow && formWindow->filter(*widget, *event);
}

void WindowHost::runLoop(const std::function<void()>& loop) {
    if (windows_.empty())
        loop();
    else
        windows_.begin()->first->forms().runLoop(loop);
}

void WindowHost::followPointer() {
    const bool waits = std::any_of(windows_.begin(), windows_.end(), [](const auto& each) {
        return each.first->pointer() == MousePointer::Wait;
    });
    if (waits == waitCursor_) return;
    waitCursor_ = waits;
    if (waits)
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QGuiApplication::restoreOverrideCursor();
}

} // namespace veldona
