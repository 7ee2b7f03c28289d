// Looks a Jet file through before anything is written: which of its tables and columns the books have a place
// for, whether every value fits, and what the file says of the customers' balances.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "apps/aktar/jetfile.h"
#include "apps/aktar/report.h"
#include "platform/store/dialect/definition.h"

namespace veldona::aktar {

// How far a table has come.
using Progress = std::function<void(const std::string& table, std::uint64_t done, std::uint64_t all)>;

// A table of the file and its place in the books. Names are matched without regard to case.
struct Match {
    const JetTable* source;
    TableView target;
    std::vector<std::size_t> columns; // of the source, one for each of the target's
};

struct Examination {
    std::vector<Match> matches;
    std::vector<std::string> remarks;  // what has no place, and what stays empty
    std::vector<std::string> doubts;   // values that fit and yet are hardly what somebody wrote
    std::vector<std::string> problems; // values that would not fit; with one of them nothing is moved
    Report report;
};

// A value as the store keeps it in a column of `type`; nothing where it does not fit without a loss.
[[nodiscard]] std::optional<Value> fitted(const Value& value, store::ColumnType type);
// The same, with the column's default for Null.
[[nodiscard]] std::optional<Value> fitted(const Value& value, const store::ColumnDef& column);

// `file` must outlive the examination. Raises Damaged, Refusal.
[[nodiscard]] Examination examine(const JetFile& file, const Progress& progress);

} // namespace veldona::aktar
