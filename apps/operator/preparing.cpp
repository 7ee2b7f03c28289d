#include <algorithm>
#include <iostream>

#include "apps/operator/sqlrows.h"
#include "apps/operator/verbs.h"
#include "core/reporting.h"
#include "core/session.h"
#include "platform/controls/names.h"
#include "platform/runtime/conversion.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/faces/adodb.h"
#include "schema/tables.h"

namespace veldona::console {

namespace {

void createDatabase(Stage& stage, const Line&) {
    try {
        stage.makeBooks();
        for (const char* row : schema::firstRows())
            stage.process().connection().execute(row);
        installLayouts(stage.process().paths());
    } catch (const store::StoreError& error) {
        throw Shortfall("the database was not created: " + error.description());
    } catch (const RuntimeError& error) {
        throw Shortfall("the database was not filled: " + error.description());
    }
}

void printRows(adodb::Connection& connection, const std::string& sql) {
    adodb::Recordset rows;
    rows.cursorLocation = adodb::CursorLocation::Client;
    rows.open(sql, connection);
    for (const std::string& row : allRows(rows))
        std::cout << row << '\n';
}

// A statement that fails is told as the program would tell it, so that a scenario can expect the error.
void runSql(Stage& stage, const Line& line) {
    const std::string& sql = line.words[0].text;
    try {
        adodb::Connection& connection = stage.process().connection();
        if (isSelect(sql)) {
            printRows(connection, sql);
        } else {
            connection.execute(sql);
        }
    } catch (const RuntimeError& error) {
        stage.dialogs.runtimeError(error);
    }
}

// Rows of one table: "TABLE (columns)", and the values of each.
void insertRows(Stage& stage, const Line& line) {
    for (std::size_t i = 1; i < line.words.size(); ++i)
        runSql(
            stage,
            {"sql", {{"INSERT INTO " + line.words[0].text + " VALUES (" + line.words[i].text + ")", true}}});
}

void setClock(Stage& stage, const Line& line) {
    try {
        stage.clock.set(readDate(line.words[0].text));
    } catch (const RuntimeError&) {
        throw UnreadableLine("this is no date: " + line.words[0].text);
    }
}

void start(Stage& stage, const Line&) {
    stage.reports.markSeen();
    stage.process().start();
}

void failWrite(Stage& stage, const Line& line) {
    const int nth = wholeNumber(line.words[0]);
    if (nth < 1) throw UnreadableLine("writes are counted from 1");
    const auto holds = [&](const std::vector<store::TableDef>& tables) {
        return std::any_of(tables.begin(), tables.end(), [&](const store::TableDef& table) {
            return sameName(table.name, line.words[1].text);
        });
    };
    if (!holds(schema::tables()) && !holds(schema::scratchTables()))
        throw Shortfall("there is no such table");
    stage.process().session().workspace.failWrite(nth, line.words[1].text);
}

constexpr Verb kVerbs[] = {
    {"database", 0, 0, createDatabase}, {"sql", 1, 1, runSql},
    {"clock", 1, 1, setClock},          {"start", 0, 0, start},
    {"fault", 2, 2, failWrite},         {"insert", 2, kAnyNumber, insertRows},
};

} // namespace

std::span<const Verb> preparingVerbs() {
    return kVerbs;
}

} // namespace veldona::console
