#include "apps/anonim/nameless.h"

#include <algorithm>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <utility>
#include <vector>

#include "backup/copy.h"
#include "backup/refusal.h"
#include "core/session.h"
#include "platform/store/engine/draft.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"

namespace veldona::anonim {
namespace {

namespace fs = std::filesystem;
using backup::Refusal;

// Named one by one, so that a column that nobody thought of is replaced.
constexpr std::string_view kKept[] = {"HSTNO",   "MUSTNO",          "FIRMANO",    "URKOD",
                                      "KASA_NO", "GRUP_KOD",        "ODEME_TIPI", "ISLEM_TUR",
                                      "DEGER",   "CARI_HESAP_ISLE", "YAS"};

struct Column {
    std::string table, name;
};

// The house's own tables, whose names begin with MSys, hold no word of a shop.
std::vector<Column> textColumns(store::Engine& books) {
    std::vector<std::string> tables;
    const auto listed =
        books.prepare("SELECT name FROM sqlite_master WHERE type = 'table' AND name NOT LIKE 'MSys%' "
                      "AND name NOT LIKE 'sqlite\\_%' ESCAPE '\\'");
    while (listed->step())
        tables.emplace_back(listed->text(0));
    std::vector<Column> columns;
    for (const std::string& table : tables) {
        const auto info = books.prepare("PRAGMA table_info(\"" + table + "\")");
        while (info->step()) {
            const std::string_view name = info->text(1);
            const std::string_view type = info->text(2);
            const bool isText = type.starts_with("TEXT") || type.starts_with("MEMOTEXT");
            const bool isKept = std::find(std::begin(kKept), std::end(kKept), name) != std::end(kKept);
            if (isText && !isKept) columns.push_back({table, std::string(name)});
        }
    }
    return columns;
}

std::int64_t replaceTexts(store::Engine& books, const Column& column, Disguise& disguise) {
    const std::string table = '"' + column.table + '"';
    const std::string name = '"' + column.name + '"';
    std::vector<std::pair<std::int64_t, std::string>> cells;
    {
        const auto rows =
            books.prepare("SELECT rowid, " + name + " FROM " + table + " WHERE length(" + name + ") > 0");
        while (rows->step())
            cells.emplace_back(rows->whole(0), disguise(rows->text(1)));
    }
    const auto update = books.prepare("UPDATE " + table + " SET " + name + " = ?1 WHERE rowid = ?2");
    for (const auto& [row, text] : cells) {
        update->bind(1, text);
        update->bind(2, row);
        update->step();
        update->reset();
    }
    return static_cast<std::int64_t>(cells.size());
}

// Rewritten at the end, since the place of a longer text that was replaced keeps a part of it.
std::int64_t takeNamesOut(const std::string& file, Disguise& disguise) {
    const auto books = store::openSqlcipher(file, kDeliveredPassword, std::chrono::seconds(1));
    std::int64_t replaced = 0;
    books->begin();
    for (const Column& column : textColumns(*books))
        replaced += replaceTexts(*books, column, disguise);
    books->execute("UPDATE MUSTKAYIT SET DOGTRH = substr(DOGTRH, 1, 4) || '-01-01 00:00:00' "
                   "WHERE length(DOGTRH) > 0");
    books->commit();
    books->execute("VACUUM");
    return replaced;
}

} // namespace

Outcome copyWithoutNames(const std::string& books, const std::string& named, Disguise disguise) {
    const std::string file = fs::absolute(named).string(); // the folder of a bare name is synced too
    if (backup::stands(file)) throw Refusal(file + " zaten var ve olduğu gibi bırakıldı.");
    const store::Draft draft(file + ".adli"); // it still carries the names of the shop
    Outcome outcome;
    outcome.picture = backup::copyBooks(books, draft.path());
    outcome.replaced = takeNamesOut(draft.path(), disguise);
    if (backup::inspect(draft.path()) != outcome.picture)
        throw Refusal("Adsız kopya defterin sayılarını taşımıyor ve silindi.");
    if (std::rename(draft.path().c_str(), file.c_str()) != 0)
        throw Refusal(file + " yazılamadı: " + std::strerror(errno));
    return outcome;
}

} // namespace veldona::anonim
