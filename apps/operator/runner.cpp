#include "apps/operator/runner.h"
#include "core/session.h"

#include <iostream>
#include <utility>

namespace veldona::console {

namespace {

// What was printed so far comes first, also where both streams end in one place.
void complain(const std::string& place, const std::string& text) {
    std::cout.flush();
    std::cerr << place << ": " << text << '\n';
}

} // namespace

Runner::Runner(Script& script, Setting setting, Tally& tally)
    : script_(script), tally_(tally), stage_(std::move(setting), *this) {
    stage_.dialogs.onUnanswered = [this](const std::string& question) {
        fail(script_.place(), "no answer was queued for the question \"" + question + "\"");
    };
    // It would hold up every other till as long as it stands.
    stage_.dialogs.onShown = [this](const std::string& text) {
        const auto& books = stage_.process().session().gBaglanti;
        if (books && books->isOpen() && books->inTransaction())
            fail(script_.place(), "a box stands inside an open transaction: \"" + text + "\"");
    };
}

void Runner::run() {
    while (const auto line = nextLine()) {
        perform(*line);
        if (stage_.process().hasEnded()) stage_.renewProcess();
    }
    reportMessagesLeft();
    stage_.dropProcess();
}

void Runner::runModal(Form& form) {
    Forms& forms = form.forms();
    forms.runLoop([&] {
        while (!form.isUnloaded() && !forms.ended()) {
            if (const auto line = nextLine()) {
                perform(*line);
            } else {
                forms.unload(form);
            }
        }
    });
}

std::optional<Line> Runner::nextLine() {
    try {
        return script_.next();
    } catch (const UnreadableLine& error) {
        complainOfUnreadable(error);
        return std::nullopt;
    }
}

void Runner::perform(const Line& line) {
    const std::string place = script_.place(); // a screen that this line opens reads on
    const Forms::Hold hold(stage_.process().forms());
    try {
        for (const Line& step : stepsOf(line))
            performOnce(place, verbOf(step), step);
    } catch (const UnreadableLine& error) {
        complainOfUnreadable(error);
    }
}

void Runner::performOnce(const std::string& place, const Verb& verb, const Line& line) {
    try {
        verb.run(stage_, line);
        if (verb.expects()) ++tally_.passed;
    } catch (const Shortfall& shortfall) {
        fail(place, line.verb + (verb.repeats() ? " " + line.words[0].text : "") + ": " + shortfall.what());
    }
    if (Windows* windows = stage_.windows()) windows->flush();
}

void Runner::complainOfUnreadable(const std::exception& error) {
    complain(script_.place(), std::string("this line cannot be read: ") + error.what());
    tally_.unreadable = true;
    script_.stop();
}

void Runner::fail(const std::string& place, const std::string& text) {
    complain(place, text);
    ++tally_.failed;
}

void Runner::reportMessagesLeft() {
    for (const auto& said : stage_.dialogs.said) {
        if (said.errorNumber) {
            fail(script_.name(), "left unexpected: " + messageText(said));
        } else {
            std::cout << script_.name() << ": left unexpected: " << messageText(said) << '\n';
        }
    }
}

void Runner::formLoaded(Form& form) {
    if (Windows* windows = stage_.windows()) windows->follower().formLoaded(form);
}

void Runner::formShown(Form& form, Kip kip) {
    if (Windows* windows = stage_.windows()) windows->follower().formShown(form, kip);
}

void Runner::formUnloaded(Form& form) {
    if (Windows* windows = stage_.windows()) windows->follower().formUnloaded(form);
}

void Runner::formChanged(Form& form) {
    if (Windows* windows = stage_.windows()) windows->follower().formChanged(form);
}

void Runner::controlChanged(Control& control) {
    if (Windows* windows = stage_.windows()) windows->follower().controlChanged(control);
}

void Runner::focusMoved(Form& form) {
    if (Windows* windows = stage_.windows()) windows->follower().focusMoved(form);
}

void Runner::processEnded() {
    if (Windows* windows = stage_.windows()) windows->follower().processEnded();
}

} // namespace veldona::console
