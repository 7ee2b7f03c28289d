#include "backup/copy.h"

#include <chrono>
#include <filesystem>

#include "backup/place.h"
#include "backup/proof.h"
#include "core/bookpasswords.h"
#include "core/books.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/openfile.h"
#include "platform/store/engine/temporaryfile.h"
#include "schema/tables.h"

namespace veldona::backup {
namespace {

namespace fs = std::filesystem;

constexpr std::chrono::seconds kWait(15); // for another workstation's lock

constexpr std::uintmax_t kMegabyte = std::uintmax_t{1024} * 1024;

std::string megabytes(std::uintmax_t bytes) {
    return std::to_string((bytes + kMegabyte - 1) / kMegabyte) + " MB";
}

// The engine's own words are about a record, and name no disk.
Refusal noRoom(const std::string& file, const std::string& books) {
    const std::string folder = fs::absolute(file).parent_path().string();
    std::error_code unknown; // of books on a server
    const auto needed = fs::file_size(books, unknown);
    return Refusal("Diskte yer kalmadı: " + folder + "\n" +
                   (unknown ? "" : "Kopya için " + megabytes(needed) + " yer gerekir. ") +
                   "Yarım kalan kopya silindi. Yer açın ya da başka bir disk seçin.");
}

void fillCopy(store::Engine& original, const std::string& books, const std::string& file, const Secret& under,
              const Onlooker& onlooker) {
    try {
        const auto copy = store::createFile(file, under.text());
        const auto goOn = [&onlooker](std::int64_t done, std::int64_t all) {
            look(onlooker, Step::Copying, done, all);
        };
        original.copyInto(*copy, schema::delivered(), goOn);
    } catch (const store::StoreError& failure) {
        if (failure.kind() != store::StoreError::Kind::DiskFull) throw;
        throw noRoom(file, books);
    }
}

} // namespace

Fingerprint copyToTemporary(store::Engine& original, const std::string& books, const std::string& temporary,
                            const Secret& under, const Onlooker& onlooker) {
    look(onlooker, Step::Copying);
    original.beginReading();
    Fingerprint fingerprint = fingerprintOf(original);
    fillCopy(original, books, temporary, under, onlooker);
    original.rollback();
    syncFile(temporary);
    requireProved(temporary, fingerprint, onlooker);
    return fingerprint;
}

Fingerprint copyToTemporary(const std::string& books, const std::string& temporary, const Onlooker& onlooker,
                            const std::optional<Secret>& under) {
    const auto [original, password] = openBooksToReadBy(store::placeOf(books), kWait);
    const Secret own = areOnServer(books) ? deliveredPassword() : password;
    return copyToTemporary(*original, books, temporary, under.value_or(own), onlooker);
}

Fingerprint copyBooks(const std::string& books, const std::string& file, const Onlooker& onlooker) {
    const store::TemporaryFile temporary(file + ".yarim");
    Fingerprint fingerprint = copyToTemporary(books, temporary.path(), onlooker);
    giveName(temporary.path(), file, fingerprint, onlooker);
    return fingerprint;
}

} // namespace veldona::backup
