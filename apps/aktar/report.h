// What a set of books says of itself: how many rows, and what each customer owes. Made of the old file and of
// the new one, the two must be the same.
//
// Amounts are whole millionths of a lira, the unit of the books, so that sums are exact and no order of rows
// matters. Besides the sums each table has a print of all its values.
#pragma once

#include <cstdint>
#include <iosfwd>
#include <map>
#include <span>
#include <string>
#include <vector>

#include "platform/runtime/value.h"
#include "platform/store/dialect/definition.h"

namespace veldona::aktar {

struct Account {
    std::string name; // of two cards with one number the first by the alphabet, in whatever order they come
    bool hasCard = false;
    std::int64_t lines = 0;
    std::int64_t discounts = 0;
    std::int64_t payments = 0;

    [[nodiscard]] std::int64_t balance() const { return lines - discounts - payments; }
    friend bool operator==(const Account&, const Account&) = default;
};

struct TableTally {
    std::string name;
    std::uint64_t rows = 0;
    std::uint64_t print = 0;
    friend bool operator==(const TableTally&, const TableTally&) = default;
};

// Account numbers are texts that mostly are numbers: 2 comes before 10, and both before G3.
struct ByNumber {
    bool operator()(const std::string& one, const std::string& other) const;
};

struct Report {
    std::vector<TableTally> tables;
    std::map<std::string, Account, ByNumber>
        accounts; // by the customer's number, in capitals as the books see it
    friend bool operator==(const Report&, const Report&) = default;
};

// The columns of a table that a report looks at.
struct TableView {
    const store::TableDef* table;
    std::vector<store::ColumnDef> columns;
};

// Adds a table's rows to a report; the values are those that the store keeps.
class TableCounter {
public:
    TableCounter(Report& report, const TableView& view);
    // Raises Refusal where a sum leaves the range of the books.
    void add(std::span<const Value> row);

private:
    [[nodiscard]] const Value& at(std::span<const Value> row, const char* column) const;
    [[nodiscard]] Account& accountOf(const Value& number);
    void addAmount(std::span<const Value> row);

    Report& report_;
    std::size_t tally_;
    std::string table_;
    std::map<std::string, std::size_t, std::less<>> places_;
};

// The same from a database of the program.
[[nodiscard]] Report readBooks(const std::string& file, const std::vector<TableView>& views);

// Rows a table and the totals; with Customers also a line for each of them.
enum class Detail { Totals, Customers };
void print(std::ostream& out, const Report& report, Detail detail);

} // namespace veldona::aktar
