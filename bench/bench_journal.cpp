// What the journal of a shop's years takes: its sales and payments written once more, each as an act of its
// own, into books that keep one. Then how long it takes to prove it, and each row by it.
#include <sys/resource.h>

#include <chrono>
#include <cstdio>
#include <filesystem>
#include <string>
#include <vector>

#include "bench/overshops.h"
#include "core/delivered.h"
#include "journal/chain.h"
#include "platform/desktop/paths.h"
#include "platform/store/engine/act.h"
#include "platform/store/engine/createdatabase.h"
#include "platform/store/engine/openfile.h"
#include "platform/store/engine/tablerows.h"
#include "schema/tables.h"

namespace veldona::bench {
namespace {

constexpr int kInOneTransaction = 20'000; // acts; the disk is not what is measured

// Takes rows of one table of the shop into the same one of other books.
class Carrier {
public:
    Carrier(store::Engine& from, store::Engine& into, const std::string& table, const std::string& where)
        : rows_(from.prepare("SELECT * FROM " + table + where)) {
        std::string places;
        for (int i = 1; i <= rows_->columnCount(); ++i)
            places += (i == 1 ? "?" : ", ?") + std::to_string(i);
        insertion_ = into.prepare("INSERT INTO " + table + " VALUES (" + places + ")");
    }
    [[nodiscard]] store::Statement& rows() { return *rows_; }
    void carry() {
        for (int i = 0; i < rows_->columnCount(); ++i)
            insertion_->bind(i + 1, store::storedValue(*rows_, i));
        insertion_->step();
        insertion_->reset();
    }
    void carryAllOf(std::int64_t sale) {
        rows_->bind(1, sale);
        while (rows_->step())
            carry();
        rows_->reset();
    }

private:
    std::unique_ptr<store::Statement> rows_, insertion_;
};

void writeAgain(store::Engine& shop, store::Engine& books) {
    Carrier customers(shop, books, "MUSTKAYIT", ""), headers(shop, books, "ISLEMNOTABLO", " ORDER BY ID"),
        payments(shop, books, "TAKSITODENEN", " ORDER BY ODTRH");
    Carrier lines(shop, books, "URUNAL", " WHERE ISLEMNO = ?1"),
        plan(shop, books, "URUNSAT", " WHERE ISLEMNO = ?1");
    int acts = 0;
    const auto act = [&](const char* screen, const char* name, const auto& work) {
        if (acts++ % kInOneTransaction == 0) {
            if (acts > 1) books.commit();
            books.begin();
        }
        const store::ActScope scope(screen, name);
        work();
    };
    while (customers.rows().step())
        act("frmCariEkle", "Kaydet", [&] { customers.carry(); });
    while (headers.rows().step())
        act("frmSatis", "Kaydet", [&] {
            const std::int64_t sale = headers.rows().whole(2);
            headers.carry();
            lines.carryAllOf(sale);
            plan.carryAllOf(sale);
        });
    while (payments.rows().step())
        act("frmMainVeldona", "Tahsilat", [&] { payments.carry(); });
    books.commit();
}

double megabytesOf(store::Engine& engine) {
    return static_cast<double>(engine.fullSize()) / 1e6;
}

void benchShop(const std::string& root, DateTime now) {
    const std::string file = root + ".gunluk.mdb";
    for (const char* suffix : {"", "-wal", "-shm"})
        std::filesystem::remove(file + suffix);
    store::createDatabase(file, kDeliveredPassword, schema::tables(), schema::savedQueries());
    const auto shop = store::openFile(Paths(root).toNative(kDatabasePath), kDeliveredPassword,
                                      std::chrono::seconds(5), schema::delivered());
    const auto books = store::openFileToWork(
        file, kDeliveredPassword, {std::chrono::seconds(5), [now] { return now; }, {}}, schema::delivered());
    books->execute("PRAGMA synchronous = OFF");
    writeAgain(*shop, *books);
    const double with = megabytesOf(*books);
    const auto begun = std::chrono::steady_clock::now();
    journal::Strays strays;
    books->beginReading();
    const journal::Chain chain = journal::examine(*books, {}, &strays);
    books->commit();
    const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count();
    rusage used{};
    getrusage(RUSAGE_SELF, &used);
    books->execute("DROP TABLE GUNLUK");
    books->rewrite();
    std::printf("%s: %lld entries, the books %.0f MB, without their journal %.0f MB; %s, %lld rows as told, "
                "%lld not, proved in %.1f s with %ld MB\n",
                root.c_str(), static_cast<long long>(chain.entries), with, megabytesOf(*books),
                chain.broken ? "BROKEN" : "whole", static_cast<long long>(strays.rowsTold),
                static_cast<long long>(strays.all), seconds, used.ru_maxrss / 1024);
    books->execute("PRAGMA journal_mode = DELETE");
    std::filesystem::remove(file);
}

} // namespace
} // namespace veldona::bench

int main(int count, char** arguments) {
    return veldona::bench::overShops("bench_journal", count, arguments, veldona::bench::benchShop);
}
