// Notes of calls: what a customer said on the telephone, and what was promised for which day.
//
// A promise is kept where the payments of the account, over all its sales, come to at least the promised
// amount between the note and the end of the promised day. Until that day is over it is open, then broken.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "platform/runtime/storedamount.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

struct Session;

struct CallPromise {
    enum class State { Open, Kept, Broken };
    DateTime day;
    StoredAmount amount;
    State state = State::Open;
};

struct CallNote {
    std::string account; // MUSTKAYIT.HSTNO
    DateTime at;
    std::string text;
    std::optional<CallPromise> promise{};
};

// The newest first; no more than `most`. Raises what the store raises.
[[nodiscard]] std::vector<CallNote> callNotesOf(adodb::Connection& books, const std::string& account,
                                                DateTime today, std::size_t most);

// What stands on the call list of an account.
struct LastCall {
    CallNote note;                      // the newest
    std::optional<CallPromise> promise; // of the newest note that has one
};
// One an account that has a note, by account.
[[nodiscard]] std::vector<LastCall> lastCalls(adodb::Connection& books, DateTime today);

// False where the write failed; the operator has been told.
bool writeCallNote(Session& session, const CallNote& note);

// "Tutuldu", "Bekleniyor", "Tutulmadı".
[[nodiscard]] const char* nameOf(CallPromise::State state);

} // namespace veldona
