// The time of day, asked for and never called from a rule; and the program's own waits.
#pragma once

#include "platform/runtime/datetime.h"

namespace veldona {

class Clock {
public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual DateTime now() = 0;
    [[nodiscard]] DateTime today() { return now().date(); }
    // Stands still for so long; windows keep being painted where there are any.
    virtual void wait(int milliseconds) = 0;
};

class SystemClock : public Clock {
public:
    [[nodiscard]] DateTime now() override; // local time
    void wait(int milliseconds) override;
};

// Moves only when told: `set`, and the program's waits, which add up and do not sleep.
class ManualClock : public Clock {
public:
    [[nodiscard]] DateTime now() override { return now_.plusSeconds(milliseconds_ / 1000); }
    void wait(int milliseconds) override { milliseconds_ += milliseconds; }
    void set(DateTime now) {
        now_ = now;
        milliseconds_ = 0;
    }

private:
    DateTime now_ = DateTime::of(2026, 1, 1);
    long milliseconds_ = 0;
};

} // namespace veldona
