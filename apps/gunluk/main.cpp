// vorel-gunluk: the journal of the books, how far it goes and whether it is whole; its oldest entries taken
// out.
#include <chrono>
#include <iostream>
#include <span>
#include <string>
#include <variant>

#include "apps/gunluk/options.h"
#include "apps/parola/asking.h"
#include "apps/tool/toolmain.h"
#include "backup/serverbooks.h"
#include "core/books.h"
#include "core/delivered.h"
#include "journal/chain.h"
#include "journal/seen.h"
#include "journal/thinning.h"
#include "platform/desktop/clock.h"
#include "platform/desktop/paths.h"
#include "platform/store/engine/act.h"

namespace {

using namespace veldona;
using namespace veldona::gunluk;

constexpr int kWhole = 0, kBroken = 1, kFailed = 2;
constexpr std::chrono::seconds kWait(15);

int tell(const store::Place& place) {
    const auto books = openBooksToRead(place, kWait);
    const journal::Chain chain =
        journal::examine(*books, journal::SeenFile(journal::seenFileOfThisPerson()).of(place));
    std::cout << describe(chain) << '\n';
    return chain.broken ? kBroken : kWhole;
}

// Of a server, as the owner: no till may take an entry out.
store::Place forWriting(store::Place place, const Options& options) {
    if (const auto* server = std::get_if<store::ServerPlace>(&place))
        return store::ServerPlace(server->address.as(options.owner.value_or(backup::kOwnerRole)));
    return place;
}

int thin(const store::Place& place, const Options& options) {
    const auto books = openBooks(forWriting(place, options), kWait);
    const auto plan =
        journal::planThinning(*books, journal::monthsBefore(SystemClock().now(), *options.months));
    std::cout << journal::describe(plan) << '\n';
    if (plan.entries == 0) {
        std::cout << *options.months << " aydan eski kayıt yok; bir şey silinmedi.\n";
        return kWhole;
    }
    std::cout << journal::lossOf(plan) << '\n';
    if (!options.confirmed) {
        std::cout << "Hiçbir şey silinmedi. Silmek için --evet ekleyin.\n";
        return kWhole;
    }
    const store::ActScope act("", journal::kThinningName);
    std::cout << journal::thinnedWords(journal::thin(*books, plan)) << '\n';
    return kWhole;
}

int run(const Options& options) {
    const Paths paths(options.root ? *options.root : chooseRoot(executableFolder(), userDataFolder()));
    const std::string books = paths.toNative(kDatabasePath);
    parola::Asking(options.passwordFromInput).require(books);
    const store::Place place = store::placeOf(books);
    return options.months ? thin(place, options) : tell(place);
}

} // namespace

int main(int count, char** arguments) {
    return toolMain({"vorel-gunluk", usage(), kFailed}, count, arguments,
                    [](std::span<const char* const> given) { return run(readOptions(given)); });
}
