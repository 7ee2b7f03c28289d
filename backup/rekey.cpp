#include "backup/rekey.h"

#include <filesystem>

#include "backup/closedfile.h"
#include "backup/copy.h"
#include "backup/keeping.h"
#include "backup/place.h"
#include "backup/refusal.h"
#include "core/bookpasswords.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/durable.h"
#include "platform/store/engine/temporaryfile.h"

namespace veldona::backup {
namespace {

namespace fs = std::filesystem;

bool isOwn(const Secret& password) {
    return password != deliveredPassword();
}

// One that stays is no failure: it is listed where backups are.
void takeAway(const std::vector<std::string>& former, const std::string& books) {
    std::error_code stays;
    for (const std::string& file : former)
        fs::remove(file, stays);
    try {
        store::syncFolderOf(books);
    } catch (const store::StoreError&) { // a power cut may bring them back
    }
}

} // namespace

void rekey(const std::string& books, const Secret& to, DateTime now, const Onlooker& onlooker) {
    if (areOnServer(books))
        throw Refusal("Defter bir sunucuda: parolası sunucunun parolasıdır, orada değiştirilir.");
    if (!stands(books)) throw Refusal(books + " yok; parolası değişecek defter bulunamadı.");
    const std::string folder = fs::absolute(books).parent_path().string();
    const FolderLock lock(folder, "Bu defterle başka bir iş sürüyor. Bitmesini bekleyip yeniden deneyin.");
    ClosedFile file(books);
    const bool wasOwn = isOwn(file.password());
    passwords::learn(to); // the copy is proved by it
    const store::TemporaryFile arrived(books + ".parola");
    const Fingerprint proven = copyToTemporary(file.engine(), books, arrived.path(), to, onlooker);
    const std::string former = freePlaceOfReplaced(folder, now);
    try {
        // Before: who is killed behind the exchange has the note.
        if (isOwn(to) && !noteAsOwn(books, true))
            throw Refusal(passwordNoteOf(books) + " yazılamadı: " + lastReason());
        takeAway(exchange(arrived.path(), proven, books, {former, former}, file.handOver()), books);
    } catch (...) {
        noteAsOwn(books, wasOwn);
        throw;
    }
    noteAsOwn(books, isOwn(to));
}

} // namespace veldona::backup
