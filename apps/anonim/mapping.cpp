#include "apps/anonim/mapping.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

namespace veldona::anonim {
namespace {

// Named one by one, so that a column that nobody thought of is replaced.
constexpr std::string_view kKept[] = {"URKOD",     "KASA_NO", "GRUP_KOD",        "ODEME_TIPI",
                                      "ISLEM_TUR", "DEGER",   "CARI_HESAP_ISLE", "YAS"};
constexpr std::string_view kAccounts[] = {"HSTNO", "MUSTNO", "FIRMANO"};
constexpr std::string_view kCodes[] = {"BARKOD_KODU", "VERGIDAIRENO", "OZEL_KOD1"};
// The scratch table's are those of the last contract printed.
constexpr std::string_view kAddresses[] = {
    "EVMH",       "EVCD",    "EVAPT",  "EVILCE",     "EVIL",       "EVPOSTAKOD", "SEMT",
    "ISMH",       "ISCD",    "ISAPT",  "ISIL",       "ADRES",      "ISILCE",     "ISPOSTAKOD",
    "VERGIDAIRE", "MAHALLE", "SK",     "ALAN_1",     "ALAN_2",     "ALAN_4",     "ALAN_5",
    "ALAN_6",     "ALAN_7",  "ALAN_8", "ACIKLAMA_1", "ACIKLAMA_2", "ACIKLAMA_3", "ACIKLAMA_4"};

template <std::size_t N> bool isOneOf(std::string_view name, const std::string_view (&names)[N]) {
    return std::find(std::begin(names), std::end(names), name) != std::end(names);
}

enum class Sort { Account, Code, Address, Text, Date };

struct Column {
    std::string table, name;
    Sort sort;
};

Sort sortOf(std::string_view name) {
    if (isOneOf(name, kAccounts)) return Sort::Account;
    if (isOneOf(name, kCodes)) return Sort::Code;
    return isOneOf(name, kAddresses) ? Sort::Address : Sort::Text;
}

// The house's own tables, whose names begin with MSys, hold no word of a shop.
std::vector<Column> columnsOf(store::Engine& books) {
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
            const std::string name(info->text(1));
            const std::string_view type = info->text(2);
            const bool isText = type.starts_with("TEXT") || type.starts_with("MEMOTEXT");
            if (type.starts_with("DATETIME"))
                columns.push_back({table, name, Sort::Date});
            else if (isText && !isOneOf(name, kKept))
                columns.push_back({table, name, sortOf(name)});
        }
    }
    return columns;
}

// Groups what the books' order holds for one, as 'g7' and 'G7'.
void learnAccounts(store::Engine& books, const std::vector<Column>& columns, Disguise& disguise) {
    std::set<std::string> all;
    for (const Column& column : columns) {
        if (column.sort != Sort::Account) continue;
        const auto rows = books.prepare("SELECT DISTINCT \"" + column.name + "\" COLLATE BINARY FROM \"" +
                                        column.table + "\" WHERE length(\"" + column.name + "\") > 0");
        while (rows->step())
            all.emplace(rows->text(0));
    }
    books.execute("CREATE TEMP TABLE NUMARA (N TEXT COLLATE TURKISH)");
    {
        const auto insert = books.prepare("INSERT INTO temp.NUMARA VALUES (?1)");
        for (const std::string& number : all) {
            insert->bind(1, number);
            insert->step();
            insert->reset();
        }
        const auto same = books.prepare("SELECT ?1 = ?2 COLLATE TURKISH");
        const auto isSame = [&](const std::string& one, const std::string& other) {
            same->bind(1, one);
            same->bind(2, other);
            const bool answer = same->step() && same->whole(0) != 0;
            same->reset();
            return answer;
        };
        std::vector<std::string> spellings;
        const auto rows = books.prepare("SELECT N FROM temp.NUMARA ORDER BY N, N COLLATE BINARY");
        while (rows->step()) {
            std::string number(rows->text(0));
            if (!spellings.empty() && !isSame(spellings.front(), number)) {
                disguise.learnAccount(spellings);
                spellings.clear();
            }
            spellings.push_back(std::move(number));
        }
        if (!spellings.empty()) disguise.learnAccount(spellings);
    }
    books.execute("DROP TABLE temp.NUMARA");
}

std::int64_t replaceTexts(store::Engine& books, const Column& column, const std::string& where,
                          const std::function<std::string(const std::string&)>& replace) {
    const std::string table = '"' + column.table + '"';
    const std::string name = '"' + column.name + '"';
    std::vector<std::pair<std::int64_t, std::string>> cells;
    {
        const auto rows = books.prepare("SELECT rowid, " + name + " FROM " + table + " WHERE " + where);
        while (rows->step())
            cells.emplace_back(rows->whole(0), replace(std::string(rows->text(1))));
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

// What is no date that the program reads has been typed elsewhere, and may be anything.
std::int64_t replaceDates(store::Engine& books, const Column& column, Disguise& disguise) {
    const std::string name = '"' + column.name + '"';
    const std::string shifted =
        "strftime('%Y-%m-%d %H:%M:%S', " + name + ", '-" + std::to_string(7 * disguise.weeks()) + " days')";
    const std::string isDate =
        name + " GLOB '[0-9][0-9][0-9][0-9]-[0-9][0-9]-[0-9][0-9] *' AND " + shifted + " IS NOT NULL";
    const std::int64_t foreign =
        replaceTexts(books, column, "length(" + name + ") > 0 AND NOT (" + isDate + ")",
                     [&](const std::string&) { return disguise.flat(); });
    books.execute("UPDATE \"" + column.table + "\" SET " + name + " = " + shifted + " WHERE " + isDate);
    return foreign;
}

std::int64_t replaceColumn(store::Engine& books, const Column& column, Disguise& disguise) {
    const std::string filled = "length(\"" + column.name + "\") > 0";
    switch (column.sort) {
    case Sort::Account:
        return replaceTexts(books, column, filled,
                            [&](const std::string& text) { return disguise.account(text); });
    case Sort::Code:
        return replaceTexts(books, column, filled,
                            [&](const std::string& text) { return disguise.code(text); });
    case Sort::Address:
        return replaceTexts(books, column, filled, [&](const std::string&) { return disguise.flat(); });
    case Sort::Text:
        return replaceTexts(books, column, filled, [&](const std::string& text) { return disguise(text); });
    case Sort::Date:
        return replaceDates(books, column, disguise);
    }
    return 0;
}

} // namespace

std::int64_t takeNamesOut(store::Engine& books, Disguise& disguise) {
    const std::vector<Column> columns = columnsOf(books);
    std::int64_t replaced = 0;
    books.begin();
    learnAccounts(books, columns, disguise);
    for (const Column& column : columns)
        replaced += replaceColumn(books, column, disguise);
    books.execute("UPDATE MUSTKAYIT SET DOGTRH = substr(DOGTRH, 1, 4) || '-01-01 00:00:00' "
                  "WHERE DOGTRH GLOB '[0-9][0-9][0-9][0-9]-*'");
    books.commit();
    return replaced;
}

} // namespace veldona::anonim
