#include <gtest/gtest.h>

#include <new>

#include "controls_stage.h"

namespace veldona {
namespace {

TEST(Forms, AModalScreenHoldsItsCallerUntilItUnloaded) {
    Stage stage;
    stage.shown();
    stage.host.script = {[&](Form& form) { stage.forms.dispatch([&] { stage.forms.unload(form); }); }};
    stage.forms.dispatch([&] {
        stage.forms.show("FRMB", Kip::Modal);
        stage.host.log("caller");
    });
    EXPECT_EQ(stage.host.log.take(),
              "frmB.load frmB.activate frmB.modal frmB.unload frmB.gone frmA.activate frmB.back "
              "caller");
    EXPECT_EQ(stage.forms.loaded("frmB"), nullptr);
}

TEST(Forms, OnlyTheScreenInFrontHandsTheFrontOn) {
    Stage stage;
    for (const char* name : {"frmA", "frmB", "frmC"})
        stage.shown(name);
    stage.forms.unload(*stage.forms.loaded("frmB"));
    EXPECT_EQ(stage.host.log.take(), "frmB.unload frmB.gone");
    stage.forms.show("frmA", Kip::Modeless);
    EXPECT_EQ(stage.host.log.take(), "frmA.activate");
    stage.forms.unload(*stage.forms.active());
    EXPECT_EQ(stage.host.log.take(), "frmA.unload frmA.gone frmC.activate");
    stage.forms.load("frmB");
    EXPECT_EQ(stage.forms.active()->name(), "frmC");
}

TEST(Forms, TheOperatorTurnsToAnotherOpenScreenUnlessAModalOneIsInFront) {
    Stage stage;
    Screen& first = stage.shown();
    Screen& second = stage.shown("frmB");
    EXPECT_TRUE(user::click(first.button));
    EXPECT_EQ(stage.host.log.take(), "frmA.activate");
    EXPECT_EQ(stage.forms.active(), &first);
    second.setEnabled(false);
    EXPECT_FALSE(user::focus(second.b));
    second.setEnabled(true);
    stage.host.script = {[&](Form&) {
        EXPECT_FALSE(user::click(first.button));
        EXPECT_FALSE(user::click(second.button));
        EXPECT_EQ(stage.forms.active()->name(), "frmC");
    }};
    stage.forms.show("frmC", Kip::Modal);
}

TEST(Forms, AScreenThatClosesWhileItOpensIsNotRunModally) {
    Stage stage;
    stage.prepare = [](Screen& screen) { screen.onLoad = [&] { screen.forms().unload(screen); }; };
    stage.forms.show("frmA", Kip::Modal);
    EXPECT_EQ(stage.host.log.take(), "frmA.unload frmA.gone");
    EXPECT_THROW(stage.forms.load("frmA"), RuntimeError);

    stage.host.log.take();
    stage.prepare = [](Screen& screen) { screen.onActivate = [&] { screen.forms().unload(screen); }; };
    stage.forms.show("frmB", Kip::Modal);
    EXPECT_EQ(stage.host.log.take(), "frmB.load frmB.unload frmB.gone");
}

TEST(Forms, AFailedLoadLeavesNoScreenBehind) {
    Stage stage;
    stage.prepare = [](Screen& screen) { screen.onLoad = [] { raise(ErrorNumber::Overflow); }; };
    EXPECT_THROW(stage.forms.show("frmA", Kip::Modal), RuntimeError);
    EXPECT_EQ(stage.host.log.take(), "frmA.gone");
    EXPECT_TRUE(stage.forms.loadedForms().empty());
}

TEST(Forms, AHandlerMayUnloadItsOwnScreenAndReplaceItself) {
    Stage stage;
    Screen& screen = stage.shown();
    const std::string before = "still here, and long enough to stand outside the handler";
    screen.a.onChange = [&stage, &screen, before] {
        screen.a.onChange = nullptr;
        stage.forms.unload(screen);
        stage.host.log(before);
    };
    screen.a.setText("x"); // from no event
    EXPECT_EQ(stage.host.log.take(), "frmA.unload frmA.gone " + before);
}

TEST(Forms, AnActivationGivesTheFocusToTheFirstControlThatTakesIt) {
    Stage stage;
    stage.prepare = [](Screen& screen) {
        screen.trace(screen.b);
        screen.a.setEnabled(false);
    };
    stage.forms.show("frmA", Kip::Modeless);
    EXPECT_EQ(stage.host.log.take(), "frmA.load b.got frmA.activate");
}

TEST(Forms, AnErrorEndsItsOwnEventAlone) {
    Stage stage;
    Screen& screen = stage.shown();
    screen.traceChange(screen.a);
    screen.a.onChange = [] { raise(ErrorNumber::DivisionByZero); };
    screen.b.onLostFocus = [] { raise(ErrorNumber::Overflow); };
    user::focus(screen.b);
    stage.host.log.take();
    EXPECT_TRUE(user::type(screen.a, "x"));
    EXPECT_EQ(stage.host.log.take(), "!6 a.got a.down a.press !11 a.up");
    EXPECT_EQ(screen.a.text(), "x");
    stage.forms.dispatch([] { throw std::bad_alloc(); });
    EXPECT_EQ(stage.host.log.take(), "!7") << "memory that ran out is told, too";
}

TEST(Forms, TheEndOfTheProcessRunsNothingBehindIt) {
    for (const bool inLoop : {false, true}) {
        Stage stage;
        Screen& screen = stage.shown();
        screen.button.onClick = [&] {
            stage.forms.show("frmB", Kip::Modal);
            stage.host.log("caller");
        };
        stage.prepare = [](Screen& inner) { inner.button.onClick = [&] { inner.forms().endProcess(); }; };
        stage.host.script = {[&](Form& form) {
            const auto act = [&] {
                user::click(*form.find("CMD"));
                stage.host.log("loop");
            };
            inLoop ? stage.forms.runLoop(act) : act();
        }};
        EXPECT_TRUE(user::click(screen.button));
        // A loop that no exception may cross is run to its end; its own caller is not.
        EXPECT_EQ(stage.host.log.take(),
                  std::string("frmB.load frmB.activate frmB.modal ended") + (inLoop ? " loop" : ""));
        EXPECT_TRUE(stage.forms.ended());
        EXPECT_FALSE(user::click(screen.button));
        stage.forms.dispatch([&] { stage.host.log("late"); });
        stage.forms.unload(screen);
        EXPECT_EQ(stage.host.log.take(), "frmA.gone");
    }
}

TEST(Forms, GoingDownRunsNoEvent) {
    ScriptHost host;
    {
        Forms forms(host);
        forms.add("frmA", [&](Forms& owner) { return std::make_unique<Screen>(owner, "frmA", host.log); });
        forms.show("frmA", Kip::Modeless);
        host.log.take();
    }
    EXPECT_EQ(host.log.take(), "");
}

} // namespace
} // namespace veldona
