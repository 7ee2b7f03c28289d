#include "reports/spreadsheet.h"

#include <filesystem>
#include <map>
#include <optional>

#include "core/database.h"
#include "core/exportfolders.h"
#include "core/money.h"
#include "core/session.h"
#include "platform/controls/forms.h"
#include "platform/desktop/desktop.h"
#include "platform/export/spreadsheet.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"
#include "reports/unpaidmonths.h"

namespace veldona {

namespace {

constexpr exports::CellStyle kTitle{.bold = true, .size = 14};
constexpr exports::CellStyle kColumnHead{.bold = true, .underline = true, .size = 12};
constexpr exports::CellStyle kSumText{.bold = true, .size = 12, .rgb = 0x0000C0}; // dark blue
constexpr exports::CellStyle kSum{.bold = true, .size = 12};
constexpr int kFirstRow = 5;
constexpr int kSaleWithEmptyBox = 369; // shows an empty box; the shop knows why

struct Sale {
    std::int32_t ISLEMNO;
    StoredAmount TOPBORC;
};

struct Customer {
    std::string MUSTNO, AD, SOYAD;
};

std::vector<Sale> readSales(Session& session) {
    dao::Database db = session.dbEngine.openDatabase(session.gVeritabaniYolu, session.connectText());
    dao::Recordset rs = db.openRecordset("SELECT  ISLEMNO,TOPBORC From ISLEMNOTABLO  ");
    std::vector<Sale> sales;
    std::map<std::int32_t, StoredAmount>
        firstDebt; // a number that stands twice has the debt of its first row
    for (; !rs.eof(); rs.moveNext()) {
        const Value wholeDebt = rs.value("TOPBORC");
        const std::int32_t no = toLong(rs.value("ISLEMNO"));
        const auto debt = firstDebt.try_emplace(no, storedIn(wholeDebt).value_or(StoredAmount{})).first;
        sales.push_back({no, debt->second});
    }
    return sales;
}

class SpreadsheetList {
public:
    explicit SpreadsheetList(ReportRange& range)
        : range_(range), session_(range.session), title_(range.form.caption()),
          file_(exportFile(session_, "MSExcel",
                           "Odemeler " + format(session_.desktop.clock.now(), "yyyy-mm-dd hh.mm.ss"),
                           ".xlsx")),
          sheet_(file_) {}

    // The file's path, or nothing where the operator left.
    std::optional<std::string> writeAll();

private:
    void heads();
    void sale(const Sale& sale, const SaleMovements& installments, const SaleMovements& paid);
    [[nodiscard]] std::optional<Customer> findCustomer(std::int32_t islemNo);
    void writeRow(const Customer& customer, std::int32_t islemNo, const OpenMonth& ay);
    void writeSum();
    // Shows how far it is and lets events run; false where the screen is gone.
    [[nodiscard]] bool goOn(double done, double total);

