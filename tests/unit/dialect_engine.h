// A shop's file behind the dialect, as short as a test wants it: statements in, rows as text out.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/store/dialect/literal.h"
#include "platform/store/dialect/translate.h"
#include "platform/store/faces/database.h"
#include "platform/store/faces/workspace.h"
#include "schema/tables.h"
#include "tests/support/files.h"
#include "tests/support/testbooks.h"

namespace veldona::store {

using Rows = std::vector<std::string>; // cells joined by "|", Null as NULL

class DialectEngine {
public:
    DialectEngine() {
        WorkspaceConfig config;
        config.toNativePath = [](std::string_view path) { return std::string(path); };
        config.clock = [] { return DateTime::of(2026, 11, 22, 10, 30, 0); };
        config.delivered = schema::delivered();
        config.place = [this](std::string_view) { return books_.place(); };
        workspace_ = std::make_unique<Workspace>(std::move(config));
        file_ = workspace_->open(path_, "x");
    }

    [[nodiscard]] Plan plan(std::string_view sql, const std::vector<std::string>& narrowing = {}) const {
        return translate(readStatement(sql), file_->catalog(), file_->engine().words(), narrowing);
    }

    Rows run(std::string_view sql, const std::vector<std::string>& narrowing = {},
             const std::vector<Value>& values = {}) {
        const Reading statement = readStatement(sql);
        const Plan plan = translate(statement, file_->catalog(), file_->engine().words(), narrowing);
        std::vector<Value> bound;
        for (std::size_t i = 0; i < statement.literals.size(); ++i)
            bound.push_back(bindLiteral(statement.literals[i], plan.targets[i]));
        for (std::size_t i = 0; i < values.size(); ++i)
            bound.push_back(bindValue(values[i], plan.narrowTypes[i]));
        return engine(plan.sql, bound);
    }

    // The engine's own SQL.
    Rows engine(const std::string& sql, const std::vector<Value>& values = {}) {
        const auto statement = file_->engine().prepare(sql);
        for (std::size_t i = 0; i < values.size(); ++i)
            statement->bind(static_cast<int>(i) + 1, values[i]);
        Rows rows;
        while (statement->step()) {
            std::string cells;
            for (int i = 0; i < statement->columnCount(); ++i)
                (cells += i > 0 ? "|" : "") += cellOf(*statement, i);
            rows.push_back(cells);
        }
        return rows;
    }

private:
    static std::string cellOf(const Statement& row, int column) {
        if (row.storage(column) == Statement::Storage::Null) return "NULL";
        std::string text(row.text(column));
        const bool isWhole = text.find_first_of(".e") == text.npos;
        return row.storage(column) == Statement::Storage::Number && isWhole ? text + ".0" : text;
    }

    test::TemporaryFolder folder_;
    std::string path_ = folder_ / "vorel.mdb";
    test::TestBooks books_{path_, "x", schema::tables(), schema::savedQueries()};
    std::unique_ptr<Workspace> workspace_;
    std::shared_ptr<Database> file_;
};

} // namespace veldona::store
