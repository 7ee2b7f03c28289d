#include "ledger/correctionswalk.h"

#include "core/money.h"
#include "core/showscreen.h"
#include "platform/runtime/bytecounter.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"

namespace veldona {

namespace {

bool walkTo(dao::Recordset& rs, const std::function<bool()>& test) {
    if (rs.bof() && rs.eof()) return false; // no row at all to go to the first of
    for (rs.moveFirst(); !rs.eof(); rs.moveNext())
        if (test()) return true;
    return false;
}

bool isOfSale(dao::Recordset& rs, const std::string& islemno) {
    return joinText(rs.value("ISLEMNO")) == islemno;
}

} // namespace

dao::Recordset openForSale(dao::Database& books, std::string_view source, const std::string& islemno) {
    return books.openRecordset(source, {{"ISLEMNO", islemno}});
}

bool findSale(dao::Recordset& rs, const std::string& islemno) {
    return walkTo(rs, [&] { return isOfSale(rs, islemno); });
}

bool findRow(dao::Recordset& rs, const SoughtRow& sought) {
    return walkTo(rs, [&] {
        return isOfSale(rs, sought.islemno) && sought.isDay(rs.value("ODTRH")) &&
               sought.isAmount(rs.value("ODMIKTAR"));
    });
}

std::function<bool(const Value&)> onDay(std::string day) {
    return [day = std::move(day)](const Value& odtrh) { return format(odtrh, "dd/mm/yyyy") == day; };
}

Currency shownAmount(const Session& session, const Value& stored) {
    return amountOrZero(ParaGoster(session, storedIn(stored)));
}

Currency amountOrZero(const std::string& text) {
    return trim(text).empty() ? Currency{} : toCurrency(text);
}

Currency sumOf(const ListBox& amounts) {
    Currency sum;
    countInByte(0, amounts.count() - 1, [&](int i) { sum += amountOrZero(amounts.list(i)); });
    return sum;
}

void patchRow(ListBox& days, ListBox& amounts, int row, const std::string& day, const std::string& amount) {
    days.setList(row, day);
    amounts.setList(row, format(amount, kMoneyMask));
}

void showRemaining(FrmMainVeldona& f, const char* mask) {
    const Currency remaining = toCurrency(f.Label11.caption()) - toCurrency(f.Label8.caption());
    f.Label9.setCaption(format(remaining, mask));
}

void openCorrectionBox(FrmMainVeldona& f, std::string_view box, const RowToCorrect& satir) {
    Form& form = f.forms().load(box);
    try {
        dynamic_cast<CorrectionBox&>(form).al(satir);
    } catch (const RuntimeError&) {
        f.forms().unload(form); // it has opened the sale of this moment
        throw;
    }
    showScreen(f.session, box, Kip::Modal);
}

} // namespace veldona
