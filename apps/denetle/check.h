// Adds up the books and says what does not agree.
//
// The sums are made here and not by the engine, so that an index that misses a customer hides nothing, and a
// million rows are read once, from front to back.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/store/engine/engine.h"

namespace veldona::denetle {

enum class Fault {
    HeaderWithoutLines,
    LinesWithoutHeader,
    ScheduleWithoutHeader,
    PaymentsWithoutSale,
    RowsOfAnotherAccount, // of a sale, under a number that its header does not carry
    TwoHeaders,
    ScheduleDiffers, // from the total of the sale
    LinesDiffer,     // less the discount, from the total of the sale
    NegativeRemainder,
    CustomerMissing,
    TwoCards,         // of one account number
    StockDiffersSold, // from the lines
    StockDiffersLeft, // from what was bought less what was sold
};

struct Finding {
    Fault fault;
    std::string account; // empty for stock
    std::string subject; // the sale's number or the product's code; empty where neither is meant
    double expected = 0; // amounts in shown units; rows and pieces as they are
    double found = 0;
};

struct Findings {
    std::vector<Finding> all; // by account, numbers in their order; stock at the end
    std::int64_t customers = 0;
    std::int64_t sales = 0;
    std::int64_t rows = 0; // of all the tables looked at
};

// Reads one moment of the books, also while the program is at work on them. Raises
// StoreError.
[[nodiscard]] Findings checkBooks(store::Engine& books);

// Whether it counts rows or pieces, or compares amounts, or neither.
enum class Measure { None, Count, Amount };
[[nodiscard]] Measure measureOf(Fault fault);

} // namespace veldona::denetle
