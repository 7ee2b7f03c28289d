// What this face makes of a failure below it.
#pragma once

#include "platform/runtime/error.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/faces/adodb.h"

namespace veldona::adodb {

// Runs `step`; a failure of the store leaves as a statement's error.
template <class Step> decltype(auto) asStatement(Step&& step) {
    try {
        return step();
    } catch (const store::StoreError& error) {
        throw RuntimeError(kStatementError, error.description());
    }
}

} // namespace veldona::adodb
