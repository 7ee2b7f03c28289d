#include "backup/restore.h"

#include <unistd.h>

#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>

#include "backup/copy.h"
#include "backup/keeping.h"
#include "backup/refusal.h"
#include "core/session.h"
#include "platform/runtime/format.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"

namespace veldona::backup {
namespace {

namespace fs = std::filesystem;

constexpr double kScale = 1'000'000; // of the stored amounts

std::string tableWord(const std::string& table) {
    if (table == "MUSTKAYIT") return "müşteri kartı";
    if (table == "ISLEMNOTABLO") return "satış";
    if (table == "URUNAL") return "satış satırı";
    if (table == "URUNSAT") return "taksit";
    if (table == "TAKSITODENEN") return "ödeme";
    return table + " satırı";
}

// `sums`: the count and the stored total of the rows whose ID is above ?1.
std::string newRows(store::Engine& books, const char* sums, std::int64_t lastId, const std::string& word) {
    const auto rows = books.prepare(sums);
    rows->bind(1, lastId);
    if (!rows->step() || rows->whole(0) == 0) return "Yedekten sonra yazılmış " + word + " yok.\n";
    return "Yedekten sonra yazılmış " + std::to_string(rows->whole(0)) + " " + word + ", toplam " +
           format(Value(rows->number(1) / kScale), "#,##0.00") + ", kaybolur.\n";
}

// The payments and sales written since: they are what a shop would have to ask its customers for.
std::string newRows(store::Engine& books, const Picture& backup) {
    return newRows(books, "SELECT count(*), sum(ODMIKTAR) FROM TAKSITODENEN WHERE ID > ?1",
                   backup.lastPaymentId, "ödeme") +
           newRows(books, "SELECT count(*), sum(TOPBORC) FROM ISLEMNOTABLO WHERE ID > ?1", backup.lastSaleId,
                   "satış");
}

std::string differences(const Picture& backup, const Picture& now) {
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

// A log beside the file means that a program has it open, or was not closed well.
void requireClosed(const std::string& books) {
    if (!stands(books + "-wal")) return;
    throw Refusal(books +
                  " şu anda açık görünüyor ve olduğu gibi bırakıldı. Programı kapatıp yeniden deneyin.");
}

// The name changes hands in one step where the disk knows links.
void exchange(const std::string& arrived, const std::string& books, const std::string& kept) {
    const bool linked = ::link(books.c_str(), kept.c_str()) == 0;
    if (!linked && std::rename(books.c_str(), kept.c_str()) != 0)
        throw Refusal(books + " kenara konamadı: " + std::strerror(errno));
    if (std::rename(arrived.c_str(), books.c_str()) == 0) return;
    const int failure = errno;
    if (!linked) static_cast<void>(std::rename(kept.c_str(), books.c_str()));
    throw Refusal(books + " yerine yedek konamadı: " + std::strerror(failure));
}

class Arrival {
public:
    explicit Arrival(std::string path) : path_(std::move(path)) { remove(); }
    ~Arrival() { remove(); }
    Arrival(const Arrival&) = delete;
    Arrival& operator=(const Arrival&) = delete;
    [[nodiscard]] const std::string& path() const { return path_; }

private:
    void remove() {
        std::error_code ignored; // it is not there where all went well
        fs::remove(path_, ignored);
    }
    std::string path_;
};

} // namespace

Loss lossOfRestoring(const std::string& backup, const std::string& books) {
    const Picture kept = inspect(backup);
    Loss loss;
    loss.text = "Yedekteki son ödeme: " + shownDate(kept.newestPayment) + "\n";
    loss.booksStand = stands(books);
    if (!loss.booksStand) {
        loss.text += "Yerinde defter yok, bir şey kaybolmaz.\n";
        return loss;
    }
    try {
        const auto present = store::openSqlcipherToRead(books, kDeliveredPassword, std::chrono::seconds(15));
        const Picture now = pictureOf(*present);
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

bool areDamaged(const std::string& books) {
    using Kind = store::StoreError::Kind;
    if (!stands(books)) return false;
    try {
        static_cast<void>(store::openSqlcipherToRead(books, kDeliveredPassword, std::chrono::seconds(15)));
        return false;
    } catch (const store::StoreError& failure) {
        return failure.kind() == Kind::WrongPassword || failure.kind() == Kind::Damaged;
    }
}

std::optional<std::string> restore(const std::string& backup, const std::string& books, DateTime now) {
    requireClosed(books);
    const fs::path folder = fs::path(books).parent_path();
    fs::create_directories(folder);
    const Arrival arrived(books + ".geri");
    copyBooks(backup, arrived.path());
    requireClosed(books);
    std::optional<std::string> kept;
    if (stands(books)) {
        kept = (folder / ("degistirilen-" + backupName(now))).string();
        if (stands(*kept)) throw Refusal(*kept + " zaten var. Biraz sonra yeniden deneyin.");
        exchange(arrived.path(), books, *kept);
    } else if (std::rename(arrived.path().c_str(), books.c_str()) != 0) {
        throw Refusal(books + " yerine konamadı: " + std::strerror(errno));
    }
    syncFolder(folder.string());
    return kept;
}

} // namespace veldona::backup
