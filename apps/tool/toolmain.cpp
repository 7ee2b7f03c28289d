#include "apps/tool/toolmain.h"

#include <cstddef>
#include <exception>
#include <iostream>
#include <string_view>

#include "platform/desktop/ownfiles.h"

namespace veldona {
namespace {

bool tellsAboutItself(const Tool& tool, std::span<const char* const> arguments) {
    for (const std::string_view word : arguments) {
        const bool asksVersion = word == "--surum" || word == "--version";
        if (!asksVersion && word != "--yardim" && word != "--help" && word != "-h") continue;
        if (asksVersion)
            std::cout << tool.name << " " VELDONA_VERSION "\n";
        else
            std::cout << tool.usage;
        return true;
    }
    return false;
}

} // namespace

int toolMain(const Tool& tool, int count, const char* const* arguments,
             const std::function<int(std::span<const char* const>)>& run) {
    keepToOwner();
    try {
        const auto given = std::span(arguments, static_cast<std::size_t>(count)).subspan(1);
        return tellsAboutItself(tool, given) ? 0 : run(given);
    } catch (const std::exception& failure) {
        // Refusals, errors of the store and of the platform: each tells its own sentence.
        std::cerr << failure.what() << '\n';
        return tool.failure;
    }
}

} // namespace veldona
