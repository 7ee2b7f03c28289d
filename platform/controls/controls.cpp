#include "platform/controls/controls.h"

#include <algorithm>

#include "platform/controls/form.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/error.h"
#include "platform/runtime/text.h"

namespace veldona {

void Captioned::setCaption(std::string caption) {
    if (caption == caption_) return;
    caption_ = std::move(caption);
    changed();
}

void TextBox::setText(std::string text) {
    edit(std::move(text), 0);
}

void TextBox::edit(std::string text, int caret) {
    text_ = visibleText(text);
    selStart_ = std::clamp(caret, 0, static_cast<int>(length(text_)));
    selLength_ = 0;
    changed();
    fire(onChange);
}

void TextBox::select(int start, int length) {
    const int size = static_cast<int>(veldona::length(text_));
    selStart_ = std::clamp(start, 0, size);
    selLength_ = std::clamp(length, 0, size - selStart_);
    changed();
}

void TextBox::selectAll() {
    select(0, static_cast<int>(length(text_)));
}

void CheckBox::setChecked(bool checked) {
    if (checked == checked_) return;
    checked_ = checked;
    changed();
    fire(onClick);
}

void OptionButton::setValue(bool value) {
    if (value == value_) return;
    value_ = value;
    changed();
    if (!value) return;
    for (Control* each : form().controls()) {
        auto* other = dynamic_cast<OptionButton*>(each);
        if (other && other != this && other->holder() == holder()) other->setValue(false);
    }
    fire(onClick);
}

void DateBox::setValue(const Value& value) {
    const bool isEmpty = value.isNull() || (value.isText() && trim(value.get<std::string>()).empty());
    if (isEmpty && style_ == Style::Picker) raise(ErrorNumber::TypeMismatch);
    value_ = isEmpty ? Value() : Value(toDate(value).date());
    if (!isEmpty) lastDate_ = value_;
    changed();
    fire(onChange);
}

std::string DateBox::text() const {
    return joinText(value_);
}

void WebPane::setHtml(std::string html) {
    if (html == html_) return;
    html_ = std::move(html);
    changed();
}

} // namespace veldona
