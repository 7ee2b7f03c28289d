// The call list as the operator has narrowed and ordered it: the rows of the grid, of the paper and of the
// spreadsheet, and what they come to.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "daybook/calllist.h"
#include "platform/controls/lists.h"

namespace veldona {

enum class CallKind { All, DueToday, Overdue, NeverPaid, PromiseOpen, PromiseBroken };

enum class CallColumn {
    Account,
    Name,
    Telephones,
    Overdue,
    Count,
    Days,
    DueToday,
    LastPayment,
    LastAmount,
    Promise,
    Note
};

struct DaysRange {
    int first = 0;
    std::optional<int> last{};
};

struct CallChoice {
    std::string typed; // words in any order, in capitals or not, with or without the letters' marks
    CallKind kind = CallKind::All;
    std::optional<DaysRange> days{}; // overdue; nothing: due today alone, too
    StoredAmount atLeast;            // overdue and due today together
    CallColumn order = CallColumn::Days;
    bool descending = false;
};

struct CallTotals {
    StoredAmount overdue;
    StoredAmount dueToday;
    int installments = 0;
};

class CallRows : public RowSource {
public:
    [[nodiscard]] static const std::vector<DataGrid::Column>& columns(); // in the order of CallColumn

    // `list` must outlive the rows. The current row stays on its customer, or is the first one.
    void show(const CallList& list, const CallChoice& choice);
    [[nodiscard]] const CallRow* current() const; // nullptr: none
    void moveTo(std::string_view account);        // nothing where it is not shown
    [[nodiscard]] const std::vector<const CallRow*>& shown() const { return shown_; }
    [[nodiscard]] const CallTotals& totals() const { return totals_; }
    // As a number, date or text: what is sorted by, and what a spreadsheet holds.
    [[nodiscard]] Value value(int row, CallColumn column) const;
    [[nodiscard]] Value printed(int row, CallColumn column) const; // the same, in words where there is none

    [[nodiscard]] int rowCount() const override { return static_cast<int>(shown_.size()); }
    [[nodiscard]] std::string cell(int row, std::string_view field) const override;
    [[nodiscard]] int currentRow() const override { return current_; }
    void moveTo(int row) override { current_ = row; }

private:
    std::vector<const CallRow*> shown_;
    CallTotals totals_;
    int current_ = -1;
};

// "Bekleniyor 25/11/2026 500,00"; without an amount the day alone.
[[nodiscard]] std::string promiseWords(const CallPromise& promise);
[[nodiscard]] std::string amountWords(StoredAmount amount); // "#,##0.00"

} // namespace veldona
