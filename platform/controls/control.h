// A control without a window: what it shows, what it answers, which events it raises.
//
// A control belongs to a form and carries its name in the code; it may stand in a frame, and is shown only
// while all that holds it is. Every change of state is reported to the form's host, so that a window can
// follow. Assigning by code raises the change event of a text (also for the same text) and never a click.
#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>

#include "platform/controls/keys.h"
#include "platform/controls/shownrows.h"
#include "platform/runtime/value.h"

namespace veldona {

class Form;

// Colours that the rules name by the system's number.
enum class Colour : std::uint32_t {
    WindowBackground = 0x80000005,
    FocusedBackground = 0x80000013,
    CoveredByPayments = 0x000040C0,
    Unusual = 0x0080C0FF, // our own: a value that is rarely meant
};

class Control {
public:
    Control(Form& form, std::string name);
    virtual ~Control();
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    std::function<void()> onGotFocus;
    std::function<void()> onLostFocus;
    std::function<void()> onClick;
    std::function<void()> onDblClick;
    std::function<void(KeyEvent&)> onKeyDown;
    std::function<void(KeyPress&)> onKeyPress;
    std::function<void(KeyEvent&)> onKeyUp;

    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] Form& form() const { return *form_; }

    // Stands in `holder` (a frame, a tab page, a menu) from now on.
    void placeIn(Control& holder) { holder_ = &holder; }
    [[nodiscard]] Control* holder() const { return holder_; }

    [[nodiscard]] bool visible() const { return visible_; }
    void setVisible(bool visible);
    [[nodiscard]] bool enabled() const { return enabled_; }
    void setEnabled(bool enabled);
    // It and all that holds it are visible, respectively enabled.
    [[nodiscard]] bool isShown() const;
    [[nodiscard]] bool isUsable() const;

    [[nodiscard]] const std::string& toolTip() const { return toolTip_; }
    void setToolTip(std::string text);
    [[nodiscard]] std::optional<Colour> backColor() const { return backColor_; }
    void setBackColor(std::optional<Colour> colour);
    [[nodiscard]] std::optional<Colour> foreColor() const { return foreColor_; }
    void setForeColor(std::optional<Colour> colour);

    // Error 5 where it is hidden or disabled or of a kind that takes no focus.
    void setFocus();
    [[nodiscard]] virtual bool takesFocus() const { return true; }
    // Text or caption, as the operator reads it.
    [[nodiscard]] virtual std::string shownText() const = 0;

    // Its rows as the operator sees them; nullptr: it has none.
    [[nodiscard]] virtual const ShownRows* shownRows() const { return nullptr; }
    // Shows and hides what stands in it by turning to one of its pages.
    [[nodiscard]] virtual bool hasPages() const { return false; }
    virtual void turnToPage(const Control&) {}

    // What the operator's hand does with it once it has reached it (userinput.h), each as the events that it
    // makes. A kind that has no use for an act leaves it as it is here, and the act is refused.
    [[nodiscard]] virtual bool isInReach() const { return isShown() && isUsable(); }
    [[nodiscard]] virtual bool isField() const { return false; }   // what is entered stands in it
    [[nodiscard]] virtual bool takesClick() const { return true; } // all of it, not a part
    // The words on it, which say what its click does; "" of a control that only holds something.
    [[nodiscard]] virtual std::string actWords() const { return {}; }
    virtual void press();                                          // a click
    virtual void takeKey(const KeyEvent& key, char32_t character); // that nobody swallowed; 0: no character
    [[nodiscard]] virtual bool isCalledBy(const KeyEvent&) const {
        return false;
    } // from anywhere in its form
    [[nodiscard]] virtual bool takesTyping() const { return false; }
    virtual void selectAll() {}
    virtual bool put(std::string_view) { return false; }    // a text at once
    virtual bool choose(std::string_view) { return false; } // an entry of its list
    [[nodiscard]] virtual int rowsToClick() const { return 0; }
    virtual void clickRow(int) {}
    [[nodiscard]] virtual std::optional<bool> mark() const { return std::nullopt; } // its check box; none
    virtual void setMark(bool, DateTime /*today*/) {}

    // A menu that the right button (or the menu key) opens over it.
    Control* popupMenu = nullptr;
    bool locked = false; // text is shown and selectable, not editable

protected:
    void changed(); // tells the host
    // Runs a handler that code's own assignment raises, its error going to that code. The last thing its
    // caller does.
    void fire(const std::function<void()>& handler);
    // Runs an event of the operator's; `words`: what the operator does by it.
    void dispatch(const std::function<void()>& event, const std::string& words = {});
    void raiseClick();

private:
    Form* form_;
    std::string name_;
    Control* holder_ = nullptr;
    bool visible_ = true;
    bool enabled_ = true;
    std::string toolTip_;
    std::optional<Colour> backColor_;
    std::optional<Colour> foreColor_;
};

// All of them stand in `holder` from now on.
void place(Control& holder, std::initializer_list<Control*> controls);

} // namespace veldona
