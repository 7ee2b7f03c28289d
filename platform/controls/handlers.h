// How a handler is run: from a copy, since it may put another in its own place.
#pragma once

#include <utility>

namespace veldona {

template <class Handler, class... Args> void call(const Handler& handler, Args&&... args) {
    if (!handler) return;
    const Handler kept = handler;
    kept(std::forward<Args>(args)...);
}

} // namespace veldona
