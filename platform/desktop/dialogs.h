// Message boxes, questions, input boxes and the surface of an error that no procedure caught.
#pragma once

#include <cstdint>
#include <deque>
#include <optional>
#include <string>
#include <utility>

#include "platform/runtime/error.h"
#include "platform/runtime/secret.h"

namespace veldona {

enum class Icon { None = 0, Critical = 16, Question = 32, Exclamation = 48, Information = 64 };
enum class Buttons { Ok = 0, YesNo = 4 };
enum class Answer { Ok = 1, Yes = 6, No = 7 };

inline constexpr const char* kProgramTitle = "Veldona"; // of a box that is given no title

struct Message {
    std::string text;
    std::string title = kProgramTitle;
    Icon icon = Icon::None;
    Buttons buttons = Buttons::Ok;
    Answer proposed = Answer::Yes; // of a question: what Enter gives
};

class Dialogs {
public:
    virtual ~Dialogs() = default;
    virtual Answer show(const Message& message) = 0;
    // Nothing where the box was cancelled.
    virtual std::optional<std::string> input(const std::string& prompt, const std::string& title) = 0;
    // A password, unseen while it is typed; nothing where the box was cancelled or left empty.
    // `offersKeeping`: the operator may ask for it to be kept on this machine.
    struct Password {
        Secret password;
        bool keep = false;
    };
    virtual std::optional<Password> password(const std::string& prompt, const std::string& title,
                                             bool offersKeeping) = 0;
    // A folder of this machine, looked for from `start` on; nothing where the box was cancelled.
    virtual std::optional<std::string> folder(const std::string& title, const std::string& start) = 0;
    virtual void runtimeError(const RuntimeError& error) = 0;
    virtual void beep() = 0;

    void tell(std::string text, Icon icon = Icon::None) {
        show({std::move(text), kProgramTitle, icon, Buttons::Ok});
    }
    [[nodiscard]] bool confirm(std::string text, std::string title = kProgramTitle) {
        return show({std::move(text), std::move(title), Icon::Question, Buttons::YesNo}) == Answer::Yes;
    }

    // What is deleted doesn't come back, so that Enter alone deletes nothing.
    [[nodiscard]] bool confirmDeleting(std::string text, std::string title = kProgramTitle) {
        return show({std::move(text), std::move(title), Icon::Question, Buttons::YesNo, Answer::No}) ==
               Answer::Yes;
    }

    // Whether a box since forgetShown() held these words.
    [[nodiscard]] bool hasShown(const std::string& words) const { return shown_.find(words) != shown_.npos; }
    void forgetShown() { shown_.clear(); }

protected:
    // For whoever shows a box.
    void noteShown(const std::string& text) { shown_.append(text).append(1, '\n'); }

private:
    std::string shown_;
};

// Keeps what was said until somebody looks, and answers from a queue: for tests and the operator console. A
// question takes "yes" or "no" from the front of the queue and leaves anything else there; a plain box takes
// an "ok".
class RecordingDialogs : public Dialogs {
public:
    struct Said {
        std::string text;
        std::string title;
        std::optional<std::int32_t> errorNumber; // of the run-time error surface
        bool isPrompt = false;                   // an input box's
    };
    Answer show(const Message& message) override;
    std::optional<std::string> input(const std::string& prompt, const std::string& title) override;
    // An answer that is empty cancels these two; a password is not kept.
    std::optional<Password> password(const std::string& prompt, const std::string& title,
                                     bool offersKeeping) override;
    std::optional<std::string> folder(const std::string& title, const std::string& start) override;
    void runtimeError(const RuntimeError& error) override;
    void beep() override { ++beeps; }

    std::deque<Said> said;           // oldest first; the reader takes them away
    std::deque<std::string> answers; // "yes", "no", "ok", or a text for an input box
    int beeps = 0;
    int unanswered = 0; // questions that found no answer and were answered No, or empty
};

} // namespace veldona
