// A screen: a named set of controls with a focus, and the events of its life.
//
// A concrete screen is a plain record that derives from Form and declares its controls as members; free
// procedures work on it. A form is made by the registry (forms.h) when it is first loaded and destroyed after
// it unloaded.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/controls/keys.h"

namespace veldona {

class Control;
class Forms;

enum class MousePointer { Default = 0, Wait = 11 };

class Form {
public:
    Form(Forms& forms, std::string name, std::string caption);
    virtual ~Form();
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    std::function<void()> onLoad;
    std::function<void()> onActivate; // each time the screen comes to the front
    std::function<void()> onUnload;
    std::function<void(KeyEvent&)> onKeyDown; // the screen sees every key first
    std::function<void(KeyPress&)> onKeyPress;

    [[nodiscard]] const std::string& name() const { return name_; }
    [[nodiscard]] Forms& forms() const { return *forms_; }
    [[nodiscard]] const std::string& caption() const { return caption_; }
    void setCaption(std::string caption);
    [[nodiscard]] MousePointer pointer() const { return pointer_; }
    void setPointer(MousePointer pointer);
    [[nodiscard]] bool enabled() const { return enabled_; }
    void setEnabled(bool enabled);

    // In the order of declaration, which is the order of the Tab key.
    [[nodiscard]] const std::vector<Control*>& controls() const { return controls_; }
    [[nodiscard]] Control* find(std::string_view name) const; // case-free; nullptr: none
    [[nodiscard]] Control* activeControl() const { return activeControl_; }

    // Gives `control` the focus: the lost-focus event of the one that had it, then the got-focus event. No
    // event where it has the focus already. Control::setFocus is the way of code, user::focus that of the
    // operator; both end here. Each of the two events is one of its own: its error ends it alone.
    void moveFocus(Control& control);

    // It is gone for everybody but the handlers of its own that still run.
    [[nodiscard]] bool isUnloaded() const { return unloaded_; }

private:
    friend class Control;
    friend class Forms;
    void enlist(Control& control);
    void releaseFocus(); // takes it from a control that was hidden or disabled, with its lost-focus event
    Forms* forms_;
    std::string name_;
    std::string caption_;
    std::vector<Control*> controls_;
    Control* activeControl_ = nullptr;
    MousePointer pointer_ = MousePointer::Default;
    bool enabled_ = true;
    bool unloaded_ = false;
};

} // namespace veldona
