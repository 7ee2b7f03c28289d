#include "platform/controls/controls.h"

#include <algorithm>

#include "platform/controls/form.h"
#include "platform/controls/keyacts.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/error.h"
#include "platform/runtime/text.h"
#include "platform/runtime/unicode.h"

namespace veldona {

namespace {

std::string withoutLetter(const std::string& words) {
    std::string caption;
    for (std::size_t i = 0; i < words.size(); ++i) {
        if (words[i] == '&' && i + 1 < words.size()) ++i;
        caption += words[i];
    }
    return caption;
}

} // namespace

Captioned::Captioned(Form& form, std::string name, std::string words)
    : Control(form, std::move(name)), declared_(std::move(words)), caption_(withoutLetter(declared_)) {}

std::string Captioned::words() const {
    return caption_ == withoutLetter(declared_) ? declared_ : replaceAll(caption_, "&", "&&");
}

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

void TextBox::takeKey(const KeyEvent& key, char32_t character) {
    if (auto edited = editedBy(*this, key, character, maxLength))
        dispatch([&] { edit(std::move(edited->text), edited->caret); });
}

bool TextBox::put(std::string_view text) {
    std::string kept = validUtf8(text);
    if (maxLength > 0) kept = left(kept, static_cast<std::size_t>(maxLength));
    const int end = static_cast<int>(length(kept));
    dispatch([&] { edit(std::move(kept), end); });
    return true;
}

void CommandButton::takeKey(const KeyEvent& key, char32_t) {
    if (key.key == Key::Space || key.key == Key::Enter) press();
}

void CheckBox::press() {
    dispatch([this] { setChecked(!checked_); });
}

void CheckBox::takeKey(const KeyEvent& key, char32_t) {
    if (key.key == Key::Space) press();
}

void CheckBox::setMark(bool on, DateTime) {
    dispatch([this, on] { setChecked(on); });
}

void OptionButton::press() {
    dispatch([this] { setValue(true); });
}

void OptionButton::takeKey(const KeyEvent& key, char32_t) {
    if (key.key == Key::Space) press();
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

bool DateBox::canHold(const Value& value) const {
    return value.isNull() ? style_ != Style::Picker : isDate(value);
}

bool DateBox::put(std::string_view text) {
    const Value value = text.empty() ? Value() : Value(text);
    if (!canHold(value)) return false;
    dispatch([&] { setValue(value); });
    return true;
}

std::optional<bool> DateBox::mark() const {
    if (style_ != Style::PickerWithCheck || locked) return std::nullopt;
    return !value_.isNull();
}

void DateBox::setMark(bool on, DateTime today) {
    const Value held = lastDate_.isNull() ? Value(today) : lastDate_;
    dispatch([&] { setValue(on ? held : Value()); });
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
