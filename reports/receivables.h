// What the overdue and the expected report share: the range of dates, the sales with what is left on them,
// the scratch table GUNUGECENODM between computation and paper, and the paper.
//
// The scratch table is empty between runs; only a row that could not be written leaves the ones before it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/runtime/datetime.h"
#include "platform/runtime/storedamount.h"
#include "platform/store/faces/adodb.h"
#include "reports/receivablesscreen.h"

namespace veldona {

// The days of the two pickers as the store's literals read them; "" for one that is not set.
struct DateRange {
    std::string from;
    std::string son;
    bool fromChosen = false;
    bool toChosen = false;
};

struct GecikmeKaydi {
    std::string MUSTNO;
    std::string AD;
    std::string SOYAD;
    std::int16_t ISLEMNO = 0;
    DateTime ODTRH;     // the latest due date counted
    DateTime MIN_ODTRH; // the earliest
    StoredAmount KALAN;
};

// One element a sale, counted in 16 bits. An element that is passed over stays empty.
class OverdueArray {
public:
    void advance();         // error 6 behind element 32767
    GecikmeKaydi& extend(); // the array reaches to the current element from now on
    [[nodiscard]] std::vector<GecikmeKaydi>& entries() { return entries_; }

private:
    std::int16_t index_ = 0;
    std::vector<GecikmeKaydi> entries_;
};

// How one of the two reports differs.
struct ReportRules {
    // What is left on each sale. False where there is no sale, or a query failed and the operator was told.
    bool (*compute)(ReportScreen& f, const DateRange& range, OverdueArray& array);
    // Takes the rows away again where the detailed report is asked for, which nobody prints.
    void (*clearDetail)(ReportScreen& f, const DateRange& range);
    // The rows of the paper.
    std::string (*reportQuery)(const ReportScreen& f, const DateRange& range);
};

void runReport(ReportScreen& f, const ReportRules& rules);

bool clearOverdue(Session& session);
// The schedule's sum and first and last date of each sale, in the columns MUSTNO, ISLEMNO, sum, last, first.
[[nodiscard]] std::string installmentGroups(const std::string& kosul);
// Puts the group's sale and dates into `kayit`. Error 94 for a sale without a number, 6 for one above 32767.
void takeGroup(const adodb::Recordset& rs, GecikmeKaydi& record);
// The columns of the paper, with `ara` between the two telephone numbers, up to the join with the customers.
[[nodiscard]] std::string reportColumns(const std::string& ara);

} // namespace veldona
