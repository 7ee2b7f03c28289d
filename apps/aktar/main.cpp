// vorel-aktar: moves a shop's existing Jet file into the program's books.
#include <algorithm>
#include <iostream>
#include <span>
#include <string>

#include "apps/aktar/moving.h"
#include "apps/aktar/options.h"
#include "apps/parola/asking.h"
#include "apps/tool/toolmain.h"
#include "core/delivered.h"
#include "platform/desktop/paths.h"
#include "platform/runtime/text.h"

namespace {

using namespace veldona;
using namespace veldona::aktar;

int run(const Options& options) {
    const Paths paths(options.root ? *options.root : chooseRoot(executableFolder(), userDataFolder()));
    // Of the books that it moves into; what the input has of it stands behind the file's.
    if (!options.trial) parola::Asking(options.passwordFromInput).require(paths.toNative(kDatabasePath));
    const Detail detail = options.trial ? Detail::Customers : Detail::Totals;
    const Moved moved = moveShopApart({options.source, options.password, options.trial, detail}, paths,
                                      [](const std::string& line) {
                                          if (!line.empty()) std::cerr << line << '\n';
                                          return true;
                                      });
    for (const std::string& line : moved.found)
        std::cout << line << '\n';
    std::cout.flush();
    if (!moved.failure.empty()) std::cerr << visibleText(moved.failure) << '\n';
    return moved.isDone ? 0 : 1;
}

// Whoever lists the processes of the machine reads their command lines.
void hidePassword(const Options& options, std::span<char*> arguments) {
    for (char* const word : arguments.subspan(1))
        if (!options.password.empty() && word == options.password)
            std::fill_n(word, options.password.size(), '*');
}

} // namespace

int main(int count, char** arguments) {
    return toolMain({"vorel-aktar", usage()}, count, arguments, [&](std::span<const char* const> given) {
        Options options = readOptions(given);
        hidePassword(options, std::span(arguments, static_cast<std::size_t>(count)));
        if (options.passwordFromInput) std::getline(std::cin, options.password);
        return run(options);
    });
}
