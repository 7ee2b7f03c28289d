// A shop of its own for one test: an empty delivered database in a fresh folder, a session without windows.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "core/database.h"
#include "core/session.h"
#include "platform/controls/forms.h"
#include "platform/desktop/desktop.h"
#include "tests/support/files.h"

namespace veldona::test {

class NoHost : public FormHost {
public:
    void runModal(Form&) override {}
};

class NotingOpener : public Opener {
public:
    bool open(const std::string& nativePath) override {
        opened.push_back(nativePath);
        return true;
    }
    std::vector<std::string> opened;
};

// Counts the moments at which events may run; at the next one it does `next`, once.
class NotingPump : public EventPump {
public:
    void doEvents() override {
        ++calls;
        if (const auto act = std::exchange(next, nullptr)) act();
    }
    std::function<void()> next;
    int calls = 0;
};

class Shop {
public:
    Shop(); // database as delivered, session connected, clock at 22/11/2026 10:30:00
    ~Shop();

    // Rows of a query, cells joined by "|"; Null as "NULL".
    [[nodiscard]] std::vector<std::string> rows(const std::string& sql);
    void run(const std::string& sql);
    // The texts that were said since the last call, oldest first.
    [[nodiscard]] std::vector<std::string> said();

private:
    TemporaryFolder folder_;

public:
    ManualClock clock;
    RecordingDialogs dialogs;
    NotingPump pump;
    NotingOpener opener;
    Desktop desktop;
    NoHost host;
    Forms forms;
    Session session;
};

} // namespace veldona::test
