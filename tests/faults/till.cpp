#include "tests/faults/till.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

#include "apps/operator/verbs.h"
#include "apps/screens.h"
#include "core/delivered.h"
#include "core/session.h"
#include "platform/controls/control.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"
#include "platform/store/faces/database.h"
#include "tests/support/answer.h"

namespace veldona::faults {

std::unique_ptr<store::Engine> Drive::engine() const {
    return store::openSqlcipher(books().string(), kDeliveredPassword, std::chrono::seconds(5));
}

std::string Drive::answer(const std::string& sql) const {
    return test::answerOf(*engine(), sql);
}

Till::Till(const Drive& drive) : stage_({drive.path().string(), registerScreens, nullptr, nullptr}, *this) {}

void Till::follow(const std::string& lines) {
    std::istringstream text(lines);
    for (std::string line; std::getline(text, line);)
        lines_.push_back(line);
}

void Till::play(const std::string& lines) {
    follow(lines);
    try {
        while (!lines_.empty())
            performNext();
    } catch (const std::runtime_error&) {
        lines_.clear();
        throw;
    }
}

void Till::performNext() {
    const std::string line = lines_.front();
    lines_.pop_front();
    try {
        if (line.starts_with('@'))
            atMark(line.substr(1));
        else
            perform(line);
    } catch (const console::Shortfall& refused) {
        if (!onShortfall) throw;
        onShortfall(refused.what());
    }
}

void Till::perform(const std::string& text) {
    const auto line = console::readLine(text);
    if (!line) return;
    const Forms::Hold hold(stage_.process().forms());
    for (const console::Line& step : console::stepsOf(*line))
        console::verbOf(step).run(stage_, step);
}

void Till::runModal(Form& form) {
    form.forms().runLoop([&] {
        while (!form.isUnloaded() && !form.forms().ended()) {
            if (lines_.empty())
                form.forms().unload(form);
            else
                performNext();
        }
    });
}

std::vector<std::string> Till::said() {
    std::vector<std::string> texts;
    for (const auto& message : stage_.dialogs.said)
        texts.push_back(message.text);
    stage_.dialogs.said.clear();
    return texts;
}

std::string Till::shown() const {
    std::string text = screenInFront() + '\n';
    for (const Control* control : stage_.screen().controls()) {
        if (!control->isShown()) continue;
        text += control->name() + (control->isUsable() ? ": " : " (off): ") + control->shownText();
        if (const auto mark = control->mark()) text += *mark ? " [x]" : " [ ]";
        if (const auto colour = control->foreColor())
            text += " colour " + std::to_string(static_cast<unsigned>(*colour));
        text += '\n';
        const ShownRows* rows = control->shownRows();
        for (int row = 0; rows != nullptr && row < rows->countShown(); ++row) {
            text += row == rows->selectedShown() ? " >" : "  ";
            for (int column = 0; column < std::max(1, rows->columnsShown()); ++column)
                text += rows->textShown(row, column) + '|';
            text += '\n';
        }
    }
    return text;
}

std::string Till::lastReport() const {
    const auto& report = stage_.reports.last();
    return report ? report->text : std::string();
}

void Till::pragma(const std::string& text) {
    session().workspace.open(kDatabasePath, "")->engine().execute("PRAGMA " + text);
}

} // namespace veldona::faults
