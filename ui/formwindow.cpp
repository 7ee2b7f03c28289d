#include "ui/formwindow.h"

#include <algorithm>

#include <QCloseEvent>
#include <QTabWidget>
#include <QVariant>

#include "platform/controls/controls.h"
#include "platform/controls/forms.h"
#include "ui/binder.h"
#include "ui/host.h"
#include "ui/mnemonics.h"
#include "ui/parallellists.h"
#include "ui/spokennames.h"
#include "ui/tightgrid.h"

namespace veldona {

namespace {

bool hasDrawnWords(const QWidget& widget) {
    const QWidget* stack = widget.parentWidget();
    const auto* tabs = qobject_cast<const QTabWidget*>(stack ? stack->parentWidget() : nullptr);
    return !widget.property("text").toString().isEmpty() || !widget.property("title").toString().isEmpty() ||
           (tabs && !tabs->tabText(tabs->indexOf(&widget)).isEmpty());
}

} // namespace

FormWindow::FormWindow(WindowHost& host, Form& form, const Drawing& draw) : host_(host), form_(form) {
    draw(*this);
    alignCaptions(*this);
    drawn_ = std::make_unique<DrawnSizes>(*this);
    tight_ = new TightGrid(*this);
    for (auto* table : findChildren<ParallelLists*>())
        table->link();
    bind();
    arrangeTabs();
    bound_ = true;
    touchForm();
    for (const auto& each : binders_)
        touched_.push_back(each.get());
    focusMoved_ = true;
}

FormWindow::Busy::Busy(FormWindow& window) : window_(window), hold_(window.form_.forms()) {
    ++window_.busy_;
}

FormWindow::Busy::~Busy() {
    if (--window_.busy_ == 0 && !window_.bound_) window_.deleteLater();
}

FormWindow::~FormWindow() {
    unbind();
    // The widgets go while their binders still stand, since they speak to them to the last.
    for (QWidget* child : findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
        delete child;
}

void FormWindow::bind() {
    // Controls that the operator never sees are named by the drawing, so that none is forgotten.
    const QStringList withoutWidget = property("withoutWidget").toString().split(' ', Qt::SkipEmptyParts);
    QStringList faults;
    for (const QString& name : withoutWidget)
        if (!form_.find(fromQt(name))) faults << name + " (no such control)";
    for (Control* each : form_.controls())
        bindControl(*each, withoutWidget, faults);
    if (!faults.isEmpty())
        qFatal("%s cannot be bound to its window: %s", form_.name().c_str(), qPrintable(faults.join(", ")));
}

void FormWindow::bindControl(Control& control, const QStringList& withoutWidget, QStringList& faults) {
    const QString name = toQt(control.name());
    if (withoutWidget.contains(name)) return;
    std::unique_ptr<Binder> made = bindUndrawn(*this, control);
    if (!made) {
        auto* widget = findChild<QWidget*>(name);
        if (widget && dynamic_cast<Captioned*>(&control) && hasDrawnWords(*widget))
            faults << name + " (is drawn with words, which are its record's)";
        if (widget) made = makeBinder(*this, control, *widget);
        if (!made) {
            faults << name + (widget ? " (is drawn as " + QString(widget->metaObject()->className()) + ")"
                                     : QString(" (no widget)"));
            return;
        }
        byWidget_[widget] = made.get();
    }
    byControl_[&control] = made.get();
    binders_.push_back(std::move(made));
}

// The Tab key walks the controls in the order of the form, which is the order of the work.
void FormWindow::arrangeTabs() {
    QWidget* before = nullptr;
    for (const auto& each : binders_) {
        QWidget* target = each->control().takesFocus() ? each->focusTarget() : nullptr;
        if (!target || !(target->focusPolicy() & Qt::TabFocus)) continue;
        // A field of several parts is put in as a whole, or the parts left behind lead back into it.
        QWidget* whole = each->widget()->focusProxy() == target ? each->widget() : target;
        if (before) setTabOrder(before, whole);
        before = whole;
    }
}

void FormWindow::retire() {
    unbind();
    hide();
    if (busy_ == 0) deleteLater();
}

void FormWindow::unbind() {
    if (!bound_) return;
    bound_ = false;
    touched_.clear();
    for (const auto& each : binders_)
        each->leave();
}

void FormWindow::touch(Control& control) {
    Binder* binder = bound_ ? binderOf(control) : nullptr;
    if (!binder || std::find(touched_.begin(), touched_.end(), binder) != touched_.end()) return;
    touched_.push_back(binder);
}

void FormWindow::touchForm() {
    setWindowTitle(toQt(form_.caption()));
    if (isEnabled() == form_.enabled()) return;
    refreshing_ = true;
    setEnabled(form_.enabled());
    refreshing_ = false;
    focusMoved_ = true; // the widget that had it gave it away with the window
}

void FormWindow::refresh() {
    if (!listens()) return;
    refreshing_ = true;
    const std::vector<Binder*> touched = std::exchange(touched_, {});
    for (Binder* each : touched)
        each->refresh();
    if (!touched.empty()) shareLetters(*this);
    if (std::exchange(focusMoved_, false)) showFocus();
    refreshing_ = false;
}

// What is shown of it says how large it is.
void FormWindow::prepare() {
    if (std::exchange(prepared_, true)) return;
    refresh();
    nameControls(*this);
    followLetters();
}

void FormWindow::setVisible(bool visible) {
    if (visible) prepare();
    QWidget::setVisible(visible);
}

void FormWindow::showFocus() {
    const Control* active = form_.activeControl();
    const Binder* binder = active ? binderOf(*active) : nullptr;
    QWidget* target = binder ? binder->focusTarget() : nullptr;
    if (target && target != focusWidget()) target->setFocus(Qt::OtherFocusReason);
}

void FormWindow::act(Control& control, const std::function<void()>& event) {
    if (!listens()) return;
    const Busy busy(*this);
    std::optional<WindowHost::KeyUnderWay> underWay;
    if (keyWorks_) underWay.emplace(host_);
    event();
    // A refused act is shown as refused.
    touch(control);
    host_.flush();
}

Binder* FormWindow::binderAt(const QWidget* widget) const {
    for (; widget && widget != this; widget = widget->parentWidget())
        if (const auto found = byWidget_.find(widget); found != byWidget_.end()) return found->second;
    return nullptr;
}

Binder* FormWindow::binderOf(const Control& control) const {
    const auto found = byControl_.find(&control);
    return found == byControl_.end() ? nullptr : found->second;
}

DateTime FormWindow::today() const {
    return host_.clock().today();
}

bool FormWindow::timersRun() const {
    return host_.timersRun;
}

// The window's own close button asks the form to unload, as its own commands do.
void FormWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
    if (!listens()) return;
    const Busy busy(*this);
    form_.forms().dispatch([this] { form_.forms().unload(form_); });
    host_.flush();
}

// A control that hands its focus on is passed over: the toolkit would go where it hands it to, which may be
// the one that Tab came from.
bool FormWindow::focusNextPrevChild(bool next) {
    QWidget* const from = focusWidget() ? focusWidget() : this;
    const auto step = [next](QWidget* at) {
        return next ? at->nextInFocusChain() : at->previousInFocusChain();
    };
    for (QWidget* each = step(from); each != from; each = step(each)) {
        const bool takesTab = (each->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && !each->focusProxy();
        if (!takesTab || !each->isEnabled() || !each->isVisible() || each->window() != this) continue;
        each->setFocus(next ? Qt::TabFocusReason : Qt::BacktabFocusReason);
        return true;
    }
    return false;
}

bool FormWindow::listens() const {
    return bound_ && !refreshing_ && !host_.waitsForLock();
}

void FormWindow::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (!bound_ || (event->type() != QEvent::FontChange && event->type() != QEvent::StyleChange)) return;
    for (const auto& each : binders_)
        each->restyled();
    followLetters();
}

// Each measures by the one before.
void FormWindow::followLetters() {
    drawn_->growLimits();
    tight_->follow();
    drawn_->growWindow();
}

} // namespace veldona
