#include "journal/takenback.h"

#include <algorithm>

#include "journal/words.h"
#include "platform/store/engine/engine.h"

namespace veldona::journal {

std::vector<Act> takenBackSince(adodb::Connection& books, std::int64_t& seen) {
    const std::int64_t before = seen;
    if (before == kNothingSeen) {
        seen = lastEntry(books);
        return {};
    }
    bool isAny = false;
    books.walk("SELECT ID,ADIM FROM GUNLUK WHERE ID>" + std::to_string(before) + " ORDER BY ID",
               [&](const store::Statement& row) {
                   seen = row.whole(0);
                   isAny = isAny || (row.storage(1) == store::Statement::Storage::Text &&
                                     row.text(1).starts_with(kTakingBack));
               });
    std::vector<Act> found;
    if (!isAny) return found;
    for (ActReader reader(books); !reader.atEnd();) {
        bool isPast = false;
        for (Act& act : reader.more(1)) {
            isPast = isPast || act.first() <= before;
            if (act.first() > before && !takenBackBy(act).empty()) found.push_back(std::move(act));
        }
        if (isPast) break;
    }
    return found;
}

void TakenBackSince::begin(adodb::Connection& books) {
    seen_ = lastEntry(books);
}

std::optional<Act> TakenBackSince::newestOn(adodb::Connection& books,
                                            const std::function<bool(const Entry&)>& isOurs) {
    for (Act& act : takenBackSince(books, seen_))
        if (std::any_of(act.entries.begin(), act.entries.end(), isOurs)) return std::move(act);
    return std::nullopt;
}

std::string takenBackWords(const Act& act) {
    return summaryOf(act) + "\n(" + whenAndWho(act) + ")";
}

} // namespace veldona::journal
