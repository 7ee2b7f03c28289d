// Message boxes, questions, input boxes and the run-time error surface as dialogs of the desktop.
#pragma once

#include "platform/desktop/dialogs.h"

namespace veldona {

class WindowHost;

class WindowDialogs : public Dialogs {
public:
    explicit WindowDialogs(WindowHost& host) : host_(host) {}

    Answer show(const Message& message) override;
    std::optional<std::string> input(const std::string& prompt, const std::string& title) override;
    std::optional<Password> password(const std::string& prompt, const std::string& title,
                                     bool offersKeeping) override;
    std::optional<std::string> folder(const std::string& title, const std::string& start) override;
    void runtimeError(const RuntimeError& error) override;
    void beep() override;

private:
    WindowHost& host_;
};

} // namespace veldona
