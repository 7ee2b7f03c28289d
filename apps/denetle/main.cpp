// vorel-denetle: looks whether the books add up, and says account by account what does not.
#include <chrono>
#include <iostream>
#include <span>
#include <stdexcept>
#include <string>

#include "apps/denetle/check.h"
#include "apps/denetle/options.h"
#include "apps/denetle/report.h"
#include "apps/tool/toolmain.h"
#include "core/books.h"
#include "core/delivered.h"
#include "platform/desktop/paths.h"

namespace {

using namespace veldona;
using namespace veldona::denetle;

constexpr int kNothingFound = 0, kFound = 1, kFailed = 2;

std::string booksOf(const Options& options) {
    if (options.file) return *options.file;
    const Paths paths(options.root ? *options.root : chooseRoot(executableFolder(), userDataFolder()));
    return paths.toNative(kDatabasePath);
}

int check(const Options& options) {
    const auto books = openBooksToRead(store::placeOf(booksOf(options)), std::chrono::seconds(15));
    const Findings findings = checkBooks(*books);
    std::cout << (options.csv ? asCsv(findings) : asText(findings)) << std::flush;
    if (!std::cout) throw std::runtime_error("Bulgular yazılamadı.");
    return findings.all.empty() ? kNothingFound : kFound;
}

} // namespace

int main(int count, char** arguments) {
    return toolMain({"vorel-denetle", usage(), kFailed}, count, arguments,
                    [](std::span<const char* const> given) { return check(readOptions(given)); });
}
