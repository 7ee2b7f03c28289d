// Laying out: what stands on which page, and that nothing is lost on the way.
#include <gtest/gtest.h>

#include "platform/report/compose.h"
#include "platform/report/layoutreader.h"
#include "platform/report/pagetext.h"
#include "platform/report/reporterror.h"
#include "platform/report/textfit.h"
#include "platform/runtime/text.h"
#include "tests/support/raised.h"

namespace veldona::report {
namespace {

const DateTime kNow = DateTime::of(2026, 11, 22, 10, 30, 5);

DataSet rows(std::size_t count) {
    DataSet data{"", {{"NO", 3}, {"AD", 202}, {"TUTAR", 5}}, {}};
    for (std::size_t i = 1; i <= count; ++i)
        for (Value cell : {Value(static_cast<std::int64_t>(i)), Value("Şükrü Çağlayangil"), Value(0.1)})
            data.cells.push_back(std::move(cell));
    return data;
}

constexpr const char* kList = R"(<report title="Liste">
  <reportHeader height="10"><label x="0" y="0" width="80" text="Baş %D %T"/></reportHeader>
  <pageHeader height="8"><label x="0" y="0" width="80" text="Sütunlar"/></pageHeader>
  <detail height="5">
    <label x="0" y="0" width="15" text="[%n]"/>
    <field x="20" y="0" width="60" column="AD" wrap="yes"/>
    <field x="90" y="0" width="30" column="TUTAR" format="#.##0,00" align="right"/>
  </detail>
  <pageFooter height="6"><label x="0" y="0" width="80" text="Sayfa %p / %P"/></pageFooter>
  <reportFooter height="8"><sum x="90" y="0" width="30" column="TUTAR" format="#.##0,00"/></reportFooter>
</report>)";

Document compose(const std::string& xml, std::vector<DataSet> data) {
    return report::compose(parseLayout(xml, "deneme.xml"), std::move(data), kNow);
}

std::string inReport(const std::string& body) {
    return "<report>" + body + "</report>";
}

std::size_t countOf(const std::string& text, const std::string& part) {
    std::size_t count = 0;
    for (std::size_t at = text.find(part); at != std::string::npos; at = text.find(part, at + 1))
        ++count;
    return count;
}

const TextRun* findRun(const Page& page, std::string_view text) {
    for (const Item& item : page.items)
        if (const auto* run = std::get_if<TextRun>(&item); run && run->text == text) return run;
    return nullptr;
}

// Every text lies on its page, within the margins, and its letters fit its box.
void expectWithinPage(const Document& document) {
    for (const Page& page : document.pages)
        for (const Item& item : page.items)
            if (const auto* run = std::get_if<TextRun>(&item)) {
                EXPECT_GE(run->y, 12 - 0.01) << run->text;
                EXPECT_LE(run->y + run->height, document.pageHeight - 12 + 0.05) << run->text;
                EXPECT_LE(builtInMetrics().width(run->text, run->size, run->bold), run->width + 0.01)
                    << run->text;
            }
}

TEST(ReportPages, EveryRowOnceBetweenRepeatedHeaderAndNumberedFooter) {
    for (const std::size_t count : {0U, 1U, 45U, 46U, 47U, 48U, 49U, 50U, 51U, 52U, 255U}) {
        const Document document = compose(kList, {rows(count)});
        const std::string text = documentText(document);
        expectWithinPage(document);
        const std::string pages = std::to_string(document.pages.size());
        for (std::size_t page = 0; page < document.pages.size(); ++page) {
            const std::string on = pageText(document.pages[page]);
            EXPECT_EQ(countOf(on, "Sütunlar\n"), 1U) << count;
            EXPECT_NE(on.find("Sayfa " + std::to_string(page + 1) + " / " + pages + "\n"), std::string::npos);
        }
        std::size_t at = 0;
        for (std::size_t row = 1; row <= count; ++row) {
            const std::string line = "[" + std::to_string(row) + "] Şükrü Çağlayangil 0,10\n";
            at = text.find(line, at);
            ASSERT_NE(at, std::string::npos) << line;
        }
        EXPECT_EQ(countOf(text, "Çağlayangil"), count);
        EXPECT_EQ(countOf(text, "Baş 22/11/2026 10:30:05\n"), 1U);
        EXPECT_EQ(document.data.front().rowCount(), count);
    }
}

TEST(ReportPages, TotalIsExactAndStandsAfterTheLastRow) {
    const std::string text = documentText(compose(kList, {rows(12345)}));
    const std::size_t total = text.find("\n1.234,50\n");
    ASSERT_NE(total, std::string::npos);
    EXPECT_GT(total, text.find("[12345]"));
    EXPECT_NE(documentText(compose(kList, {rows(0)})).find("\n0,00\n"), std::string::npos);
}

TEST(ReportPages, WrappedTextLosesNoWordAndFits) {
    const std::string text =
        "Iğdır'ın şirin köylerinden gelen müşterilerimiz, ödemelerini gününde yapar; "
        "İstanbul'dakiler ise çoğunlukla ğüşıöç  iki boşlukla yazılmış adreslerine uğrar.";
    for (double width = 12; width < 200; width += 3.7) {
        const Font font{builtInMetrics(), 9, width > 100};
        std::string joined;
        for (const std::string& line : wrapped(text, font, width)) {
            EXPECT_LE(font.width(line), width + 0.01) << line;
            EXPECT_EQ(line, trim(line));
            joined += line;
        }
        EXPECT_EQ(replaceAll(joined, " ", ""), replaceAll(text, " ", "")) << width;
    }
}

TEST(ReportPages, WrappingBreaksAtBlanksAndLineEnds) {
    const Font font{builtInMetrics(), 10, false};
    const double width = font.width("Şişli Mah.") + 0.1;
    using Lines = std::vector<std::string>;
    EXPECT_EQ(wrapped("Şişli Mah. Çiçek Sk.", font, width), (Lines{"Şişli Mah.", "Çiçek Sk."}));
    EXPECT_EQ(wrapped("bir\r\n\niki", font, width), (Lines{"bir", "", "iki"}));
    EXPECT_EQ(wrapped("", font, width), (Lines{""}));
    EXPECT_EQ(wrapped("ŞŞŞ", font, 0.1), (Lines{"Ş", "Ş", "Ş"}));
    EXPECT_EQ(wrapped("a b   ", font, width), (Lines{"a b"}));
}

TEST(ReportPages, LongTextIsCutWithAnEllipsisBetweenLetters) {
    const Font font{builtInMetrics(), 10, false};
    EXPECT_EQ(clipped("Kısa", font, 50), "Kısa");
    EXPECT_EQ(clipped("iki\nsatır", font, 50), "iki satır");
    const std::string cut = clipped("Çağlayangil Şükrüoğulları", font, 30);
    EXPECT_TRUE(cut.ends_with("…"));
    EXPECT_LE(font.width(cut), 30);
    EXPECT_EQ(validUtf8(cut), cut);
    EXPECT_EQ(clipped("uzun", font, 0.5), "…");
}

TEST(ReportPages, AmountTooWideIsMadeSmallerNeverCut) {
    DataSet data{"", {{"TUTAR", 5}}, {Value(123456789012.5)}};
    const auto shownIn = [&](const std::string& width) {
        return compose(inReport("<detail height='10'><field x='0' y='0' width='" + width +
                                "' size='12' column='TUTAR' format='#.##0,00'/></detail>"),
                       {data});
    };
    const Document document = shownIn("20");
    const TextRun* run = findRun(document.pages[0], "123.456.789.012,50");
    ASSERT_TRUE(run);
    EXPECT_LT(run->size, 12);
    EXPECT_TRUE(findRun(shownIn("2").pages[0], "###"));
    const Document joined = compose(inReport("<detail height='10'><label x='0' y='0' width='25' size='12' "
                                             "text='{TUTAR|#.##0,00} YTL'/></detail>"),
                                    {data});
    EXPECT_TRUE(findRun(joined.pages[0], "123.456.789.012,50 YTL"));
}

TEST(ReportPages, GrownTextPushesDownWhatStandsBelow) {
    DataSet data{"", {{"A", 203}}, {Value("bir\niki\nüç"), Value("tek")}};
    const Document document = compose(inReport("<detail height='10'><box x='0' y='0' width='50' height='10'/>"
                                               "<field x='0' y='0' width='20' column='A' wrap='yes'/>"
                                               "<label x='0' y='5' width='20' text='alt %n'/></detail>"),
                                      {data});
    const Page& page = document.pages.at(0);
    const double line = builtInMetrics().lineHeight(9);
    EXPECT_NEAR(findRun(page, "üç")->y, 12 + 2 * line, 0.01);
    EXPECT_NEAR(findRun(page, "alt 1")->y, 12 + 5 + 2 * line, 0.01);
    EXPECT_NEAR(std::get<Box>(page.items.front()).height, 10 + 2 * line, 0.01);
    EXPECT_NEAR(findRun(page, "tek")->y, 12 + 10 + 2 * line, 0.01);
    EXPECT_NEAR(findRun(page, "alt 2")->y - findRun(page, "tek")->y, 5, 0.01);
}

TEST(ReportPages, TextLongerThanAPageGoesOnOnTheNext) {
    std::string longText;
    for (int i = 1; i <= 200; ++i)
        longText += "satır" + std::to_string(i) + (i < 200 ? "\n" : "");
    const DataSet data{"", {{"A", 203}}, {Value(longText), Value("sonraki")}};
    const std::string parts[] = {
        "<detail height='5'><field x='0' y='0' width='40' column='A' wrap='yes'/></detail>",
        "<band height='5'><field x='0' y='0' width='40' column='A' wrap='yes'/></band>"};
    for (const std::string& part : parts) {
        const Document document = compose(
            inReport("<pageHeader height='9'><label x='0' y='0' width='40' text='baş'/></pageHeader>" + part),
            {data});
        EXPECT_GT(document.pages.size(), 2U);
        expectWithinPage(document);
        std::string text = documentText(document);
        EXPECT_EQ(countOf(text, "satır"), 200U);
        EXPECT_LT(text.find("satır199\n"), text.find("satır200\n"));
        EXPECT_EQ(countOf(text, "baş\n"), document.pages.size());
    }
}

// A group's row has its own rows in each table, a total of them alone, and its head never stands without its
// first row; another one's rows and those without the key stay whole.
TEST(ReportPages, AGroupPrintsEachRowWithItsOwn) {
    const std::string layout = inReport(R"(<data name="shop"/><data name="sale"/><data name="line"/>
      <group query="sale" key="NO">
        <band query="sale" height="8"><label x="0" y="0" width="80" text="Satış {NO} {shop.AD}"/></band>
        <table query="line">
          <header height="5"><label x="0" y="0" width="80" text="Mallar {sale.NO}"/></header>
          <detail height="5"><label x="0" y="0" width="80" text="%n. {AD}"/></detail>
          <footer height="5"><sum x="0" y="0" width="30" column="TUTAR"/></footer></table>
      </group>
      <table query="none" hideEmpty="yes">
        <header height="5"><label x="0" y="0" width="80" text="Hiç"/></header><detail height="5"/>
      </table><data name="none"/>)");
    DataSet sales{"sale", {{"NO", 3}}, {}};
    DataSet lines{"line", {{"NO", 3}, {"AD", 202}, {"TUTAR", 5}}, {}};
    for (std::int64_t sale = 1; sale <= 40; ++sale) {
        sales.cells.emplace_back(sale);
        for (std::int64_t line = 1; line <= sale % 7; ++line)
            for (Value cell : {Value(sale), Value("mal " + std::to_string(sale)), Value(1.0)})
                lines.cells.push_back(std::move(cell));
    }
    const DataSet shop{"shop", {{"AD", 202}}, {Value("Ege")}};
    const DataSet none{"none", {{"NO", 3}}, {}};
    const Document document = compose(layout, {shop, sales, lines, none});
    expectWithinPage(document);
    const std::string text = documentText(document);
    std::size_t at = 0;
    for (int sale = 1; sale <= 40; ++sale) {
        const std::string number = std::to_string(sale);
        at = text.find("Satış " + number + " Ege\nMallar " + number + "\n", at);
        ASSERT_NE(at, std::string::npos) << sale;
        const int count = sale % 7;
        if (count == 0) continue;
        const std::string last = std::to_string(count) + ". mal " + number + "\n";
        EXPECT_EQ(countOf(text, ". mal " + number + "\n"), static_cast<std::size_t>(count));
        const std::size_t total = text.find(last, at) + last.size();
        EXPECT_EQ(text.compare(total, 2, std::to_string(count) + "\n"), 0) << sale;
    }
    EXPECT_EQ(text.find("Hiç"), std::string::npos);
    EXPECT_THROW((void)compose(layout, {shop, lines, none}), ReportError);
}

TEST(ReportPages, TablesSideBySideRunDownThePagesTogether) {
    DataSet left = rows(120), right = rows(70);
    left.name = "sol";
    right.name = "sag";
    const auto table = [](const std::string& x, const std::string& query) {
        return "<table x='" + x + "' query='" + query +
               "'><header height='6'><label x='0' y='0' width='30' text='" + query +
               " baş'/></header><detail height='6'><label x='0' y='0' width='30' text='" + query +
               "%n'/></detail><footer height='6'><sum x='0' y='0' width='30' column='TUTAR' "
               "format='#.##0,00'/>"
               "</footer></table>";
    };
    Layout layout =
        parseLayout(inReport("<query name='sol' sql='SELECT 1'/><query name='sag' sql='SELECT 2'/>"
                             "<sideBySide>" +
                             table("0", "sol") + table("60", "sag") +
                             "</sideBySide><band height='40'><label x='0' y='30' width='30' "
                             "text='imza'/></band>"),
                    "yan.rpt");
    const Document document = report::compose(layout, {right, left}, kNow);
    const std::string text = documentText(document);
    ASSERT_EQ(document.pages.size(), 3U);
    expectWithinPage(document);
    EXPECT_EQ(countOf(text, "sol baş"), 3U);
    EXPECT_EQ(countOf(text, "sag baş"), 2U);
    EXPECT_NE(text.find("sol1 sag1\n"), std::string::npos);
    EXPECT_NE(text.find("sol70 sag70\n"), std::string::npos);
    EXPECT_NE(text.find("sol71 7,00\n"), std::string::npos);
    EXPECT_NE(text.find("sol120\n12,00\nimza\n"), std::string::npos);
    EXPECT_EQ(document.data.front().name, "sol");
}

TEST(ReportPages, BandIsNeverTornApart) {
    std::string body;
    for (int i = 0; i < 6; ++i)
        body += "<band height='60'><label x='0' y='0' width='30' text='üst" + std::to_string(i) +
                "'/><label x='0' y='55' width='30' text='alt" + std::to_string(i) + "'/></band>";
    const Document document = compose(inReport(body), {});
    ASSERT_EQ(document.pages.size(), 2U);
    EXPECT_TRUE(findRun(document.pages[0], "alt3"));
    EXPECT_TRUE(findRun(document.pages[1], "üst4"));
}

TEST(ReportPages, TextsOfTheProgramStandAsTheyAre) {
    Layout layout = parseLayout(inReport("<band name='S' height='10'><label name='l' x='0' y='0' width='90' "
                                         "text='%D {{ %% %x'/></band>"),
                                "a.xml");
    EXPECT_EQ(documentText(report::compose(layout, {}, kNow)), "22/11/2026 { % %x\n");
    EXPECT_TRUE(layout.setText("S", "l", "%p {A} %D %%"));
    EXPECT_FALSE(layout.setText("S", "yok", "a"));
    EXPECT_EQ(documentText(report::compose(layout, {}, kNow)), "%p {A} %D %%\n");
}

TEST(ReportPages, NullIsEmptyAndPlaceholdersTakeMasks) {
    const DataSet data{"", {{"A", 202}, {"T", 135}}, {Value(), Value(DateTime::of(2026, 1, 5, 9, 0))}};
    const Document document =
        compose(inReport("<band height='20'><label x='0' y='0' width='90' "
                         "text='[{A}] {T|dd/mm/yyyy} {t}'/><field x='0' y='9' width='90' "
                         "column='A'/></band>"),
                {data});
    EXPECT_EQ(documentText(document), "[] 05/01/2026 05/01/2026 09:00:00\n");
}

TEST(ReportPages, SearchGoesOnFromTheLastPlaceAndRoundByTheTurkishAlphabet) {
    const Document document = compose(kList, {rows(100)});
    const auto first = findText(document, "ŞÜKRÜ çağ");
    ASSERT_TRUE(first);
    EXPECT_EQ(first->page, 0U);
    EXPECT_EQ(std::get<TextRun>(document.pages[0].items[first->item]).text, "Şükrü Çağlayangil");
    auto at = first;
    std::size_t steps = 0;
    do {
        at = findText(document, "ŞÜKRÜ çağ", at);
        ASSERT_TRUE(at);
        ++steps;
    } while (!(*at == *first));
    EXPECT_EQ(steps, 100U);
    const auto across = findText(document, "[60] şükrü"); // over two cells: where it begins
    ASSERT_TRUE(across);
    EXPECT_EQ(std::get<TextRun>(document.pages[across->page].items[across->item]).text, "[60]");
    EXPECT_FALSE(findText(document, "yok böyle bir şey"));
    EXPECT_FALSE(findText(document, ""));
}

TEST(ReportPages, ATotalAddsItsAddendsUnrounded) {
    const DataSet data{"", {{"TUTAR", 5}}, {1.004999, 1.004999, 1.004999}};
    EXPECT_NE(documentText(compose(inReport("<detail height='6'/><reportFooter height='6'><sum x='0' y='0' "
                                            "width='30' column='TUTAR' format='#.##0,00'/></reportFooter>"),
                                   {data}))
                  .find("3,01"),
              std::string::npos);
}

TEST(ReportPages, DataThatDoesNotFitTheLayoutNamesFileAndLine) {
    const std::pair<const char*, const char*> cases[] = {
        {"<detail height='6'>\n<field x='0' y='0' width='9' column='YOK'/></detail>",
         "Rapor düzeni hatalı: deneme.xml, satır 2: veride \"YOK\" sütunu yok."},
        {"<detail height='6'/><reportFooter height='6'>\n<sum x='0' y='0' width='9' "
         "column='AD'/></reportFooter>",
         "Rapor düzeni hatalı: deneme.xml, satır 2: \"AD\" sütunu toplanamadı: "},
        {"<detail height='6'>\n<label x='0' y='0' width='9' text='{BUYUK|dd/mm/yyyy}'/></detail>",
         "Rapor düzeni hatalı: deneme.xml, satır 2: değer gösterilemedi: "},
    };
    DataSet data = rows(1);
    data.columns.push_back({"BUYUK", 5});
    data.cells.emplace_back(1e300);
    for (const auto& [body, description] : cases) {
        const auto error =
            test::raised<ReportError>([&, &shown = body] { compose(inReport(shown), {data}); });
        ASSERT_TRUE(error) << body;
        EXPECT_EQ(error->number(), kBrokenLayout);
        EXPECT_TRUE(error->description().starts_with(description)) << error->description();
    }
}

std::string refusalOf(const std::string& body, std::size_t count, const GoOn& goOn = {}) {
    const Layout layout = parseLayout(inReport(body), "deneme.xml");
    return test::raised<RuntimeError>(
               [&] { static_cast<void>(report::compose(layout, {rows(count)}, kNow, goOn)); })
        .value()
        .description();
}

TEST(ReportPages, NoLayoutTakesMorePagesOrMemoryThanAReportMay) {
    const std::string endless(20'000, 'x');
    EXPECT_NE(refusalOf("<detail height='250'/>", 10'100).find("10000 sayfadan uzun"), std::string::npos);
    EXPECT_NE(refusalOf("<band height='9'>\n<label x='0' y='0' width='0' wrap='yes' text='" + endless +
                            "'/></band>",
                        0)
                  .find("satır 2: gösterilecek yazı çok uzun"),
              std::string::npos);
    std::string howFar;
    EXPECT_EQ(refusalOf("<detail height='250'/>", 500,
                        [&](const std::string& pages) {
                            howFar = pages;
                            return pages != "40. sayfa";
                        }),
              standardDescription(ErrorNumber::UserInterrupt));
    EXPECT_EQ(howFar, "40. sayfa");
}

} // namespace
} // namespace veldona::report
