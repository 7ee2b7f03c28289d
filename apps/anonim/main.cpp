// vorel-anonim: a copy of the books without a name in it, for the report of a fault.
#include <iostream>
#include <span>

#include "apps/anonim/nameless.h"
#include "apps/anonim/options.h"
#include "apps/parola/asking.h"
#include "apps/tool/toolmain.h"
#include "core/delivered.h"
#include "platform/desktop/paths.h"

namespace {

using namespace veldona;
using namespace veldona::anonim;

void run(const Options& options) {
    const Paths paths(options.root ? *options.root : chooseRoot(executableFolder(), userDataFolder()));
    const std::string books = paths.toNative(kDatabasePath);
    parola::Asking(options.passwordFromInput).require(books);
    const Outcome outcome = copyWithoutNames(books, options.target, Disguise());
    std::cout << "Adsız kopya hazır: " << options.target << " (" << outcome.replaced
              << " metin değiştirildi)\n";
}

} // namespace

int main(int count, char** arguments) {
    return toolMain({"vorel-anonim", usage()}, count, arguments, [](std::span<const char* const> given) {
        run(readOptions(given));
        return 0;
    });
}
