#include "apps/anonim/nameless.h"

#include <chrono>
#include <filesystem>

#include "apps/anonim/mapping.h"
#include "backup/copy.h"
#include "backup/place.h"
#include "backup/proof.h"
#include "backup/refusal.h"
#include "core/bookpasswords.h"
#include "core/books.h"
#include "platform/store/engine/temporaryfile.h"

namespace veldona::anonim {
namespace {

namespace fs = std::filesystem;
using backup::Refusal;

// Rewritten at the end, since the place of a longer text that was replaced keeps a part of it.
void disguiseBooks(const std::string& file, Disguise& disguise, Outcome& outcome) {
    const auto books = openBooks(file, std::chrono::seconds(1));
    books->keepNoJournal(); // a copy that fails is thrown away
    outcome.replaced = takeNamesOut(*books, disguise);
    outcome.fingerprint.newestPayment =
        backup::fingerprintOf(*books).newestPayment; // its date is another now
    books->rewrite();
}

} // namespace

Outcome copyWithoutNames(const std::string& books, const std::string& named, Disguise disguise) {
    const std::string file = fs::absolute(named).string(); // the folder of a bare name is synced too
    if (backup::stands(file)) throw Refusal(file + " zaten var ve olduğu gibi bırakıldı.");
    const store::TemporaryFile temporary(file + ".adli"); // it still carries the names of the shop
    Outcome outcome;
    outcome.fingerprint = backup::copyToTemporary(books, temporary.path(), {}, deliveredPassword());
    disguiseBooks(temporary.path(), disguise, outcome);
    backup::syncFile(temporary.path());
    if (backup::prove(temporary.path()) != outcome.fingerprint)
        throw Refusal("Adsız kopya defterin sayılarını taşımıyor ve silindi.");
    backup::giveName(temporary.path(), file, outcome.fingerprint);
    return outcome;
}

} // namespace veldona::anonim
