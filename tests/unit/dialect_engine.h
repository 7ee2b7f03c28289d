// A database in memory behind the dialect, as short as a test wants it: statements in, rows as text out.
#pragma once

#include <sqlcipher/sqlite3.h>

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/datetime.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/dialect/translate.h"
#include "platform/store/engine/sqlcipher/definitionsql.h"
#include "platform/store/engine/sqlcipher/functions.h"
#include "schema/tables.h"

namespace veldona::store {

using Rows = std::vector<std::string>; // cells joined by "|", Null as NULL

class DialectEngine {
public:
    DialectEngine() {
        if (sqlite3_open(":memory:", &connection_) != SQLITE_OK) throw std::runtime_error("no engine");
        registerFunctions(connection_, [] { return DateTime::of(2026, 11, 22, 10, 30, 0); });
        std::vector<TableDef> tables = schema::tables();
        tables.insert(tables.end(), schema::scratchTables().begin(), schema::scratchTables().end());
        for (const std::string& sql : definitionStatements(tables, schema::savedQueries()))
            engine(sql);
        for (const TableDef& table : tables)
            catalog_.add({table.name, table.columns, false, {table.name}});
        catalog_.add(savedQuery("S_TAKSITODENEN", {"TAKSITODENEN", "MUSTKAYIT"}));
        catalog_.add(savedQuery("S_T_KASA_HAREKETLERI", {"T_KASA_HAREKETLERI", "MUSTKAYIT"}));
    }
    ~DialectEngine() { sqlite3_close(connection_); }
    DialectEngine(const DialectEngine&) = delete;
    DialectEngine& operator=(const DialectEngine&) = delete;

    [[nodiscard]] const Catalog& catalog() const { return catalog_; }

    [[nodiscard]] Plan plan(std::string_view sql, const std::vector<std::string>& narrowing = {}) const {
        return translate(readStatement(sql), catalog_, narrowing);
    }

    Rows run(std::string_view sql, const std::vector<std::string>& narrowing = {},
             const std::vector<Value>& values = {}) {
        const Reading statement = readStatement(sql);
        const Plan plan = translate(statement, catalog_, narrowing);
        std::vector<Value> bound;
        for (std::size_t i = 0; i < statement.literals.size(); ++i)
            bound.push_back(bindLiteral(statement.literals[i], plan.targets[i]));
        for (std::size_t i = 0; i < values.size(); ++i)
            bound.push_back(bindValue(values[i], plan.narrowTypes[i]));
        return engine(plan.sql, bound);
    }

    // The engine's own SQL.
    Rows engine(const std::string& sql, const std::vector<Value>& values = {}) {
        sqlite3_stmt* statement = nullptr;
        if (sqlite3_prepare_v2(connection_, sql.c_str(), -1, &statement, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(connection_) + (" in: " + sql));
        for (std::size_t i = 0; i < values.size(); ++i)
            bind(statement, static_cast<int>(i) + 1, values[i]);
        Rows rows;
        int result = SQLITE_ROW;
        while ((result = sqlite3_step(statement)) == SQLITE_ROW)
            rows.push_back(row(statement));
        const std::string message = sqlite3_errmsg(connection_);
        sqlite3_finalize(statement);
        if (result != SQLITE_DONE) throw std::runtime_error(message);
        return rows;
    }

    // How the engine goes about a statement, its steps joined by "; ".
    std::string way(std::string_view sql) {
        std::string way;
        sqlite3_stmt* statement = nullptr;
        const std::string explained = "EXPLAIN QUERY PLAN " + plan(sql).sql;
        sqlite3_prepare_v2(connection_, explained.c_str(), -1, &statement, nullptr);
        while (sqlite3_step(statement) == SQLITE_ROW)
            way += (way.empty() ? "" : "; ") +
                   std::string(reinterpret_cast<const char*>(sqlite3_column_text(statement, 3)));
        sqlite3_finalize(statement);
        return way;
    }

private:
    static void bind(sqlite3_stmt* statement, int place, const Value& value) {
        switch (value.kind()) {
        case Value::Kind::Null:
            sqlite3_bind_null(statement, place);
            return;
        case Value::Kind::Whole:
            sqlite3_bind_int64(statement, place, value.get<std::int64_t>());
            return;
        case Value::Kind::Double:
            sqlite3_bind_double(statement, place, value.get<double>());
            return;
        default:
            break;
        }
        const std::string& text = value.get<std::string>();
        sqlite3_bind_text(statement, place, text.data(), static_cast<int>(text.size()), SQLITE_TRANSIENT);
    }

    static std::string row(sqlite3_stmt* statement) {
        std::string cells;
        for (int i = 0; i < sqlite3_column_count(statement); ++i) {
            const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, i));
            cells += (i > 0 ? "|" : "") + std::string(text ? text : "NULL");
        }
        return cells;
    }

    // The columns of a view, read back as a file's are.
    Catalog::Relation savedQuery(const std::string& name, std::vector<std::string> baseTables) {
        Catalog::Relation relation{name, {}, true, std::move(baseTables)};
        sqlite3_stmt* statement = nullptr;
        const std::string all = "SELECT * FROM " + name;
        if (sqlite3_prepare_v2(connection_, all.c_str(), -1, &statement, nullptr) != SQLITE_OK)
            throw std::runtime_error(sqlite3_errmsg(connection_));
        for (int i = 0; i < sqlite3_column_count(statement); ++i) {
            const char* declared = sqlite3_column_decltype(statement, i);
            relation.columns.push_back(
                {sqlite3_column_name(statement, i),
                 columnTypeOfDeclaration(declared ? declared : "").value_or(ColumnType::Text)});
        }
        sqlite3_finalize(statement);
        return relation;
    }

    sqlite3* connection_ = nullptr;
    Catalog catalog_;
};

} // namespace veldona::store
