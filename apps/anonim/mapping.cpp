#include "apps/anonim/mapping.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <set>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/store/dialect/literal.h"
#include "platform/store/engine/alphabet.h"
#include "platform/store/engine/inquiry.h"
#include "platform/store/engine/journalseal.h"

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

std::vector<Column> columnsOf(const store::Catalog& catalog) {
    using enum store::ColumnType;
    std::vector<Column> columns;
    for (const store::Catalog::Relation& table : catalog.relations()) {
        if (table.isQuery || table.name == store::kJournalTable) continue;
        for (const store::ColumnDef& column : table.columns) {
            if (column.type == Date)
                columns.push_back({table.name, column.name, Sort::Date});
            else if ((column.type == Text || column.type == Memo) && !isOneOf(column.name, kKept))
                columns.push_back({table.name, column.name, sortOf(column.name)});
        }
    }
    return columns;
}

// Each row that holds something in the column: its key, and what it holds.
void eachCell(const store::Inquiry& books, const Column& column,
              const std::function<void(std::int64_t id, const std::string& text)>& take) {
    const auto rows = books.prepare("SELECT ID, [" + column.name + "] FROM [" + column.table + ']');
    while (rows->step())
        if (const std::string text(rows->text(1)); !text.empty()) take(rows->whole(0), text);
}

// Groups what the books' order holds for one, as 'g7' and 'G7'.
void learnAccounts(const store::Inquiry& books, const std::vector<Column>& columns, Disguise& disguise) {
    std::set<std::string> all;
    for (const Column& column : columns)
        if (column.sort == Sort::Account)
            eachCell(books, column, [&](std::int64_t, const std::string& text) { all.insert(text); });
    const store::Alphabet& alphabet = store::Alphabet::turkish();
    std::vector<std::string> sorted(all.begin(), all.end());
    std::stable_sort(sorted.begin(), sorted.end(),
                     [&](const auto& one, const auto& other) { return alphabet.compare(one, other) < 0; });
    for (auto first = sorted.begin(); first != sorted.end();) {
        const auto behind = std::find_if(
            first, sorted.end(), [&](const auto& number) { return !alphabet.isSame(*first, number); });
        disguise.learnAccount({first, behind});
        first = behind;
    }
}

// `replace` answers what shall stand in a cell.
std::int64_t replaceCells(const store::Inquiry& books, const Column& column,
                          const std::function<std::string(const std::string&)>& replace) {
    std::vector<std::pair<std::int64_t, std::string>> cells;
    eachCell(books, column,
             [&](std::int64_t id, const std::string& text) { cells.emplace_back(id, replace(text)); });
    const auto update = books.correction(column.table, {column.name});
    for (const auto& [id, text] : cells) {
        update->bind(1, text);
        update->bind(2, id);
        update->step();
        update->reset();
    }
    return static_cast<std::int64_t>(cells.size());
}

// What is no date that the program reads has been typed elsewhere, and may be anything. Of a birth the year
// alone is kept.
std::int64_t replaceDates(const store::Inquiry& books, const Column& column, Disguise& disguise) {
    const bool isBirth = column.table == "MUSTKAYIT" && column.name == "DOGTRH";
    std::int64_t foreign = 0;
    replaceCells(books, column, [&](const std::string& text) {
        const auto date = store::dateOfStored(text);
        if (!date) {
            ++foreign;
            return disguise.flat();
        }
        const DateTime shifted = date->plusDays(-7 * disguise.weeks());
        return store::storedDate(isBirth ? DateTime::of(shifted.year(), 1, 1) : shifted);
    });
    return foreign;
}

std::int64_t replaceColumn(const store::Inquiry& books, const Column& column, Disguise& disguise) {
    switch (column.sort) {
    case Sort::Account:
        return replaceCells(books, column, [&](const std::string& text) { return disguise.account(text); });
    case Sort::Code:
        return replaceCells(books, column, [&](const std::string& text) { return disguise.code(text); });
    case Sort::Address:
        return replaceCells(books, column, [&](const std::string&) { return disguise.flat(); });
    case Sort::Text:
        return replaceCells(books, column, [&](const std::string& text) { return disguise(text); });
    case Sort::Date:
        return replaceDates(books, column, disguise);
    }
    return 0;
}

// Its entries hold what nobody shall read, and who sat at the machine; the key is the shop's.
void forgetJournal(const store::Inquiry& books) {
    if (books.catalog().find(store::kJournalTable) == nullptr) return;
    static_cast<void>(books.prepare("DELETE FROM GUNLUK")->step());
    books.engine().setLastCounter(store::kJournalTable, 0);
    books.engine().setJournalKey(store::newJournalKey());
}

} // namespace

std::int64_t takeNamesOut(store::Engine& engine, Disguise& disguise) {
    const store::Inquiry books(engine);
    const std::vector<Column> columns = columnsOf(books.catalog());
    std::int64_t replaced = 0;
    engine.beginFilling(); // the journal, too, would tell the names that were there before
    learnAccounts(books, columns, disguise);
    for (const Column& column : columns)
        replaced += replaceColumn(books, column, disguise);
    forgetJournal(books);
    engine.endFilling();
    return replaced;
}

} // namespace veldona::anonim
