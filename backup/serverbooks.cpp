#include "backup/serverbooks.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <memory>
#include <variant>

#include "backup/closedfile.h"
#include "backup/keeping.h"
#include "backup/place.h"
#include "backup/proof.h"
#include "backup/refusal.h"
#include "core/books.h"
#include "core/delivered.h"
#include "platform/runtime/wholefile.h"
#include "platform/store/engine/durable.h"
#include "platform/store/engine/filelock.h"
#include "platform/store/engine/openfile.h"
#include "platform/store/engine/openserver.h"
#include "platform/store/engine/servermove.h"
#include "platform/store/engine/tablerows.h"
#include "platform/store/engine/temporaryfile.h"
#include "schema/tables.h"

namespace veldona::backup {
namespace {

namespace fs = std::filesystem;
using store::ServerAddress;
using store::ServerPlace;

constexpr std::chrono::seconds kWait(15);
constexpr const char* kBusy = "Defter zaten taşınıyor. Bitmesini bekleyip yeniden deneyin.";

std::string folderOf(const std::string& file) {
    return fs::absolute(file).parent_path().string();
}

// A name that no book of the program has.
std::string formerSchema(DateTime at) {
    std::string name = replacedName(at);
    name.resize(name.size() - std::string_view(".mdb").size());
    std::replace(name.begin(), name.end(), '-', '_');
    return name;
}

Sameness fillAndProve(store::ServerDraft& draft, store::Engine& source) {
    store::copyRows(source, draft.engine());
    return requireSame(source, draft.engine());
}

// Books of that name that hold the very same are those of a run that was killed behind its last step there.
Sameness carry(store::Engine& source, const ServerPlace& owner) {
    if (!store::standOnServer(owner)) {
        store::ServerDraft draft(owner, schema::delivered());
        const Sameness same = fillAndProve(draft, source);
        draft.giveName();
        return same;
    }
    try {
        return requireSame(source, *openBooksToRead(owner, kWait));
    } catch (const Refusal& difference) {
        throw Refusal("Sunucudaki veritabanı boş değil ve olduğu gibi bırakıldı: " + owner.address.shown() +
                      ". " + difference.what());
    }
}

// A file of the books that stands although they are on the server: one of a run that was killed.
Sameness requireArrived(store::Engine& books, const std::string& file) {
    try {
        return requireSame(books, *openBooksAlone(file));
    } catch (const Refusal& difference) {
        throw Refusal(file +
                      " zaten var ve olduğu gibi bırakıldı; sunucudaki defter değil. Onu başka bir "
                      "klasöre taşıyıp yeniden deneyin. " +
                      difference.what());
    }
}

Sameness bringBack(store::Engine& books, const std::string& file) {
    const store::TemporaryFile arrived(file + ".geri");
    auto copy = store::createFile(arrived.path(), kDeliveredPassword);
    books.copyInto(*copy, schema::delivered());
    copy.reset();
    syncFile(arrived.path());
    const Sameness same = requireSame(books, *openBooksAlone(arrived.path()));
    giveName(arrived.path(), file, fingerprintOf(books));
    return same;
}

ServerAddress addressOf(const std::string& books) {
    if (auto address = ServerAddress::beside(books)) return *std::move(address);
    throw Refusal("Defter bir sunucuda değil: " + ServerAddress::fileBeside(books) + " yok.");
}

Carried finishMoveToServer(const std::string& books, DateTime now) {
    if (!stands(books))
        throw Refusal("Defter zaten sunucuda: " + addressOf(books).shown() +
                      ". Buraya taşınacak başka bir defter yok.");
    return {{}, ClosedFile(books).setAside(now)};
}

// The file by which a program finds the server is the last thing that changes its place.
void writeAddress(const std::string& books, const ServerAddress& till) {
    const std::string file = ServerAddress::fileBeside(books);
    const std::string text =
        "# Defter bu sunucuda. Parola buraya yazılmaz, ~/.pgpass dosyasına yazılır.\n" + till.text() + "\n";
    if (!writeWholeFile(file, text)) throw Refusal(file + " yazılamadı: " + lastReason());
    store::syncFolderOf(books);
}

void takeAddressAway(const std::string& books) {
    const std::string file = ServerAddress::fileBeside(books);
    if (std::rename(file.c_str(), (file + ".eski").c_str()) != 0)
        throw Refusal(file + " yeniden adlandırılamadı: " + lastReason());
    store::syncFolderOf(books);
}

void requireTillOpens(const ServerAddress& till) {
    try {
        static_cast<void>(openBooksToRead(ServerPlace(till), kWait));
    } catch (const store::StoreError& failure) {
        throw Refusal("Defter sunucuda hazır, ama bu bilgisayar onu açamadı: " + failure.description() +
                      "\nDefterin dosyası yerinde duruyor. Eksiği giderip aynı komutu yeniden çalıştırın.");
    }
}

} // namespace

Carried moveToServer(const std::string& books, const ServerAddress& till, const std::string& owner,
                     DateTime now) {
    const FolderLock lock(folderOf(books), kBusy);
    if (areOnServer(books)) return finishMoveToServer(books, now);
    if (!stands(books)) throw Refusal(books + " yok; taşınacak defter bulunamadı.");
    ClosedFile file(books);
    Carried carried;
    carried.same = carry(file.engine(), ServerPlace(till.as(owner)));
    requireTillOpens(till);
    writeAddress(books, till);
    carried.setAside = file.setAside(now);
    return carried;
}

Carried moveToFile(const std::string& books, const std::string& owner, DateTime now) {
    const FolderLock lock(folderOf(books), kBusy);
    const ServerPlace place{addressOf(books).as(owner)};
    Carried carried;
    if (store::standOnServer(place)) {
        store::ServerHold hold(place, schema::delivered());
        carried.same = stands(books) ? requireArrived(hold.engine(), books) : bringBack(hold.engine(), books);
        carried.setAside = formerSchema(now);
        hold.setAside(carried.setAside);
    } else if (!stands(books)) {
        throw Refusal("Sunucuda taşınacak defter yok: " + place.address.shown() + '.');
    }
    takeAddressAway(books);
    return carried;
}

Carried renewOnServer(const std::string& books, const std::string& owner, DateTime now) {
    const FolderLock lock(folderOf(books), kBusy);
    const ServerPlace place{addressOf(books).as(owner)};
    store::ServerHold hold(place, {});
    if (!store::areOlder(hold.engine(), place, schema::delivered())) return {};
    Carried carried;
    store::ServerDraft draft(place, schema::delivered());
    carried.same = fillAndProve(draft, hold.engine());
    carried.setAside = formerSchema(now);
    draft.giveName(carried.setAside);
    return carried;
}

std::string putOnServer(const std::string& source, const ServerPlace& place, DateTime now) {
    const auto file = openBooksAlone(source);
    const bool areThere = store::standOnServer(place);
    if (areThere) store::requireClosed(place);
    std::string former = areThere ? formerSchema(now) : std::string();
    store::ServerDraft draft(place, schema::delivered());
    static_cast<void>(fillAndProve(draft, *file));
    draft.giveName(former);
    return former;
}

} // namespace veldona::backup
