#include "apps/tool/toolmain.h"

#include <cstddef>
#include <exception>
#include <iostream>

#include "platform/desktop/ownfiles.h"

namespace veldona {

int toolMain(int count, const char* const* arguments,
             const std::function<int(std::span<const char* const>)>& run) {
    keepToOwner();
    try {
        return run(std::span(arguments, static_cast<std::size_t>(count)).subspan(1));
    } catch (const std::exception& failure) {
        // Refusals, errors of the store and of the platform: each tells its own sentence.
        std::cerr << failure.what() << '\n';
        return 1;
    }
}

} // namespace veldona
