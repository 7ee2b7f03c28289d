#include "platform/desktop/dialogs.h"

namespace veldona {

Answer RecordingDialogs::show(const Message& message) {
    noteShown(message.text);
    said.push_back({message.text, message.title, std::nullopt});
    const auto isNext = [this](const char* answer) { return !answers.empty() && answers.front() == answer; };
    if (message.buttons == Buttons::Ok) {
        if (isNext("ok")) answers.pop_front();
        return Answer::Ok;
    }
    const bool isYes = isNext("yes");
    if (isYes || isNext("no"))
        answers.pop_front();
    else
        ++unanswered;
    return isYes ? Answer::Yes : Answer::No;
}

std::optional<std::string> RecordingDialogs::input(const std::string& prompt, const std::string& title) {
    said.push_back({prompt, title, std::nullopt, true});
    if (answers.empty()) {
        ++unanswered;
        return std::string();
    }
    std::string answer = std::move(answers.front());
    answers.pop_front();
    return answer;
}

std::optional<Dialogs::Password> RecordingDialogs::password(const std::string& prompt,
                                                            const std::string& title, bool) {
    auto typed = input(prompt, title);
    if (!typed || typed->empty()) return std::nullopt;
    return Password{Secret::taken(*typed)};
}

std::optional<std::string> RecordingDialogs::folder(const std::string& title, const std::string&) {
    const auto named = input(title, title);
    return named && named->empty() ? std::nullopt : named;
}

void RecordingDialogs::runtimeError(const RuntimeError& error) {
    noteShown(error.description());
    said.push_back({error.description(), kProgramTitle, error.number()});
}

} // namespace veldona
