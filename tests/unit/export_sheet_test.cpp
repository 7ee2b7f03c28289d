// The spreadsheet against a computation of its own: statement by statement as an operator's clerk would ask
// the books, read back out of the file that was written.
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>

#include <gtest/gtest.h>
#include <pugixml.hpp>

#include "archivepart.h"
#include "core/session.h"
#include "platform/controls/forms.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/store/faces/adodb.h"
#include "reports/receivablesscreen.h"
#include "reports/spreadsheet.h"
#include "tests/support/shop.h"

namespace veldona::test {

namespace {

using Lines = std::vector<std::string>;

// The rows from the fifth on as "A|B|C|D|E|F": texts as they stand, numbers as the file has them.
Lines sheetRows(const std::string& path) {
    pugi::xml_document sheet, shared;
    EXPECT_TRUE(sheet.load_string(partOf(path, "xl/worksheets/sheet1.xml").c_str(),
                                  pugi::parse_default | pugi::parse_ws_pcdata));
    EXPECT_TRUE(shared.load_string(partOf(path, "xl/sharedStrings.xml").c_str(),
                                   pugi::parse_default | pugi::parse_ws_pcdata));
    Lines texts, rows;
    for (const pugi::xml_node item : shared.child("sst").children("si"))
        texts.emplace_back(item.child("t").text().get());
    for (const pugi::xml_node row : sheet.child("worksheet").child("sheetData").children("row")) {
        if (row.attribute("r").as_int() < 5) continue;
        std::string line;
        for (const pugi::xml_node cell : row.children("c")) {
            const pugi::xml_text value = cell.child("v").text();
            const bool text = std::string(cell.attribute("t").value()) == "s";
            line += line.empty() ? "" : "|";
            if (value) line += text ? texts[value.as_uint()] : toText(value.as_double());
        }
        rows.push_back(std::to_string(row.attribute("r").as_int()) + ": " + line);
    }
    return rows;
}

class SheetShop : public Shop {
public:
    SheetShop() {
        forms.add("rprodemesigecen", [this](Forms& f) { return makeRprOdemesiGecen(f, session); });
    }
    ReportScreen& screen() {
        if (!forms.loaded("rprodemesigecen")) forms.show("rprodemesigecen", Kip::Modeless);
        return dynamic_cast<ReportScreen&>(*forms.loaded("rprodemesigecen"));
    }
    // The rows of the sheet that the button writes for a limit.
    Lines press(DateTime limit) {
        screen().range.DTPicker2.setValue(limit);
        cmdExcel_Click(screen().range);
        return opener.opened.empty() ? Lines{} : sheetRows(opener.opened.back());
    }
};

// The books asked one question at a time.
class Clerk {
public:
    Clerk(Session& session, DateTime limit) : session_(session), limit_(limit) {}

    Lines list() {
        for (const Value& no : column("SELECT ISLEMNO FROM ISLEMNOTABLO"))
            sale(toText(no));
        lines_.push_back(std::to_string(row_ + 1) + ": TOPLAM =|" +
                         format(static_cast<double>(total_), "###,###,###"));
        return lines_;
    }

private:
    std::vector<Value> column(const std::string& sql) {
        adodb::Recordset rs;
        rs.open(sql, *session_.gBaglanti);
        std::vector<Value> values;
        for (; !rs.eof(); rs.moveNext())
            values.push_back(rs.value(0));
        return values;
    }
    double number(const std::string& sql) {
        const auto values = column(sql);
        return values.empty() || values[0].isNull() ? 0 : toDouble(values[0]);
    }
    // What stands in a statement for a date that went through the rule of the two orders.
    static std::string straightened(DateTime date) {
        const std::string text = toText(date);
        return val(text.substr(0, 2)) < 13 ? toText(toDate(format(date, "mm,dd,yyyy"))) : text;
    }
    double sum(const std::string& table, const std::string& sale, const std::string& condition) {
        return number("SELECT SUM(ODMIKTAR) FROM " + table + " WHERE ISLEMNO=" + sale + condition);
    }
    void sale(const std::string& n);
    void month(const std::string& n, DateTime date, const std::array<std::string, 3>& customer);

