#include "backup/restore.h"

#include <chrono>
#include <filesystem>

#include "backup/copy.h"
#include "backup/keeping.h"
#include "backup/place.h"
#include "backup/proof.h"
#include "backup/refusal.h"
#include "core/bookpasswords.h"
#include "core/books.h"
#include "platform/runtime/format.h"
#include "platform/runtime/storedamount.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/act.h"
#include "platform/store/engine/inquiry.h"
#include "platform/store/engine/journalseal.h"
#include "platform/store/engine/openfile.h"
#include "platform/store/engine/temporaryfile.h"

namespace veldona::backup {
namespace {

namespace fs = std::filesystem;

const std::string kOnServer = "sunucuda, şema ";

std::string tableWord(const std::string& table) {
    if (table == "MUSTKAYIT") return "müşteri kartı";
    if (table == "ISLEMNOTABLO") return "satış";
    if (table == "URUNAL") return "satış satırı";
    if (table == "URUNSAT") return "taksit";
    if (table == "TAKSITODENEN") return "ödeme";
    return table + " satırı";
}

// `sums`: the count and the stored total of the rows whose ID is above what follows.
std::string newRows(const store::Inquiry& books, const std::string& sums, std::int64_t lastId,
                    const std::string& word) {
    const auto rows = books.prepare(sums + std::to_string(lastId));
    if (!rows->step() || rows->whole(0) == 0) return "Yedekten sonra yazılmış " + word + " yok.\n";
    return "Yedekten sonra yazılmış " + std::to_string(rows->whole(0)) + " " + word + ", toplam " +
           format(StoredAmount::ofColumn(rows->number(1)).lira(), "#,##0.00") + ", kaybolur.\n";
}

// The payments and sales written since: they are what a shop would have to ask its customers for.
std::string newRows(store::Engine& engine, const Fingerprint& backup) {
    const store::Inquiry books(engine);
    return newRows(books, "SELECT COUNT(*), SUM(ODMIKTAR) FROM TAKSITODENEN WHERE ID > ",
                   backup.lastPaymentId, "ödeme") +
           newRows(books, "SELECT COUNT(*), SUM(TOPBORC) FROM ISLEMNOTABLO WHERE ID > ", backup.lastSaleId,
                   "satış");
}

std::string differences(const Fingerprint& backup, const Fingerprint& now) {
    std::string text;
    for (const auto& [table, count] : now.rows) {
        const auto kept = backup.rows.find(table);
        const std::int64_t then = kept == backup.rows.end() ? 0 : kept->second;
        if (count != then) {
            text += "  " + tableWord(table) + ": şimdi " + std::to_string(count) + ", yedekte " +
                    std::to_string(then) + "\n";
        }
    }
    return text.empty() ? "Satır sayıları aynı.\n" : "Satır sayıları:\n" + text;
}

bool areSoundAlone(const std::string& books) {
    try {
        static_cast<void>(openBooksAlone(books));
        return true;
    } catch (const store::StoreError&) {
        return false;
    }
}

// A journal that a killed program left holds the last payments: it goes into the books, so that what is set
// aside is one file. What can't be read stays with them, unless it is other books' journal.
bool isJournalForeign(const std::string& books) {
    if (!stands(books) || !hasJournal(books)) return false;
    using Kind = store::StoreError::Kind;
    try {
        settleBooks(books);
        return false;
    } catch (const store::StoreError& failure) {
        if (failure.kind() == Kind::Locked || failure.kind() == Kind::DiskFull) throw;
        const bool isUnsound = failure.kind() == Kind::Damaged || failure.kind() == Kind::WrongPassword;
        return isUnsound && areSoundAlone(books);
    }
}

// A journal under the name of a file is read as that file's; one that isn't gets a name of its own.
SetAside namesFor(const std::string& books, DateTime now, bool isForeign) {
    const std::string kept = freePlaceOfReplaced(fs::path(books).parent_path().string(), now);
    return {kept, kept + (isForeign ? ".uymayan" : "")};
}

// The moment of the newest entry, as it is stored; nothing of books that can't be read.
std::string newestMoment(const std::string& books) {
    if (!stands(books) && !areOnServer(books)) return {};
    try {
        const auto present = openBooksToRead(store::placeOf(books), std::chrono::seconds(15));
        const auto newest = store::Inquiry(*present).prepare("SELECT TOP 1 AN FROM GUNLUK ORDER BY ID DESC");
        return newest->step() ? std::string(newest->text(0)) : std::string();
    } catch (const store::StoreError&) {
        return {};
    }
}

// The journal of the books goes on from the backup's, and says so: else whoever examines it would take the
// backup for one that somebody copied into their place. It says how far the books went whose place it takes,
// since their clock may have run ahead.
void noteRestored(const std::string& file, const std::string& replaced) {
    auto books = openBooks(file, std::chrono::seconds(1));
    if (books->journalKey().empty()) { // of the release before the journal: it begins with this
        books.reset();
        renewBooks(file);
        books = openBooks(file, std::chrono::seconds(1));
    }
    books->keepNoJournal(); // a copy that fails is thrown away
    const store::ActScope act({}, "Yedekten Geri Dön");
    std::string note = store::kRestoredNote;
    if (!replaced.empty()) note.replace(note.size() - 1, 1, ",\"SON\":\"" + replaced + "\"}");
    books->noteInJournal(note);
}

} // namespace

Loss lossOfRestoring(const std::string& backup, const std::string& books) {
    const Fingerprint kept = inspect(backup);
    Loss loss;
    const auto password = passwordOfBooks(books);
    const std::string other = otherPasswordOf(backup, password);
    if (!other.empty() && (password || isNotedAsOwn(books))) {
        loss.text = "Bu yedek " + other + " açılır. Dönülen defterin parolası " +
                    (stands(books) && password ? "bugünkü parola olur.\n" : "yedeğin parolası olur.\n");
    }
    loss.text += "Yedekteki son ödeme: " + shownDate(kept.newestPayment) + "\n";
    loss.booksStand = stands(books) || areOnServer(books);
    if (!loss.booksStand) {
        loss.text += "Yerinde defter yok, bir şey kaybolmaz.\n";
        return loss;
    }
    try {
        const auto present = openBooksToRead(store::placeOf(books), std::chrono::seconds(15));
        const Fingerprint now = fingerprintOf(*present);
        loss.text += "Defterdeki son ödeme: " + shownDate(now.newestPayment) + "\n" +
                     newRows(*present, kept) + differences(kept, now) +
                     "Yedekten sonra düzeltilmiş satırlar da yedekteki hâline döner.\n";
    } catch (const store::StoreError& failure) {
        if (failure.kind() == store::StoreError::Kind::Locked) throw;
        loss.text +=
            "Şimdiki defter okunamıyor, neyin kaybolacağı söylenemez: " + failure.description() + "\n";
    }
    return loss;
}

std::string otherPasswordOf(const std::string& file, const std::optional<Secret>& books) {
    if (books && opensBy(file, *books)) return {};
    for (const Secret& each : passwords::known())
        if (opensBy(file, each))
            return each == deliveredPassword() ? "programla gelen parolayla" : "eski bir parolayla";
    return books ? "başka bir parolayla" : "";
}

bool areDamaged(const std::string& books) {
    using Kind = store::StoreError::Kind;
    if (!stands(books) || areOnServer(books)) return false;
    try {
        static_cast<void>(openBooksToRead(books, std::chrono::seconds(15)));
        return false;
    } catch (const store::StoreError& failure) {
        return failure.kind() == Kind::WrongPassword || failure.kind() == Kind::Damaged;
    }
}

std::vector<std::string> restore(const std::string& backup, const std::string& books, DateTime now,
                                 const std::string& owner) {
    const auto server = store::ServerAddress::beside(books);
    if (!server) requireClosed(books);
    const std::string folder = fs::path(books).parent_path().string();
    makeFolder(folder);
    const FolderLock lock(folder, "Bir yedek zaten yerine konuyor. Bitmesini bekleyip yeniden deneyin.");
    const store::TemporaryFile arrived(books + ".geri");
    const auto under = stands(books) && !server ? passwordOfBooks(books) : std::nullopt;
    const Fingerprint proven = copyToTemporary(backup, arrived.path(), {}, under);
    noteRestored(arrived.path(), newestMoment(books));
    syncFile(arrived.path());
    if (server) {
        const std::string former = putOnServer(arrived.path(), store::ServerPlace(server->as(owner)), now);
        return former.empty() ? std::vector<std::string>() : std::vector{kOnServer + former};
    }
    const SetAside names = namesFor(books, now, isJournalForeign(books));
    std::vector<std::string> setAside = exchange(arrived.path(), proven, books, names);
    noteAsOwn(books, passwordOfBooks(books) != deliveredPassword());
    return setAside;
}

std::string describe(const std::vector<std::string>& setAside) {
    std::string text;
    for (const std::string& file : setAside) {
        const bool isJournal = !file.ends_with(".mdb") && !file.starts_with(kOnServer);
        text += (text.empty() ? "" : "\n") +
                std::string(isJournal ? "Yanında kalmış günlük burada: " : "Değişen defter burada: ") + file;
    }
    return text;
}

} // namespace veldona::backup
