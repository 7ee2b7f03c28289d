// The rows that a report is made from, kept as they were read: column names, the store's type of each,
// values.
#pragma once

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <vector>

#include "platform/runtime/columntype.h"
#include "platform/runtime/value.h"

namespace veldona::adodb {
class Connection;
class Recordset;
} // namespace veldona::adodb

namespace veldona::report {

struct Column {
    std::string name;
    std::int32_t type = columntype::kText;
    bool summed = false; // the report shows what it adds up to
};

struct DataSet {
    std::string name{}; // of the query; empty for the rows that a caller hands over
    std::vector<Column> columns{};
    std::vector<Value> cells{}; // row after row
    std::string heading{};      // what stands over it in an export of several; empty: the name
    int table = 0;              // which of the report's tables shows it, from 1; 0: none

    [[nodiscard]] std::size_t rowCount() const { return columns.empty() ? 0 : cells.size() / columns.size(); }
    [[nodiscard]] const Value& at(std::size_t row, std::size_t column) const {
        return cells[row * columns.size() + column];
    }
    // As many values as there are columns.
    void addRow(std::initializer_list<Value> values) { cells.insert(cells.end(), values); }
    // -1 where there is no such column; names are case-free.
    [[nodiscard]] int findColumn(std::string_view column) const;
};

// All rows of an open recordset, which is left where it stood.
[[nodiscard]] DataSet rowsOf(const adodb::Recordset& rs, std::string name = {});

// Who answers the queries that a template brings.
class QueryRunner {
public:
    virtual ~QueryRunner() = default;
    [[nodiscard]] virtual DataSet run(const std::string& name, const std::string& sql) = 0;
};

class ConnectionQueries : public QueryRunner {
public:
    // Error 18 where `goOn` says that the report is given up.
    explicit ConnectionQueries(adodb::Connection& connection, std::function<bool()> goOn = {});
    // An error where the rows, or those of all queries together, are more than a report may take.
    [[nodiscard]] DataSet run(const std::string& name, const std::string& sql) override;

private:
    adodb::Connection* connection_;
    std::function<bool()> goOn_;
    std::size_t bytesLeft_;
};

} // namespace veldona::report
