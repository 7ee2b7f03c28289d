#include "journal/thinning.h"

#include "platform/store/engine/inquiry.h"

namespace veldona::journal {
namespace {

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

} // namespace

Thinning planThinning(store::Engine& engine, DateTime before) {
    const store::Inquiry books(engine);
    Thinning plan;
    plan.all = wholeOf(books, "SELECT COUNT(*) FROM GUNLUK");
    const std::int64_t kept = wholeOf(books, "SELECT MIN(ID) FROM GUNLUK WHERE AN >= " + inStatement(before));
    const std::string older = kept == 0 ? "" : " WHERE ID < " + std::to_string(kept);
    plan.entries = wholeOf(books, "SELECT COUNT(*) FROM GUNLUK" + older);
    plan.last = wholeOf(books, "SELECT MAX(ID) FROM GUNLUK" + older);
    plan.until = textOf(books, "AN", plan.last);
    return plan;
}

void thin(store::Engine& engine, const Thinning& plan) {
    if (plan.entries == 0) return;
    const store::Inquiry books(engine);
    engine.begin();
    try {
        // First the note: it stands behind the newest entry, also where none is left.
        engine.noteInJournal("{\"NE\":\"incelt\",\"SON\":" + std::to_string(plan.last) + ",\"OZET\":\"" +
                             textOf(books, "OZET", plan.last) + "\",\"SILINEN\":" +
                             std::to_string(plan.entries) + ",\"AN\":\"" + plan.until + "\"}");
        static_cast<void>(
            books.prepare("DELETE FROM GUNLUK WHERE ID <= " + std::to_string(plan.last))->step());
        engine.commit();
    } catch (const store::StoreError&) {
        if (engine.inTransaction()) engine.rollback();
        throw;
    }
}

} // namespace veldona::journal
