// The program in real windows over a shop of its own. What a test needs in the books it writes by `shop`
// before it starts the program.
#pragma once

#include <deque>
#include <functional>

#include <gtest/gtest.h>

#include "apps/screens.h"
#include "core/startup.h"
#include "tests/support/shop.h"
#include "tests/ui/window_tests.h"
#include "ui/screens.h"
#include "ui/windowdesktop.h"

namespace veldona::test {

// Does what is queued in the first pause that comes.
class PausePump : public WindowPump {
public:
    using WindowPump::WindowPump;
    void doEvents() override {
        while (!acts.empty()) {
            const auto next = std::move(acts.front());
            acts.pop_front();
            next();
        }
        WindowPump::doEvents();
    }
    std::deque<std::function<void()>> acts;
};

class ProgramWindows : public ::testing::Test {
protected:
    void start() {
        shop.session.gBaglanti.reset();
        drawScreens(host);
        host.timersRun = false;
        registerScreens(forms, session);
        EXPECT_TRUE(startSession(session));
    }
    std::vector<std::string> query(const std::string& sql) {
        shop.session.gBaglanti = std::move(session.gBaglanti);
        auto found = shop.rows(sql);
        session.gBaglanti = std::move(shop.session.gBaglanti);
        return found;
    }

    Shop shop;
    WindowHost host{shop.clock};
    PausePump pump{host};
    Desktop desktop{
        shop.clock, shop.dialogs, pump, shop.opener, shop.desktop.paths, {}, shop.desktop.dataSources};
    Forms forms{host};
    Session session{desktop, forms};
};

} // namespace veldona::test