    ReportRange& range_;
    Session& session_;
    std::string title_; // the screen's caption
    std::string file_;
    exports::Spreadsheet sheet_;
    DateTime limit_;
    float ToplamKalan = 0;
    std::int16_t SatirNo = kFirstRow;
};

bool SpreadsheetList::goOn(double done, double total) {
    range_.form.setCaption(title_ + "  % " + format(100 * done / std::max(total, 1.0), "0"));
    session_.desktop.events.doEvents();
    return !range_.form.isUnloaded();
}

void SpreadsheetList::heads() {
    sheet_.write("C1", "GÜNÜ GEÇEN ÖDEMELER", kTitle);
    const char* const columns[] = {"Müşteri No", "Ad", "Soyad", "İşlem No", "Ödeme Trh", "Kalan"};
    const double widths[] = {12, 14, 14, 10, 12, 21};
    for (int i = 0; i < 6; ++i) {
        sheet_.write(3, i, columns[i], kColumnHead);
        sheet_.setWidth(static_cast<char>('A' + i), widths[i]);
    }
}

std::optional<Customer> SpreadsheetList::findCustomer(std::int32_t islemNo) {
    RecordsetPtr rs;
    KayitSetiAc(session_, rs,
                "SELECT TOP 1 MUSTKAYIT.AD,MUSTKAYIT.SOYAD,  URUNSAT.MUSTNO     From URUNSAT, MUSTKAYIT "
                "Where URUNSAT.MUSTNO = MUSTKAYIT.HSTNO And urunsat.ISLEMNO = " +
                    std::to_string(islemNo) + " And  URUNSAT.ODTRH <=  " + dateLiteral(limit_) +
                    " ORDER BY URUNSAT.ID",
                adodb::CursorLocation::Client);
    if (rs->eof()) return std::nullopt;
    return Customer{joinText(rs->value("MUSTNO")), joinText(rs->value("AD")), joinText(rs->value("SOYAD"))};
}

void SpreadsheetList::writeRow(const Customer& customer, std::int32_t islemNo, const OpenMonth& ay) {
    const int satir = SatirNo - 1;
    sheet_.write(satir, 0, customer.MUSTNO);
    sheet_.write(satir, 1, customer.AD);
    sheet_.write(satir, 2, customer.SOYAD);
    sheet_.write(satir, 3, islemNo);
    sheet_.write(satir, 4, ay.ODTRH);
    sheet_.write(satir, 5, ay.kalan.column());
    ToplamKalan = static_cast<float>(static_cast<double>(ToplamKalan) + ay.kalan.column());
    SatirNo = toInteger(SatirNo + 1);
}

void SpreadsheetList::sale(const Sale& sale, const SaleMovements& installments, const SaleMovements& paid) {
    const auto payments = paid.ofSale(sale.ISLEMNO);
    if (paidInFull(sale.TOPBORC, payments)) return;
    const std::vector<OpenMonth> months = openMonths(installments.ofSale(sale.ISLEMNO), payments);
    if (months.empty()) return;
    const auto customer = findCustomer(sale.ISLEMNO);
    for (const OpenMonth& ay : months)
        if (customer) writeRow(*customer, sale.ISLEMNO, ay);
}

void SpreadsheetList::writeSum() {
    const std::string satir = std::to_string(SatirNo + 1);
    sheet_.write("E" + satir, "TOPLAM =", kSumText);
    sheet_.write("F" + satir, format(static_cast<double>(ToplamKalan), "###,###,###"), kSum);
}

std::optional<std::string> SpreadsheetList::writeAll() {
    constexpr int kReadingShare = 40,
                  kHalfOfIt = kReadingShare / 2; // of the hundred steps that the caption counts
    const std::vector<Sale> sales = readSales(session_);
    limit_ = toDate(range_.DTPicker2.value());
    heads();
    std::vector<std::int32_t> numbers;
    numbers.reserve(sales.size());
    for (const Sale& each : sales)
        numbers.push_back(each.ISLEMNO);
    const SaleMovements installments(session_, "URUNSAT", numbers, [&] { return goOn(kHalfOfIt, 100); });
    if (!installments.isComplete()) return std::nullopt;
    const SaleMovements paid(session_, "TAKSITODENEN", numbers, [&] { return goOn(kReadingShare, 100); });
    if (!paid.isComplete()) return std::nullopt;
    for (std::size_t i = 0; i < sales.size(); ++i) {
        const auto done = static_cast<double>(i) / static_cast<double>(sales.size());
        if (i % 200 == 0 && !goOn(kReadingShare + done * (100 - kReadingShare), 100)) return std::nullopt;
        if (sales[i].ISLEMNO == kSaleWithEmptyBox) session_.desktop.dialogs.tell("");
        sale(sales[i], installments, paid);
    }
    writeSum();
    sheet_.close();
    return file_;
}

// While the list is being made its button takes no second click, and the screen is put back in any case.
class WritingGuard {
public:
    explicit WritingGuard(ReportRange& range)
        : range_(range), hold_(range.session.forms), title_(range.form.caption()) {
        range_.writingSpreadsheet = true;
        range_.form.setPointer(MousePointer::Wait);
    }
    ~WritingGuard() {
        range_.writingSpreadsheet = false;
        range_.form.setPointer(MousePointer::Default);
        range_.form.setCaption(title_);
    }
    WritingGuard(const WritingGuard&) = delete;
    WritingGuard& operator=(const WritingGuard&) = delete;

private:
    ReportRange& range_;
    Forms::Hold hold_;
    std::string title_;
};

} // namespace

void cmdExcel_Click(ReportRange& range) {
    if (range.writingSpreadsheet) return;
    range.Text1.setText(range.DTPicker1.text());
    range.Text2.setText(range.DTPicker2.text());
    const WritingGuard writing(range);
    const auto file = SpreadsheetList(range).writeAll();
    if (file && !range.session.desktop.opener.open(*file))
        range.session.desktop.dialogs.tell("Liste yazıldı: " + *file, Icon::Information);
}

} // namespace veldona
