// The same rows as the program's steps need, fetched and written by statements prepared on the bare engine:
// what the steps would cost if there were no program.
#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "platform/runtime/datetime.h"
#include "platform/store/engine/engine.h"

namespace veldona::bench {

struct SaleKey {
    std::string account;
    std::int64_t sale = 0;
};

class BareEngine {
public:
    BareEngine(store::Engine& engine, DateTime now);

    // The customer, the customer's sales, and what fell due this month against what was paid.
    void load(const std::string& account);
    // The sale's lines with the names of their products, its schedule, payments and header, and again what is
    // overdue.
    void open(const SaleKey& key);
    // One payment of 1,00, on the disk when this returns.
    void pay(const SaleKey& key);
    // The sale's schedule, and its last row written as it stands, on the disk when this returns.
    void correct(const SaleKey& key);
    // The sale's payments, and the first one written as it stands, on the disk when this returns; then what
    // the main screen shows anew as it comes to the front: the customer's sales and what is overdue.
    void correctPayment(const SaleKey& key);
    // A header, a line, the stock and a schedule row a month for a year in one transaction, on the disk when
    // this returns.
    void save(const std::string& account);

    // Sales spread evenly over the years; with `owing`, of those on which more than 100,00 is still to be
    // paid.
    [[nodiscard]] std::vector<SaleKey> sales(std::size_t count, bool owing);
    [[nodiscard]] std::int64_t payments();
    [[nodiscard]] std::int64_t rowsRead() const { return rowsRead_; }

private:
    using Statement = std::unique_ptr<store::Statement>;
    void fetch(const Statement& statement, const std::vector<Value>& values);
    void fetchOverdue(const std::string& account);

    store::Engine& engine_;
    std::string now_, firstOfMonth_, endOfToday_; // as stored
    std::vector<std::string> dueDays_;            // of a sale of twelve, as stored
    std::vector<std::string> row_;                // the cells of the row read last
    std::vector<std::string> firstCells_;         // of the rows of the last fetch
    std::vector<std::string> secondCells_;
    std::int64_t rowsRead_ = 0;
    std::int64_t lastSale_ = 0; // below it a number is free: the program numbers upward from the highest
    Statement customer_, warning_, customerSales_, fallenDue_, paid_, name_, lines_, product_, schedule_,
        received_, header_, downPayment_, insert_, update_, updatePayment_, insertHeader_, insertLine_,
        insertInstallment_, updateStock_;
};

} // namespace veldona::bench
