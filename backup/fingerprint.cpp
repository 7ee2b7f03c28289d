#include "backup/fingerprint.h"

#include "platform/runtime/format.h"
#include "platform/store/engine/inquiry.h"
#include "platform/store/engine/journalseal.h"

namespace veldona::backup {

Fingerprint fingerprintOf(store::Engine& engine) {
    const store::Inquiry books(engine);
    Fingerprint fingerprint;
    for (const store::Catalog::Relation& table : books.catalog().relations()) {
        // The journal goes on by itself: a backup put back is noted there.
        if (table.isQuery || table.name == store::kJournalTable) continue;
        const auto counting = books.prepare("SELECT COUNT(*) FROM [" + table.name + "]");
        fingerprint.rows[table.name] = counting->step() ? counting->whole(0) : 0;
    }
    const auto newest = books.prepare("SELECT MAX(ODTRH), MAX(ID) FROM TAKSITODENEN");
    if (newest->step()) {
        fingerprint.newestPayment = newest->text(0);
        fingerprint.lastPaymentId = newest->whole(1);
    }
    const auto lastSale = books.prepare("SELECT MAX(ID) FROM ISLEMNOTABLO");
    if (lastSale->step()) fingerprint.lastSaleId = lastSale->whole(0);
    return fingerprint;
}

std::string countsOf(const Fingerprint& fingerprint) {
    const auto count = [&fingerprint](const char* table, const char* word) {
        const auto found = fingerprint.rows.find(table);
        return format(found == fingerprint.rows.end() ? std::int64_t{0} : found->second, "#,##0") + word;
    };
    return count("MUSTKAYIT", " müşteri, ") + count("ISLEMNOTABLO", " satış, ") +
           count("TAKSITODENEN", " ödeme");
}

std::string shownDate(const std::string& stored) {
    if (stored.size() < 10) return stored;
    return stored.substr(8, 2) + '/' + stored.substr(5, 2) + '/' + stored.substr(0, 4) + stored.substr(10);
}

} // namespace veldona::backup
