#include "apps/operator/stage.h"

#include <utility>

#include "core/delivered.h"
#include "core/session.h"
#include "platform/store/engine/createdatabase.h"
#include "schema/tables.h"

namespace veldona::console {

Answer AskedDialogs::show(const Message& message) {
    if (onShown) onShown(message.text);
    const int before = unanswered;
    const Answer answer = RecordingDialogs::show(message);
    tellUnanswered(before, message.text);
    return answer;
}

std::optional<std::string> AskedDialogs::input(const std::string& prompt, const std::string& title) {
    if (onShown) onShown(prompt);
    const int before = unanswered;
    auto text = RecordingDialogs::input(prompt, title);
    tellUnanswered(before, prompt);
    return text;
}

void AskedDialogs::runtimeError(const RuntimeError& error) {
    if (onShown) onShown(error.description());
    RecordingDialogs::runtimeError(error);
}

void AskedDialogs::tellUnanswered(int before, const std::string& question) const {
    if (unanswered != before && onUnanswered) onUnanswered(question);
}

std::string messageText(const RecordingDialogs::Said& said) {
    if (said.errorNumber) return "run-time error " + std::to_string(*said.errorNumber) + ": " + said.text;
    return "\"" + said.text + "\" [" + said.title + "]";
}

Stage::Stage(Setting setting, FormHost& host)
    : setting_(std::move(setting)), host_(&host), desk_(reports, setting_.writePdf) {
    if (setting_.windows) windows_ = setting_.windows(clock);
    if (setting_.server) server_.emplace(*setting_.server);
    renewProcess();
}

void Stage::renewProcess() {
    std::function<void(Desktop&)> behindTheEnd;
    if (process_) {
        behindTheEnd = std::move(process_->session().behindTheEnd);
        dropProcess(); // the old run lets go of the files first
    }
    process_ = std::make_unique<Process>(setting_.folder, setting_.screens, clock, dialogs, *host_);
    process_->session().reportDesk = &desk_;
    if (behindTheEnd) behindTheEnd(process_->desktop());
}

void Stage::makeBooks() {
    if (!server_)
        return store::createDatabase(process_->paths().toNative(kDatabasePath), kDeliveredPassword,
                                     schema::tables(), schema::savedQueries());
    server_->make(process_->paths().toNative(kDatabasePath));
}

void Stage::dropProcess() {
    for (Form* form : process_->forms().loadedForms())
        host_->formUnloaded(*form);
    process_.reset();
}

Form& Stage::screen() const {
    if (Form* front = process_->forms().active()) return *front;
    throw Shortfall("no screen is open");
}

Control& Stage::control(const Word& name) const {
    const std::string_view text = name.text;
    const auto dot = text.find('.');
    const Form* form = dot == text.npos ? &screen() : process_->forms().loaded(text.substr(0, dot));
    if (form == nullptr) throw Shortfall("no screen " + std::string(text.substr(0, dot)) + " is loaded");
    if (Control* found = form->find(dot == text.npos ? text : text.substr(dot + 1))) return *found;
    throw Shortfall("there is no " + name.text + " on " + form->name());
}

} // namespace veldona::console
