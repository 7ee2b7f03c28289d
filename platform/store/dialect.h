// The statements of the program, in the store's old dialect, turned into the engine's SQL.
//
// A text is split into a shape and its literals, so that a look-up typed with another number is the same
// plan: the shape is parsed, checked against the known column types and written once, the literals are
// converted by the type of the column that they meet, and bound. It is a real parser; a second statement
// behind ";" is a syntax error.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/value.h"
#include "platform/store/definition.h"

namespace veldona::store {

// What the writer must know of the file: the columns of each table and saved query, names compared case-free.
class Catalog {
public:
    struct Relation {
        std::string name;
        std::vector<ColumnDef> columns;
        bool isQuery = false;
        std::vector<std::string> baseTables; // of a query: the tables below it; of a table: itself
    };
    void add(Relation relation);
    [[nodiscard]] const Relation* find(std::string_view name) const; // nullptr where there is none

private:
    std::vector<Relation> relations_;
};

struct Literal {
    enum class Kind { Number, Text, Date };
    Kind kind;
    std::string text; // as written, without apostrophes or signs
};

struct SplitStatement {
    std::string shape; // the text with each bindable literal as "?", blanks and letters' case settled
    std::vector<Literal> literals;
    std::vector<std::size_t> places; // where the content of each literal begins in the text
};

// Raises StoreError{Syntax} for a text that cannot be cut into words (an apostrophe left open, a stray sign).
[[nodiscard]] SplitStatement splitStatement(std::string_view sql);

struct ResultColumn {
    std::string name;
    std::optional<ColumnType> type; // nothing where only the value itself can tell
};

struct Plan {
    enum class Kind { Select, Insert, Update, Delete, Identity };
    Kind kind = Kind::Select;
    std::string sql; // the engine's, parameters ?1 … in the order of `targets`
    std::vector<std::optional<ColumnType>>
        targets;                         // the type that each literal is converted to; nothing: as it reads
    std::vector<ColumnType> narrowTypes; // of the narrowing parameters, which follow the literals
    std::string table;                   // written by Insert, Update, Delete
    std::vector<std::string> baseTables; // read by Select
    std::vector<ResultColumn> columns;   // of Select and Identity
    bool listsKeys = false; // a Select of nothing but the keys of one table, all of them, in order
};

// `narrowing`: columns that a Select is further limited by, each with "= parameter", joined by And.
[[nodiscard]] Plan translate(const SplitStatement& statement, const Catalog& catalog,
                             const std::vector<std::string>& narrowing = {});

// A literal as the engine stores a value of `target`: dates as "YYYY-MM-DD hh:mm:ss" text, numbers as
// numbers. Raises StoreError{TypeMismatch} where it does not read.
[[nodiscard]] Value bindLiteral(const Literal& literal, std::optional<ColumnType> target);
// The same for a value of the program going into a column: a date as stored text, a text read as the column's
// type.
[[nodiscard]] Value bindValue(const Value& value, ColumnType target);

// A date as it is stored, and back; nothing where `stored` is no such text.
[[nodiscard]] std::string storedDate(DateTime date);
[[nodiscard]] std::optional<DateTime> dateOfStored(std::string_view stored);

// The engine's statements that make `tables` and `queries`; a query's text is of the dialect.
[[nodiscard]] std::vector<std::string> definitionStatements(const std::vector<TableDef>& tables,
                                                            const std::vector<SavedQueryDef>& queries);
// The type of a column that was declared so by definitionStatements, as the engine tells it back; nothing for
// another declaration, and for "" (an expression of a query). A Counter reads as Whole: the table's key tells
// the two apart.
[[nodiscard]] std::optional<ColumnType> columnTypeOfDeclaration(std::string_view declaration);

} // namespace veldona::store
