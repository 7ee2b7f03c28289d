#include "customers/fieldcontrols.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "platform/controls/handlers.h"

namespace veldona {

namespace {

std::unique_ptr<Control> made(Form& form, const FieldEntry& entry) {
    switch (entry.kind) {
    case FieldEntry::Kind::List:
        return std::make_unique<ComboBox>(form, entry.control);
    case FieldEntry::Kind::Date:
        return std::make_unique<DateBox>(form, entry.control, DateBox::Style::Combo);
    case FieldEntry::Kind::Text:
        break;
    }
    return std::make_unique<TextBox>(form, entry.control);
}

void also(std::function<void()>& event, const std::function<void()>& act) {
    event = [act, before = std::move(event)] {
        call(before);
        act();
    };
}

} // namespace

FieldControl::FieldControl(Form& form, const CustomerField& itsField, const FieldEntry& entry)
    : field(itsField), kind_(entry.kind),
      label_(*entry.caption ? std::make_unique<Label>(form, std::string("lbl") + entry.control, entry.caption)
                            : nullptr),
      control_(made(form, entry)) {}

void FieldControl::setText(const std::string& text) {
    if (kind_ == FieldEntry::Kind::List) return static_cast<ComboBox&>(*control_).setText(text);
    if (kind_ == FieldEntry::Kind::Date) return static_cast<DateBox&>(*control_).setValue(text);
    static_cast<TextBox&>(*control_).setText(text);
}

void FieldControl::alsoOnInput(const std::function<void()>& act) {
    if (kind_ == FieldEntry::Kind::Text) return also(static_cast<TextBox&>(*control_).onChange, act);
    if (kind_ == FieldEntry::Kind::Date) return also(static_cast<DateBox&>(*control_).onChange, act);
    also(static_cast<ComboBox&>(*control_).onChange, act);
    also(control_->onClick, act);
}

void FieldControl::placeIn(Control& holder) {
    control_->placeIn(holder);
    if (label_) label_->placeIn(holder);
}

FieldControls::FieldControls(Form& form, const CustomerFieldRefs& fields, FieldEntry CustomerField::*entry) {
    for (const CustomerField* each : fields)
        all_.push_back(std::make_unique<FieldControl>(form, *each, each->*entry));
}

const FieldControl* FieldControls::of(const CustomerField& field) const {
    const auto found =
        std::find_if(all_.begin(), all_.end(), [&](const auto& each) { return &each->field == &field; });
    return found == all_.end() ? nullptr : found->get();
}

FieldControl& FieldControls::find(std::string_view name) const {
    const auto found = std::find_if(all_.begin(), all_.end(),
                                    [&](const auto& each) { return each->control().name() == name; });
    if (found == all_.end()) throw std::logic_error("no field has this control: " + std::string(name));
    return **found;
}

FieldFrame::FieldFrame(Form& form, std::string name, std::string words, CustomerField::Frame frame)
    : Frame(form, std::move(name), std::move(words)), fields(form, cardFields(frame), &CustomerField::card) {
    for (const auto& each : fields.all())
        each->placeIn(*this);
}

} // namespace veldona
