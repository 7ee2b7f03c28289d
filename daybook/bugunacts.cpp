#include "daybook/bugunacts.h"

#include "core/exportfolders.h"
#include "core/formframe.h"
#include "core/reporting.h"
#include "core/session.h"
#include "platform/desktop/desktop.h"
#include "platform/export/spreadsheet.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

constexpr const char* kDay = "dd/mm/yyyy";

bool warn(FrmBugun& f, const char* words, Control& field) {
    f.session.desktop.dialogs.tell(words, Icon::Exclamation);
    field.setFocus();
    return false;
}

// The fields as a note of the customer stood on; false where they do not make one.
bool readNote(FrmBugun& f, CallNote& note) {
    const Value& day = f.dtSozTarihi.value();
    const Value amount = trim(f.txtSozTutari.text());
    note.text = trim(f.txtNot.text());
    if (note.text.empty() && day.isNull()) return warn(f, "Notu ya da söz verilen günü yazınız.", f.txtNot);
    if (day.isNull()) {
        if (toText(amount).empty()) return true;
        return warn(f, "Söz verilen günü de yazınız.", f.dtSozTarihi);
    }
    if (toDate(day) < note.at.date()) return warn(f, "Söz verilen gün geçmiş olamaz.", f.dtSozTarihi);
    note.promise = CallPromise{toDate(day), {}};
    if (toText(amount).empty()) return true;
    if (!isNumeric(amount) || toDouble(amount) <= 0)
        return warn(f, "Söz verilen tutar okunamadı.", f.txtSozTutari);
    note.promise->amount = StoredAmount::ofLira(toDouble(amount)).rounded();
    return true;
}

// What the list was narrowed to, for the head of the paper.
std::string choiceWords(const FrmBugun& f) {
    std::string words =
        f.cboDurum.text() == "Hepsi" ? "Bugün vadesi gelenler ve günü geçenler" : f.cboDurum.text();
    if (f.cboGecikme.listIndex() > 0) words += ", gecikme " + f.cboGecikme.text();
    if (f.memory->choice.atLeast > StoredAmount{})
        words += ", en az " + amountWords(f.memory->choice.atLeast);
    if (!trim(f.txtAra.text()).empty()) words += ", \"" + trim(f.txtAra.text()) + "\"";
    return words;
}

report::DataSet rowsOf(const CallRows& rows) {
    report::DataSet data;
    for (const DataGrid::Column& column : CallRows::columns()) {
        data.columns.push_back({column.field});
        if (column.rightAligned) data.columns.back().type = columntype::kNumber;
    }
    for (int row = 0; row < rows.rowCount(); ++row)
        for (std::size_t column = 0; column < data.columns.size(); ++column)
            data.cells.push_back(rows.printed(row, static_cast<CallColumn>(column)));
    return data;
}

constexpr exports::CellStyle kHead{.bold = true, .size = 14};
constexpr exports::CellStyle kColumnHead{.bold = true};

void writeRows(const FrmBugun& f, exports::Spreadsheet& sheet) {
    constexpr int firstRow = 3;
    constexpr int pixelsOfLetter = 7;
    sheet.write(0, 0, "Bugün  " + format(f.memory->list.today, kDay), kHead);
    sheet.write(1, 0, choiceWords(f));
    const auto& columns = CallRows::columns();
    for (std::size_t column = 0; column < columns.size(); ++column) {
        const auto place = static_cast<CallColumn>(column);
        const int letters = columns[column].width / pixelsOfLetter + 2;
        sheet.setWidth(static_cast<char>('A' + column), letters);
        sheet.write(firstRow - 1, static_cast<int>(column), columns[column].title, kColumnHead);
        for (int row = 0; row < f.rows.rowCount(); ++row)
            sheet.write(firstRow + row, static_cast<int>(column), f.rows.value(row, place));
    }
    const int last = firstRow + f.rows.rowCount();
    const CallTotals& totals = f.rows.totals();
    sheet.write(last, static_cast<int>(CallColumn::Name), "Toplam", kColumnHead);
    sheet.write(last, static_cast<int>(CallColumn::Overdue), totals.overdue.lira(), kColumnHead);
    sheet.write(last, static_cast<int>(CallColumn::Count), totals.installments, kColumnHead);
    sheet.write(last, static_cast<int>(CallColumn::DueToday), totals.dueToday.lira(), kColumnHead);
}

} // namespace

void openCalledAccount(FrmBugun& f) {
    const CallRow* row = f.rows.current();
    if (!row) return;
    f.session.gFormKayit.HSTNO = row->account;
    f.session.gFormKayit.KayitID = row->oldestSale;
    f.session.gFormKayit.Sonuc = Currency::ofWhole(FormResult::Chosen);
    f.forms().unload(f);
}

bool saveCallNote(FrmBugun& f) {
    const CallRow* row = f.rows.current();
    if (!row) return false;
    CallNote note{row->account, f.session.desktop.clock.now(), {}};
    if (!readNote(f, note) || !writeCallNote(f.session, note)) return false;
    for (TextBox* box : {&f.txtNot, &f.txtSozTutari})
        box->setText("");
    f.dtSozTarihi.setValue(Null{});
    readCalls(*f.session.gBaglanti, f.memory->list);
    return true;
}

void printCallList(FrmBugun& f) {
    const BusyGuard busy(f);
    showReportWithData(f.session, "Bugun", {rowsOf(f.rows)},
                       [&](report::Layout& layout) { layout.setText("Section2", "Label2", choiceWords(f)); });
}

void writeCallSheet(FrmBugun& f) {
    const BusyGuard busy(f);
    Session& session = f.session;
    const std::string file = exportFile(
        session, "MSExcel", "Bugun " + format(session.desktop.clock.now(), "yyyy-mm-dd hh.mm.ss"), ".xlsx");
    exports::Spreadsheet sheet(file);
    writeRows(f, sheet);
    sheet.close();
    if (!session.desktop.opener.open(file))
        session.desktop.dialogs.tell("Liste yazıldı: " + file, Icon::Information);
}

} // namespace veldona
