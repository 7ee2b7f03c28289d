#include "platform/controls/control.h"

#include "platform/controls/forms.h"
#include "platform/controls/handlers.h"

namespace veldona {

Control::Control(Form& form, std::string name) : form_(&form), name_(std::move(name)) {
    form.enlist(*this);
}

Control::~Control() = default;

void Control::setVisible(bool visible) {
    if (visible == visible_) return;
    const Forms::Hold hold(form_->forms());
    visible_ = visible;
    changed();
    if (!visible) form_->releaseFocus();
}

void Control::setEnabled(bool enabled) {
    if (enabled == enabled_) return;
    const Forms::Hold hold(form_->forms());
    enabled_ = enabled;
    changed();
    if (!enabled) form_->releaseFocus();
}

bool Control::isShown() const {
    return visible_ && (!holder_ || holder_->isShown());
}

bool Control::isUsable() const {
    return enabled_ && (!holder_ || holder_->isUsable());
}

void Control::setToolTip(std::string text) {
    if (text == toolTip_) return;
    toolTip_ = std::move(text);
    changed();
}

void Control::setBackColor(std::optional<Colour> colour) {
    if (colour == backColor_) return;
    backColor_ = colour;
    changed();
}

void Control::setForeColor(std::optional<Colour> colour) {
    if (colour == foreColor_) return;
    foreColor_ = colour;
    changed();
}

void Control::setFocus() {
    if (!takesFocus() || !isShown() || !isUsable()) raise(ErrorNumber::InvalidCall);
    form_->moveFocus(*this);
}

void Control::changed() {
    form_->forms().host().controlChanged(*this);
}

void Control::fire(const std::function<void()>& handler) {
    const Forms::Hold hold(form_->forms());
    call(handler);
}

void Control::press() {
    raiseClick();
}

void Control::takeKey(const KeyEvent&, char32_t) {}

void Control::dispatch(const std::function<void()>& event, const std::string& words) {
    form_->forms().dispatch(event, {form_, words});
}

void Control::raiseClick() {
    dispatch([this] { call(onClick); }, actWords());
}

void place(Control& holder, std::initializer_list<Control*> controls) {
    for (Control* control : controls)
        control->placeIn(holder);
}

} // namespace veldona
