#include "platform/controls/form.h"

#include <algorithm>

#include "platform/controls/control.h"
#include "platform/controls/forms.h"
#include "platform/controls/handlers.h"
#include "platform/controls/names.h"

namespace veldona {

Form::Form(Forms& forms, std::string name, std::string caption)
    : forms_(&forms), name_(std::move(name)), caption_(std::move(caption)) {}

Form::~Form() = default;

void Form::setCaption(std::string caption) {
    if (caption == caption_) return;
    caption_ = std::move(caption);
    forms_->host().formChanged(*this);
}

void Form::setPointer(MousePointer pointer) {
    if (pointer == pointer_) return;
    pointer_ = pointer;
    forms_->host().formChanged(*this);
}

void Form::setEnabled(bool enabled) {
    if (enabled == enabled_) return;
    enabled_ = enabled;
    forms_->host().formChanged(*this);
}

Control* Form::find(std::string_view name) const {
    const auto found = std::find_if(controls_.begin(), controls_.end(),
                                    [name](const Control* each) { return sameName(each->name(), name); });
    return found == controls_.end() ? nullptr : *found;
}

void Form::moveFocus(Control& control) {
    if (activeControl_ == &control) return;
    const Forms::Hold hold(*forms_);
    Control* left = std::exchange(activeControl_, &control);
    forms_->host().focusMoved(*this);
    if (left) forms_->dispatch([left] { call(left->onLostFocus); });
    // The handler of the one that was left may have sent the focus elsewhere.
    if (activeControl_ != &control || unloaded_) return;
    forms_->dispatch([&control] { call(control.onGotFocus); });
}

void Form::releaseFocus() {
    Control* left = activeControl_;
    if (!left || (left->isShown() && left->isUsable())) return;
    activeControl_ = nullptr;
    forms_->host().focusMoved(*this);
    forms_->dispatch([left] { call(left->onLostFocus); });
}

void Form::enlist(Control& control) {
    controls_.push_back(&control);
}

} // namespace veldona
