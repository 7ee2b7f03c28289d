// What the engine itself leaves of each row that is added, changed or removed: on the file and on a server,
// letter for letter the same.
#include <gtest/gtest.h>

#include <chrono>
#include <functional>

#include "core/books.h"
#include "core/delivered.h"
#include "journal/chain.h"
#include "platform/store/engine/act.h"
#include "platform/store/engine/inquiry.h"
#include "platform/store/engine/openfile.h"
#include "platform/store/engine/openserver.h"
#include "schema/tables.h"
#include "tests/faults/day.h"
#include "tests/faults/servershop.h"

namespace veldona::faults {
namespace {

using store::ColumnDef;
using store::ColumnType;
using store::TableDef;

struct Read {
    std::string act, program, table, kind, key, before, after;
    auto operator<=>(const Read&) const = default;
};

std::vector<Read> entriesSince(const store::Inquiry& books, std::int64_t last) {
    std::vector<Read> all;
    const auto rows =
        books.prepare("SELECT ISLEM, PROGRAM, TABLO, TUR, ANAHTAR, ESKI, YENI FROM GUNLUK WHERE ID > " +
                      std::to_string(last) + " ORDER BY ID");
    while (rows->step()) {
        const auto text = [&](int column) { return std::string(rows->text(column)); };
        all.push_back({text(0), text(1), text(2), text(3), text(4), text(5), text(6)});
    }
    return all;
}

std::int64_t lastEntry(const store::Inquiry& books) {
    const auto rows = books.prepare("SELECT MAX(ID) FROM GUNLUK");
    return rows->step() ? rows->whole(0) : 0;
}

// A value that none of the columns around it has, and its words in an entry.
std::pair<Value, std::string> sample(const ColumnDef& column, int number) {
    switch (column.type) {
    case ColumnType::Text:
    case ColumnType::Memo:
        return {"ş\"\\\n\x01 " + std::to_string(number),
                "\"ş\\\"\\\\\\n\\u0001 " + std::to_string(number) + '"'};
    case ColumnType::Date:
        return {"2026-11-22 10:00:00", "\"2026-11-22 10:00:00\""};
    case ColumnType::Number:
        return number % 2 == 0 ? std::pair<Value, std::string>{0.1 + 0.2, "0.30000000000000004"}
                               : std::pair<Value, std::string>{-450250000.0, "-450250000"};
    default:
        return {std::int64_t{number}, std::to_string(number)};
    }
}

constexpr std::int64_t kKey = 7'000'007; // of no row in the shop

// Each kind of write to `table`; its first column but ID is changed, the second one is Null.
void writeEachKind(store::Engine& engine, const store::Inquiry& books, const TableDef& table) {
    std::vector<std::string> columns;
    for (const ColumnDef& column : table.columns)
        columns.push_back(column.name);
    const auto insertion = books.insertion(table.name, columns);
    for (std::size_t i = 0; i < columns.size(); ++i)
        insertion->bind(static_cast<int>(i) + 1, i == 0 ? Value(kKey)
                                                 : i == 2
                                                     ? Value(Null())
                                                     : sample(table.columns[i], static_cast<int>(i)).first);
    insertion->step();
    EXPECT_EQ(engine.lastId(), kKey);
    EXPECT_EQ(engine.rowsChanged(), 1);
    const auto change = books.correction(table.name, {columns[1]});
    for (const int number : {1, 99}) { // the first changes nothing
        change->bind(1, sample(table.columns[1], number).first);
        change->bind(2, kKey);
        change->step();
        EXPECT_EQ(engine.rowsChanged(), 1);
        change->reset();
    }
    static_cast<void>(
        books.prepare("DELETE FROM " + table.name + " WHERE ID = " + std::to_string(kKey))->step());
    EXPECT_EQ(engine.rowsChanged(), 1);
}

std::vector<Read> expectedOf(const TableDef& table) {
    if (!table.isJournaled) return {};
    const auto row = [&](int ofTheFirst) {
        std::string whole = "{\"ID\":" + std::to_string(kKey);
        for (std::size_t i = 1; i < table.columns.size(); ++i)
            whole += ",\"" + table.columns[i].name + "\":" +
                     (i == 2 ? "null"
                             : sample(table.columns[i], i == 1 ? ofTheFirst : static_cast<int>(i)).second);
        return whole + '}';
    };
    const auto changed = [&](int number) {
        return "{\"ID\":" + std::to_string(kKey) + ",\"" + table.columns[1].name +
               "\":" + sample(table.columns[1], number).second + '}';
    };
    const std::string act = store::runningAct().number, program = store::thisActor().program,
                      key = std::to_string(kKey);
    return {{act, program, table.name, "E", key, "", row(1)},
            {act, "", table.name, "D", key, changed(1), changed(99)},
            {act, "", table.name, "S", key, row(99), ""}};
}

std::int64_t strayRowsIn(store::Engine& engine) {
    journal::Strays strays;
    const journal::Chain chain = journal::examine(engine, {}, &strays);
    EXPECT_FALSE(chain.broken) << describe(chain);
    return strays.all;
}

void expectEachTableToTell(store::Engine& engine) {
    const store::Inquiry books(engine);
    for (const TableDef& table : schema::tables()) {
        if (table.name == "GUNLUK") continue;
        SCOPED_TRACE(table.name);
        const store::ActScope act("Ana ekran", table.name);
        const std::int64_t before = lastEntry(books);
        writeEachKind(engine, books, table);
        EXPECT_EQ(entriesSince(books, before), expectedOf(table));
    }
    EXPECT_EQ(strayRowsIn(engine), 0);
}

TEST(Journal, EachTableTellsOfEachKindOnTheFile) {
    const Drive drive;
    copyShop(drive);
    expectEachTableToTell(*store::openFileToWork(drive.books().string(), kDeliveredPassword,
                                                 {std::chrono::seconds(5), {}, {}}, schema::delivered()));
}

TEST(Journal, EachTableTellsOfEachKindOnAServerAndNoTillWritesItsOwn) {
    const ServerShop shop;
    const store::ServerPlace place(store::ServerAddress(shop.addressOf("kasa1"), ""));
    const auto engine =
        store::openServerToWork(place, {std::chrono::seconds(5), {}, {}}, schema::delivered());
    expectEachTableToTell(*engine);
    for (const char* sql :
         {"DELETE FROM \"GUNLUK\"", "UPDATE \"GUNLUK\" SET \"YENI\" = ''",
          "INSERT INTO \"GUNLUK\" (\"ID\") VALUES (1000000)", "TRUNCATE \"GUNLUK\"",
          "SELECT \"IC\" FROM \"MSysGUNLUK\"",
          "CREATE TEMP TABLE t (a int); CREATE TRIGGER x AFTER INSERT ON t FOR EACH ROW EXECUTE "
          "FUNCTION vd_journal()"})
        EXPECT_THROW(engine->execute(sql), store::StoreError) << sql;
    // Another program's write is there all the same, under its connection's name.
    static_cast<void>(shop.sql("UPDATE \"TAKSITODENEN\" SET \"KASA_ID\" = 9"));
    EXPECT_EQ(
        shop.sql(
            "SELECT \"KULLANICI\" FROM \"GUNLUK\" WHERE left(\"ISLEM\" COLLATE \"C\", 7) = 'sunucu-' AND "
            "\"KULLANICI\" IS NOT NULL"),
        "veldona");
    EXPECT_EQ(strayRowsIn(*engine), 0);
    // The owner's write behind switched-off triggers is not.
    static_cast<void>(
        shop.sql("ALTER TABLE \"TAKSITODENEN\" DISABLE TRIGGER ALL; UPDATE \"TAKSITODENEN\" SET "
                 "\"KASA_ID\" = 8 WHERE \"ID\" = (SELECT min(\"ID\") FROM \"TAKSITODENEN\"); "
                 "ALTER TABLE \"TAKSITODENEN\" ENABLE TRIGGER ALL"));
    EXPECT_EQ(strayRowsIn(*engine), 1);
}

} // namespace
} // namespace veldona::faults
