#include "journal/thinning.h"

#include <algorithm>
#include <cmath>

#include "journal/captions.h"
#include "platform/runtime/format.h"
#include "platform/store/engine/inquiry.h"

namespace veldona::journal {
namespace {

constexpr std::int64_t kPortion = 4000; // entries between two looks at who may give it up

std::int64_t wholeOf(const store::Inquiry& books, const std::string& sql) {
    const auto rows = books.prepare(sql);
    return rows->step() ? rows->whole(0) : 0;
}

std::string inStatement(DateTime day) {
    return '#' + std::to_string(day.month()) + '/' + std::to_string(day.day()) + '/' +
           std::to_string(day.year()) + '#';
}

std::string textOf(const store::Inquiry& books, const std::string& column, std::int64_t id) {
    const auto rows = books.prepare("SELECT " + column + " FROM GUNLUK WHERE ID = " + std::to_string(id));
    return rows->step() ? std::string(rows->text(0)) : std::string();
}

// A journal may take hundreds of megabytes: some entries of each part of it tell for the others.
std::int64_t bytesOf(const store::Inquiry& books, std::int64_t first, std::int64_t last) {
    constexpr std::int64_t kSamples = 8, kEntries = 200;
    constexpr std::int64_t kOfRow = 34; // numbers, lengths, its share of the page
    std::int64_t bytes = 0, met = 0;
    for (std::int64_t i = 0; i < kSamples; ++i) {
        const std::int64_t from = first + (last - first) * i / kSamples;
        const auto rows = books.prepare("SELECT * FROM GUNLUK WHERE ID BETWEEN " + std::to_string(from) +
                                        " AND " + std::to_string(std::min(from + kEntries - 1, last)));
        for (; rows->step(); ++met) {
            bytes += kOfRow;
            for (int column = 0; column < rows->columnCount(); ++column)
                if (rows->storage(column) == store::Statement::Storage::Text)
                    bytes += static_cast<std::int64_t>(rows->text(column).size());
        }
    }
    return met == 0 ? 0 : bytes * (last - first + 1) / met;
}

void takeOut(const store::Inquiry& books, std::int64_t to) {
    static_cast<void>(books.prepare("DELETE FROM GUNLUK WHERE ID <= " + std::to_string(to))->step());
}

std::string counted(std::int64_t count) {
    return format(static_cast<double>(count), "#,##0");
}

} // namespace

DateTime monthsBefore(DateTime now, int months) {
    const int month = now.year() * 12 + now.month() - 1 - months;
    return DateTime::of(month / 12, month % 12 + 1, 1);
}

// The numbers have no gap, so that nothing is counted.
Thinning planThinning(store::Engine& engine, DateTime before) {
    const store::Inquiry books(engine);
    Thinning plan;
    const std::int64_t first = wholeOf(books, "SELECT MIN(ID) FROM GUNLUK");
    const std::int64_t last = wholeOf(books, "SELECT MAX(ID) FROM GUNLUK");
    if (last == 0) return plan;
    plan.all = last - first + 1;
    plan.allBytes = bytesOf(books, first, last);
    plan.since = textOf(books, "AN", first);
    const std::int64_t kept =
        wholeOf(books, "SELECT TOP 1 ID FROM GUNLUK WHERE AN >= " + inStatement(before) + " ORDER BY ID");
    plan.last = kept == 0 ? last : kept - 1;
    plan.entries = plan.last - first + 1;
    if (plan.entries == 0) return plan;
    // Who wrote stands in an act's first entry alone.
    plan.acts = wholeOf(books, "SELECT COUNT(PROGRAM) FROM GUNLUK WHERE ID <= " + std::to_string(plan.last));
    plan.bytes = bytesOf(books, first, plan.last);
    plan.until = textOf(books, "AN", plan.last);
    return plan;
}

std::string shownBytes(std::int64_t bytes) {
    constexpr double kKilobyte = 1024, kMegabyte = kKilobyte * kKilobyte;
    const auto all = static_cast<double>(bytes);
    return all < kMegabyte ? format(std::ceil(all / kKilobyte), "#,##0") + " KB"
                           : format(all / kMegabyte, "#,##0.0") + " MB";
}

std::string describe(const Thinning& plan) {
    if (plan.all == 0) return "Günlükte kayıt yok.";
    return "Günlükte " + counted(plan.all) + " kayıt var, " + shownDay(plan.since) +
           " gününden beri; yaklaşık " + shownBytes(plan.allBytes) + " tutuyor.";
}

std::string lossOf(const Thinning& plan) {
    return shownDay(plan.until) + " ve öncesinden " + counted(plan.acts) + " işlemin " +
           counted(plan.entries) + " kaydı silinir, yaklaşık " + shownBytes(plan.bytes) +
           " yer açılır. O günlerin işlemleri artık geri alınamaz, kimin yaptığı görülemez. Defterin kendisi "
           "değişmez; kalan kayıtların zinciri sağlam kalır.";
}

std::string thinnedWords(std::int64_t entries) {
    return counted(entries) + " kayıt silindi. Dosyada açılan yer yeni kayıtlara kullanılır.";
}

bool mayThin(store::Engine& engine) {
    const store::Inquiry books(engine);
    engine.begin();
    bool may = true;
    try {
        takeOut(books, 0); // none has that number
    } catch (const store::StoreError& failure) {
        may = failure.kind() != store::StoreError::Kind::ReadOnly;
    }
    if (engine.inTransaction()) engine.rollback();
    return may;
}

std::int64_t thin(store::Engine& engine, const Thinning& plan, const ThinningGoesOn& goesOn) {
    if (plan.entries == 0) return 0;
    const store::Inquiry books(engine);
    engine.begin();
    try {
        const std::string seal = textOf(books, "OZET", plan.last);
        const std::int64_t first = wholeOf(books, "SELECT MIN(ID) FROM GUNLUK");
        const std::int64_t all = plan.last - first + 1;
        bool isWanted = !seal.empty();
        // First the note: it stands behind the newest entry, also where none is left.
        if (isWanted)
            engine.noteInJournal("{\"NE\":\"incelt\",\"SON\":" + std::to_string(plan.last) + ",\"OZET\":\"" +
                                 seal + "\",\"SILINEN\":" + std::to_string(all) + ",\"AN\":\"" + plan.until +
                                 "\"}");
        for (std::int64_t to = first - 1; isWanted && to < plan.last;) {
            takeOut(books, to = std::min(to + kPortion, plan.last));
            isWanted = !goesOn || goesOn(to - first + 1, all);
        }
        if (isWanted)
            engine.commit();
        else
            engine.rollback();
        return isWanted ? all : 0;
    } catch (const store::StoreError&) {
        if (engine.inTransaction()) engine.rollback();
        throw;
    }
}

} // namespace veldona::journal
