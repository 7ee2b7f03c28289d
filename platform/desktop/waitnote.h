// Work that lasts, in the middle of an event: the operator is told what is waited for, and Esc gives it up.
#pragma once

#include <chrono>
#include <string>

namespace veldona {

// Who shows the note. Nothing of a screen runs meanwhile: what is typed but Esc is lost.
class WaitNote {
public:
    virtual ~WaitNote() = default;
    // Where it stands already, with these words from now on.
    virtual void show(const std::string& words) = 0;
    virtual void hide() = 0;
    // Whether Esc was pressed since it was shown first.
    [[nodiscard]] virtual bool isGivenUp() = 0;
};

// One piece of work, asked often whether it may go on. The note comes when it has lasted half a second, and
// goes with this object.
class LongWork {
public:
    // `note` nullptr: nobody is there who could give it up.
    LongWork(WaitNote* note, std::string words);
    ~LongWork();
    LongWork(const LongWork&) = delete;
    LongWork& operator=(const LongWork&) = delete;

    // Costs no more than a look at the clock, most of the times. `howFar` stands behind the words.
    [[nodiscard]] bool goOn(const std::string& howFar = {});

private:
    WaitNote* note_;
    std::string words_;
    std::chrono::steady_clock::time_point next_;
    bool isShown_ = false;
    bool isGivenUp_ = false;
};

} // namespace veldona
