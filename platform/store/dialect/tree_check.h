// Gives the names of a tree their meaning: which table a column is of, what type an expression has, what *
// stands for.
#pragma once

#include <string>
#include <vector>

#include "platform/store/dialect/catalog.h"
#include "platform/store/dialect/tree.h"

namespace veldona::store::sql {

struct Checked {
    std::vector<std::string> baseTables; // read by any part of the statement
    int sources = 0; // tables and queries named in it; above one, columns are written with theirs
    bool readsClock = false;
};

// Raises StoreError{UnknownName} for a table, column or function that is not there or not told apart,
// {Syntax} for a misplaced aggregate or a wrong count of values, {TypeMismatch} for a sum over text.
Checked check(Statement& statement, const Catalog& catalog);

// The column of `source` by its name, case-free; nullptr where it has none.
[[nodiscard]] const SourceColumn* findColumn(const Source& source, std::string_view name);

[[noreturn]] void failUnknown(std::string_view what, std::string_view name);

} // namespace veldona::store::sql
