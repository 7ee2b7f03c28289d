#include "backup/picture.h"

#include "platform/runtime/format.h"
#include "platform/store/engine/inquiry.h"

namespace veldona::backup {

Picture pictureOf(store::Engine& engine) {
    const store::Inquiry books(engine);
    Picture picture;
    for (const store::Catalog::Relation& table : books.catalog().relations()) {
        if (table.isQuery) continue;
        const auto counting = books.prepare("SELECT COUNT(*) FROM [" + table.name + "]");
        picture.rows[table.name] = counting->step() ? counting->whole(0) : 0;
    }
    const auto newest = books.prepare("SELECT MAX(ODTRH), MAX(ID) FROM TAKSITODENEN");
    if (newest->step()) {
        picture.newestPayment = newest->text(0);
        picture.lastPaymentId = newest->whole(1);
    }
    const auto lastSale = books.prepare("SELECT MAX(ID) FROM ISLEMNOTABLO");
    if (lastSale->step()) picture.lastSaleId = lastSale->whole(0);
    return picture;
}

std::string countsOf(const Picture& picture) {
    const auto count = [&picture](const char* table, const char* word) {
        const auto found = picture.rows.find(table);
        return format(found == picture.rows.end() ? std::int64_t{0} : found->second, "#,##0") + word;
    };
    return count("MUSTKAYIT", " müşteri, ") + count("ISLEMNOTABLO", " satış, ") +
           count("TAKSITODENEN", " ödeme");
}

std::string shownDate(const std::string& stored) {
    if (stored.size() < 10) return stored;
    return stored.substr(8, 2) + '/' + stored.substr(5, 2) + '/' + stored.substr(0, 4) + stored.substr(10);
}

} // namespace veldona::backup