    Session& session_;
    DateTime limit_;
    Lines lines_;
    int row_ = 5;
    float total_ = 0;
};

void Clerk::sale(const std::string& n) {
    const double debt = number("SELECT TOPBORC FROM ISLEMNOTABLO WHERE ISLEMNO=" + n);
    if (roundHalfEven(debt) ==
        roundHalfEven(number("SELECT SUM(ODMIKTAR) FROM TAKSITODENEN WHERE ISLEMNO= " + n)))
        return;
    std::optional<DateTime> first, last;
    for (const char* table : {"TAKSITODENEN", "URUNSAT"}) {
        const Value least = column("SELECT MIN(ODTRH) FROM " + std::string(table) + " WHERE ISLEMNO=" + n)[0];
        const Value most = column("SELECT MAX(ODTRH) FROM " + std::string(table) + " WHERE ISLEMNO=" + n)[0];
        if (least.isNull()) continue;
        if (!first || toDate(least) < *first) first = toDate(least);
        if (!last || toDate(most) > *last) last = toDate(most);
    }
    if (!first) return;
    adodb::Recordset rs;
    rs.open("SELECT  MUSTKAYIT.AD,MUSTKAYIT.SOYAD,  URUNSAT.MUSTNO, URUNSAT.ISLEMNO, URUNSAT.ODTRH, "
            "URUNSAT.ODMIKTAR     "
            "From URUNSAT, MUSTKAYIT Where URUNSAT.MUSTNO = MUSTKAYIT.HSTNO And urunsat.ISLEMNO = " +
                n + " And  URUNSAT.ODTRH <=   # " + straightened(limit_) + " # ",
            *session_.gBaglanti);
    if (rs.eof()) return;
    const std::array<std::string, 3> customer = {joinText(rs.value("MUSTNO")), joinText(rs.value("AD")),
                                                 joinText(rs.value("SOYAD"))};
    const int months = monthsBetween(*first, *last);
    for (int i = 0; i <= months; ++i, first = addMonths(*first, 1)) {
        const std::string until = " AND ODTRH <=   # " + format(*first, "mm,dd,yyyy hh:nn:ss") + " # ";
        const double due = sum("URUNSAT", n, until), paid = sum("TAKSITODENEN", n, until);
        if (due == paid) return;
        if (paid < due) month(n, *first, customer);
    }
}

void Clerk::month(const std::string& n, DateTime date, const std::array<std::string, 3>& customer) {
    const std::string day = format(date, "dd/mm/yyyy");
    const DateTime start = toDate("01" + day.substr(2));
    const std::string window = " AND ODTRH >=  # " + straightened(start) + " #  And ODTRH <  # " +
                               straightened(addMonths(start, 1)) + " # ";
    const double due = sum("URUNSAT", n, window), paid = sum("TAKSITODENEN", n, window);
    if (due == paid) return;
    std::vector<Value> dates = column("SELECT ODTRH FROM URUNSAT WHERE ISLEMNO=" + n + window);
    if (dates.empty()) dates = column("SELECT ODTRH FROM TAKSITODENEN WHERE ISLEMNO=" + n + window);
    const double days = static_cast<double>(toDate(dates[0]).seconds()) / 86400;
    lines_.push_back(std::to_string(row_++) + ": " + customer[0] + "|" + customer[1] + "|" + customer[2] +
                     "|" + n + "|" + toText(days) + "|" + toText(due - paid));
    total_ = static_cast<float>(static_cast<double>(total_) + (due - paid));
}

// Sales with gaps, overpayments, early and late payments, some with a time of day, some of no customer.
void fillAtRandom(SheetShop& s, int sales, std::mt19937& random) {
    const auto upTo = [&](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
    const auto row = [&](const char* table, int sale, int customer, DateTime date, int amount) {
        s.run("INSERT INTO " + std::string(table) + " (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES ('" +
              std::to_string(customer) + "'," + std::to_string(sale) + ",'" + toText(date) + "'," +
              std::to_string(amount) + ")");
    };
    for (int c = 0; c < 20; ++c)
        s.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD) VALUES ('" + std::to_string(c) + "','Ayşe','Işık')");
    s.session.gBaglanti->beginTrans();
    for (int n = 1; n <= sales; ++n) {
        const int number = n % 7 ? n : sales * 2 - n; // not all in the order of their numbers
        const int customer = upTo(22), amount = 1'000'000 * (1 + upTo(4)), rows = upTo(9);
        DateTime due = DateTime::of(2025 + upTo(2), 1 + upTo(12), 1 + upTo(28));
        for (int i = 0; i < rows; ++i, due = addMonths(due, 1 + upTo(8) / 7)) {
            row("URUNSAT", number, customer, due, amount);
            DateTime paid = due.plusDays(upTo(70) - 35);
            if (upTo(2)) paid = paid.plusSeconds(upTo(86400));
            if (upTo(3))
                row("TAKSITODENEN", number, customer, upTo(2) ? due : paid, upTo(4) ? amount : amount / 2);
        }
        s.run("INSERT INTO ISLEMNOTABLO (MUSTNO,ISLEMNO,TOPBORC) VALUES ('" + std::to_string(customer) +
              "'," + std::to_string(number) + "," + std::to_string(rows * amount) + ")");
    }
    s.session.gBaglanti->commitTrans();
}

TEST(Spreadsheet, AgreesWithTheBooksAskedOneQuestionAtATime) {
    std::mt19937 random(20261122);
    SheetShop s;
    fillAtRandom(s, 300, random);
    std::size_t rows = 0;
    for (int round = 0; round < 12; ++round) {
        const DateTime limit = DateTime::of(2025, 1, 1).plusDays(static_cast<int>(random() % 900));
        const Lines expected = Clerk(s.session, limit).list();
        ASSERT_EQ(s.press(limit), expected) << toText(limit);
        rows += expected.size();
    }
    EXPECT_GT(rows, 1000U);
    EXPECT_EQ(s.said(), Lines(12, "")); // a number that shows an empty box is among them
}

TEST(Spreadsheet, HasItsHeadingsWidthsAndLooks) {
    SheetShop s;
    s.press(DateTime::of(2026, 11, 22));
    ASSERT_EQ(s.opener.opened.size(), 1U);
    const std::string path = s.opener.opened[0];
    EXPECT_NE(path.find("/aktar/MSExcel/Odemeler 2026-11-22 10.30.00.xlsx"), std::string::npos) << path;
    const std::string strings = partOf(path, "xl/sharedStrings.xml");
    for (const char* text :
         {"GÜNÜ GEÇEN ÖDEMELER", "Müşteri No", "Ad", "Soyad", "İşlem No", "Ödeme Trh", "Kalan", "TOPLAM ="})
        EXPECT_NE(strings.find("<t>" + std::string(text) + "</t>"), std::string::npos) << text;
    const std::string sheet = partOf(path, "xl/worksheets/sheet1.xml");
    for (const char* text : {"<c r=\"C1\"", "<c r=\"A4\"", "<c r=\"F4\"", "<c r=\"E6\"", "<c r=\"F6\""})
        EXPECT_NE(sheet.find(text), std::string::npos) << text;
    pugi::xml_document styles;
    ASSERT_TRUE(styles.load_string(partOf(path, "xl/styles.xml").c_str()));
    Lines fonts;
    for (const pugi::xml_node font : styles.child("styleSheet").child("fonts").children("font"))
        fonts.push_back(std::string(font.child("b") ? "b" : "") + (font.child("u") ? "u" : "") +
                        font.child("sz").attribute("val").value() + " " +
                        font.child("color").attribute("rgb").value());
    EXPECT_EQ(fonts, (Lines{"11 ", "b14 ", "bu12 ", "b12 FF0000C0", "b12 "}));
}

TEST(Spreadsheet, ABlankBoxForOneSaleAndAnErrorForASpanBeyondAByte) {
    SheetShop s;
    s.forms.onUncaught = [](const RuntimeError&) {};
    s.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD) VALUES ('7','Ayşe','Işık')");
    s.run("INSERT INTO ISLEMNOTABLO (MUSTNO,ISLEMNO,TOPBORC) VALUES ('7',369,100000000)");
    s.run("INSERT INTO URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES ('7',369,'15/01/2005',100000000)");
    s.run("INSERT INTO TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES ('7',369,'01/04/2026',1)");
    EXPECT_EQ(s.press(DateTime::of(2026, 11, 22)),
              (Lines{"5: 7|Ayşe|Işık|369|38367|100000000", "6: 7|Ayşe|Işık|369|46113|-1",
                     "8: TOPLAM =|100.000.000"}));
    EXPECT_EQ(s.said(), (Lines{""}));
    s.run("UPDATE TAKSITODENEN SET ODTRH='01/05/2026'");
    EXPECT_THROW(s.press(DateTime::of(2026, 11, 22)), RuntimeError);
    EXPECT_EQ(s.opener.opened.size(), 1U);
    EXPECT_EQ(s.screen().caption(), "Günü Geçen Ödemeler Raporu");
    // Paid in full, it is passed over before its months are counted; its box comes all the same.
    s.run("UPDATE TAKSITODENEN SET ODMIKTAR=100000000");
    EXPECT_EQ(s.press(DateTime::of(2026, 11, 22)), (Lines{"6: TOPLAM =|"}));
    EXPECT_EQ(s.said(), (Lines{"", ""})); // with the one of the try that failed
}

TEST(Spreadsheet, LeavingTheScreenGivesItUpAndASecondClickIsPassedOver) {
    std::mt19937 random(7);
    SheetShop s;
    fillAtRandom(s, 20, random);
    s.pump.next = [&] { cmdExcel_Click(s.screen().range); };
    s.press(DateTime::of(2027, 1, 1));
    EXPECT_EQ(s.opener.opened.size(), 1U);
    const std::filesystem::path folder = std::filesystem::path(s.opener.opened[0]).parent_path();
    s.pump.next = [&] { s.forms.unload(s.screen()); };
    cmdExcel_Click(s.screen().range);
    EXPECT_EQ(s.opener.opened.size(), 1U);
    EXPECT_EQ(s.forms.loaded("rprodemesigecen"), nullptr);
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder), {}), 1);
}

} // namespace

} // namespace veldona::test
