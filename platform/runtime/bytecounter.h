// Loops of the ledger and of the plan count in 8 bits: row 255 is the last one they reach, and stepping past
// it is an overflow, after the row's work was done.
#pragma once

#include "platform/runtime/error.h"

namespace veldona {

// Runs body(i) for i from `first` to `last` (both included; none where last is below first). Error 6 when the
// counter steps past 255, also behind the last row.
template <class Body> void countInByte(int first, int last, Body&& body) {
    for (int i = first; i <= last; ++i) {
        body(i);
        if (i == 255) raise(ErrorNumber::Overflow);
    }
}

} // namespace veldona
