#include "backup/picture.h"

namespace veldona::backup {

Picture pictureOf(store::Engine& books) {
    Picture picture;
    {
        const auto tables = books.prepare(
            "SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\'");
        while (tables->step())
            picture.rows[std::string(tables->text(0))] = 0;
    }
    for (auto& [table, count] : picture.rows) {
        const auto counting = books.prepare("SELECT count(*) FROM \"" + table + '"');
        if (counting->step()) count = counting->whole(0);
    }
    const auto newest = books.prepare("SELECT max(ODTRH), max(ID) FROM TAKSITODENEN");
    if (newest->step()) {
        picture.newestPayment = newest->text(0);
        picture.lastPaymentId = newest->whole(1);
    }
    const auto lastSale = books.prepare("SELECT max(ID) FROM ISLEMNOTABLO");
    if (lastSale->step()) picture.lastSaleId = lastSale->whole(0);
    return picture;
}

std::string shownDate(const std::string& stored) {
    if (stored.size() < 10) return stored;
    return stored.substr(8, 2) + '/' + stored.substr(5, 2) + '/' + stored.substr(0, 4) + stored.substr(10);
}

} // namespace veldona::backup
