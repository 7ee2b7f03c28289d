// vorel-anonim: a copy of the books without a name in it, for the report of a fault.
#include <exception>
#include <iostream>
#include <span>

#include "apps/anonim/nameless.h"
#include "apps/anonim/options.h"
#include "core/session.h"
#include "platform/desktop/paths.h"

namespace {

using namespace veldona;
using namespace veldona::anonim;

void run(const Options& options) {
    const Paths paths(options.root ? *options.root : chooseRoot(executableFolder(), userDataFolder()));
    const Outcome outcome = copyWithoutNames(paths.toNative(kDatabasePath), options.target, Disguise());
    std::cout << "Adsız kopya hazır: " << options.target << " (" << outcome.replaced
              << " metin değiştirildi)\n";
}

} // namespace

int main(int count, char** arguments) {
    try {
        const std::span<const char* const> given(arguments, static_cast<std::size_t>(count));
        const Options options = readOptions(given.subspan(1));
        if (options.help)
            std::cout << usage();
        else
            run(options);
        return 0;
    } catch (const std::exception& failure) {
        // Refusals, errors of the store and of the platform: each tells its own sentence.
        std::cerr << failure.what() << '\n';
        return 1;
    }
}
