// Runs the lines of one scenario, and is the host of its screens: a screen that opens modally takes the lines
// that follow until it unloads, and a scenario that ends before that unloads it. So no scenario can hang in a
// screen.
#pragma once

#include <optional>
#include <string>

#include "apps/operator/script.h"
#include "apps/operator/stage.h"
#include "apps/operator/verbs.h"
#include "platform/controls/forms.h"

namespace veldona::console {

// What came out of one scenario or several.
struct Tally {
    int passed = 0;          // expectations that held
    int failed = 0;          // those that did not, acts refused, questions without an answer, errors left
    bool unreadable = false; // a line could not be read
};

class Runner : public FormHost {
public:
    Runner(Script& script, Setting setting, Tally& tally);
    void run();

    void formLoaded(Form& form) override;
    void formShown(Form& form, Kip kip) override;
    void formUnloaded(Form& form) override;
    void formChanged(Form& form) override;
    void controlChanged(Control& control) override;
    void focusMoved(Form& form) override;
    void runModal(Form& form) override;
    void processEnded() override;

private:
    [[nodiscard]] std::optional<Line> nextLine();
    void perform(const Line& line);
    void performOnce(const std::string& place, const Verb& verb, const Line& line);
    void complainOfUnreadable(const std::exception& error);
    void fail(const std::string& place, const std::string& text);
    void reportMessagesLeft();

    Script& script_;
    Tally& tally_;
    Stage stage_;
};

} // namespace veldona::console
