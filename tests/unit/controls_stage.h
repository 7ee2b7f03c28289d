// A screen with one control of each kind and a log of all that happens to it, on a host that plays a script.
#pragma once

#include <deque>
#include <memory>
#include <string>

#include "platform/controls/forms.h"
#include "platform/controls/menus.h"
#include "platform/controls/userinput.h"

namespace veldona {

struct Log {
    std::string text;
    void operator()(const std::string& entry) { text += text.empty() ? entry : " " + entry; }
    std::string take() { return std::exchange(text, {}); }
};

struct Screen : Form {
    Screen(Forms& owner, std::string name, Log& events) : Form(owner, std::move(name), "Ekran"), log(events) {
        onLoad = [this] { log(this->name() + ".load"); };
        onActivate = [this] { log(this->name() + ".activate"); };
        onUnload = [this] { log(this->name() + ".unload"); };
    }
    // Writes the key and focus events of `control` down.
    void trace(Control& control) {
        const std::string as = control.name();
        control.onGotFocus = [this, as] { log(as + ".got"); };
        control.onLostFocus = [this, as] { log(as + ".lost"); };
        control.onClick = [this, as] { log(as + ".click"); };
        control.onDblClick = [this, as] { log(as + ".dblclick"); };
        control.onKeyDown = [this, as](KeyEvent&) { log(as + ".down"); };
        control.onKeyPress = [this, as](KeyPress&) { log(as + ".press"); };
        control.onKeyUp = [this, as](KeyEvent&) { log(as + ".up"); };
    }
    template <class T> void traceChange(T& control) {
        trace(control);
        control.onChange = [this, &control] { log(control.name() + "=" + control.text()); };
    }

    Log& log;
    Label label{*this, "lbl"};
    TextBox a{*this, "a"};
    TextBox b{*this, "b"};
    Frame frame{*this, "fra"};
    CommandButton button{*this, "cmd"};
    ListBox list{*this, "lst"};
    ComboBox combo{*this, "cbo"};
    ComboBox closedCombo{*this, "cboList", ComboBox::Style::ListOnly};
    FlexGrid sheet{*this, "grd", 3, 3};
    DataGrid grid{*this, "dat"};
    CheckBox check{*this, "chk"};
    OptionButton option1{*this, "opt1"};
    OptionButton option2{*this, "opt2"};
    OptionButton framedOption{*this, "opt3"};
    DateBox date{*this, "dt", DateBox::Style::PickerWithCheck};
    Menu menu{*this, "mnu", ""};
    MenuItem entry{menu, "mnuSil", "", "Ctrl+D"};
};

// Modal screens are run by the next step of `script`.
class ScriptHost : public FormHost {
public:
    void formUnloaded(Form& form) override { log(form.name() + ".gone"); }
    void runModal(Form& form) override {
        log(form.name() + ".modal");
        if (script.empty()) return;
        const auto step = std::move(script.front());
        script.pop_front();
        step(form);
        log(form.name() + ".back");
    }
    void processEnded() override { log("ended"); }

    Log log;
    std::deque<std::function<void(Form&)>> script;
};

struct Stage {
    Stage() {
        for (const char* name : {"frmA", "frmB", "frmC"})
            forms.add(name, [this, name](Forms& owner) {
                auto made = std::make_unique<Screen>(owner, name, host.log);
                if (prepare) prepare(*made);
                return made;
            });
        forms.onUncaught = [this](const RuntimeError& error) {
            host.log("!" + std::to_string(error.number()));
        };
    }
    Screen& shown(const char* name = "frmA") {
        forms.show(name, Kip::Modeless);
        host.log.take();
        return static_cast<Screen&>(*forms.loaded(name));
    }

    std::function<void(Screen&)> prepare; // before its load
    ScriptHost host;
    Forms forms{host};
};

} // namespace veldona
