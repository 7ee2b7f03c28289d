// vorel-denetle: looks whether the books add up, and says account by account what does not.
#include <chrono>
#include <iostream>
#include <span>
#include <stdexcept>
#include <string>

#include "apps/denetle/check.h"
#include "apps/denetle/options.h"
#include "apps/denetle/report.h"
#include "apps/parola/asking.h"
#include "apps/tool/toolmain.h"
#include "core/books.h"
#include "core/delivered.h"
#include "journal/chain.h"
#include "journal/seen.h"
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
    const std::string file = booksOf(options);
    parola::Asking(options.passwordFromInput).require(file);
    const store::Place place = store::placeOf(file);
    const auto books = openBooksToRead(place, std::chrono::seconds(15));
    const Findings findings = checkBooks(*books);
    journal::Strays strays;
    books->beginReading();
    const journal::Chain chain =
        journal::examine(*books, journal::SeenFile(journal::seenFileOfThisPerson()).of(place), &strays);
    books->commit();
    std::cout << (options.csv ? asCsv(findings) : asText(findings));
    if (!options.csv)
        std::cout << describe(chain) << '\n' << describe(strays);
    else if (chain.broken)
        std::cout << asCsv(describe(chain));
    if (options.csv)
        for (const journal::Stray& stray : strays.first)
            std::cout << asCsv(describe(stray));
    std::cout << std::flush;
    if (!std::cout) throw std::runtime_error("Bulgular yazılamadı.");
    return findings.all.empty() && !chain.broken && strays.all == 0 ? kNothingFound : kFound;
}

} // namespace

int main(int count, char** arguments) {
    return toolMain({"vorel-denetle", usage(), kFailed}, count, arguments,
                    [](std::span<const char* const> given) { return check(readOptions(given)); });
}
