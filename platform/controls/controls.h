// The simple controls: label, text, button, check box, option, frame, timer, date, web pane.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/controls/control.h"

namespace veldona {

// Declared with its words: the caption with "&" before the underlined letter, and "&&" for one that is read.
class Captioned : public Control {
public:
    Captioned(Form& form, std::string name, std::string words);
    [[nodiscard]] const std::string& caption() const { return caption_; } // as it is read
    void setCaption(std::string caption);
    // As a window draws it. Another caption than the declared one has no letter.
    [[nodiscard]] std::string words() const;
    [[nodiscard]] std::string shownText() const override { return caption_; }
    [[nodiscard]] std::string actWords() const override { return caption_; }

private:
    std::string declared_;
    std::string caption_;
};

class Label : public Captioned {
public:
    Label(Form& form, std::string name, std::string words = {})
        : Captioned(form, std::move(name), std::move(words)) {}
    [[nodiscard]] bool takesFocus() const override { return false; }
};

class CommandButton : public Captioned {
public:
    CommandButton(Form& form, std::string name, std::string words = {})
        : Captioned(form, std::move(name), std::move(words)) {}
    void takeKey(const KeyEvent& key, char32_t character) override; // Space and Enter press it
};

// A frame, panel or tab page: holds other controls.
class Frame : public Captioned {
public:
    Frame(Form& form, std::string name, std::string words = {})
        : Captioned(form, std::move(name), std::move(words)) {}
    [[nodiscard]] bool takesFocus() const override { return false; }
};

// One text: a text box or a masked edit (whose masks the rules never set).
class TextBox : public Control {
public:
    TextBox(Form& form, std::string name, std::string text = {})
        : Control(form, std::move(name)), text_(std::move(text)) {}

    std::function<void()> onChange;

    [[nodiscard]] const std::string& text() const { return text_; }
    void setText(std::string text); // raises onChange, also for the same text
    [[nodiscard]] std::string shownText() const override { return text_; }

    // In characters. Selecting all is what the rules ask for most.
    [[nodiscard]] int selStart() const { return selStart_; }
    [[nodiscard]] int selLength() const { return selLength_; }
    void select(int start, int length); // what is outside the text is left out
    void selectAll() override;
    [[nodiscard]] bool isField() const override { return true; }
    [[nodiscard]] bool takesTyping() const override { return true; }
    void takeKey(const KeyEvent& key, char32_t character) override;
    bool put(std::string_view text) override;
    // As setText, by the operator's hand: the caret is put first. (Assigning by code puts it before the
    // text.)
    void edit(std::string text, int caret);
    int maxLength = 0;       // characters the operator may type; 0: no limit
    std::string placeholder; // shown faded in the empty field, which it does not fill

private:
    std::string text_;
    int selStart_ = 0;
    int selLength_ = 0;
};

class CheckBox : public Captioned {
public:
    CheckBox(Form& form, std::string name, std::string words = {}, bool checked = false)
        : Captioned(form, std::move(name), std::move(words)), checked_(checked) {}
    [[nodiscard]] bool checked() const { return checked_; }
    void setChecked(bool checked); // raises onClick where it changes, as this kind of control does
    void press() override;
    void takeKey(const KeyEvent& key, char32_t character) override;
    [[nodiscard]] std::optional<bool> mark() const override { return checked_; }
    void setMark(bool on, DateTime today) override;
    [[nodiscard]] std::string shownText() const override { return checked_ ? "on" : "off"; }

private:
    bool checked_;
};

// One of the options of its frame: setting one clears the others.
class OptionButton : public Captioned {
public:
    OptionButton(Form& form, std::string name, std::string words = {})
        : Captioned(form, std::move(name), std::move(words)) {}
    [[nodiscard]] bool value() const { return value_; }
    void setValue(bool value); // raises onClick when it becomes set
    void press() override;
    void takeKey(const KeyEvent& key, char32_t character) override;
    [[nodiscard]] std::string shownText() const override { return value_ ? "on" : "off"; }

private:
    bool value_ = false;
};

// A date or nothing. A picker with a check box is Null while unchecked; a date combo is Null while empty.
class DateBox : public Control {
public:
    enum class Style { Picker, PickerWithCheck, Combo };
    DateBox(Form& form, std::string name, Style style = Style::Picker)
        : Control(form, std::move(name)), style_(style) {}

    std::function<void()> onChange;

    [[nodiscard]] Style style() const { return style_; }
    [[nodiscard]] const Value& value() const { return value_; } // Null or a date at midnight
    // Null, a date (its time is dropped) or a text read as one; "" is Null. Raises onChange. Error 13 for
    // other texts, and for Null in a plain picker.
    void setValue(const Value& value);
    [[nodiscard]] std::string text() const; // "dd/mm/yyyy", or ""
    [[nodiscard]] std::string shownText() const override { return text(); }
    [[nodiscard]] const Value& lastDate() const { return lastDate_; } // the last one held; Null: none yet
    [[nodiscard]] bool canHold(const Value& value) const;             // setValue would take it
    [[nodiscard]] bool isField() const override { return true; }
    bool put(std::string_view text) override;
    // Of a picker with a check box: off is Null, on the date that it last held, or today.
    [[nodiscard]] std::optional<bool> mark() const override;
    void setMark(bool on, DateTime today) override;

private:
    Style style_;
    Value value_;
    Value lastDate_;
};

class Timer : public Control {
public:
    Timer(Form& form, std::string name, int milliseconds)
        : Control(form, std::move(name)), interval(milliseconds) {}
    std::function<void()> onTimer;
    int interval;
    [[nodiscard]] bool takesFocus() const override { return false; }
    [[nodiscard]] bool takesClick() const override { return false; }
    [[nodiscard]] std::string shownText() const override { return {}; }
};

// Shows one fixed local page.
class WebPane : public Control {
public:
    WebPane(Form& form, std::string name) : Control(form, std::move(name)) {}
    [[nodiscard]] const std::string& html() const { return html_; }
    void setHtml(std::string html);
    [[nodiscard]] std::string shownText() const override { return html_; }

private:
    std::string html_;
};

} // namespace veldona
