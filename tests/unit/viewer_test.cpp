// How reports come on show: the viewer's paging, zoom and search, the templates of the shop.
#include <filesystem>
#include <fstream>
#include <sstream>

#include <gtest/gtest.h>

#include "core/reporting.h"
#include "core/session.h"
#include "platform/controls/userinput.h"
#include "platform/desktop/desktop.h"
#include "platform/report/desk.h"
#include "platform/report/page.h"
#include "platform/report/pagetext.h"
#include "platform/report/reporterror.h"
#include "reports/viewer.h"
#include "reports/viewerzoom.h"
#include "tests/support/raised.h"
#include "tests/support/shop.h"

namespace veldona::test {

namespace {

using Lines = std::vector<std::string>;
constexpr const char* kCustomerList = "\\Rapor\\CariListesi2.rpt";

// Notes what came to it.
class NotingDesk : public report::ReportDesk {
public:
    void preview(const report::Document&) override { events.emplace_back("preview"); }
    void opened(const report::Document& document) override {
        events.push_back("opened " + document.title);
        text = report::documentText(document);
    }
    bool print(const report::Document& document) override {
        events.push_back("print " + document.title);
        return true;
    }
    void writeFile(const report::Document&, const std::string&) override {}

    Lines events;
    std::string text;
};

// Twelve pages with a hit wherever it is looked for; busy for as many questions as `busy` says.
class TrialPages : public PageSource {
public:
    struct Log {
        int busy = 0;
        bool isFinal = true;
        Lines searches;
        std::optional<PageHit> answer;
    };
    explicit TrialPages(Log& log) : log_(log) {}
    [[nodiscard]] int pageCount() const override { return 12; }
    [[nodiscard]] bool isBusy() const override { return log_.busy > 0 && log_.busy-- > 0; }
    [[nodiscard]] bool isCountFinal() const override { return log_.isFinal; }
    [[nodiscard]] std::optional<PageHit> find(std::string_view text, int page,
                                              std::optional<PageHit> after) const override {
        log_.searches.push_back(std::string(text) + " from " + std::to_string(page) +
                                (after ? " behind " + std::to_string(after->item) : ""));
        return log_.answer;
    }
    [[nodiscard]] const report::Document& document() const override { return document_; }

private:
    Log& log_;
    report::Document document_;
};

class Viewer : public ::testing::Test {
protected:
    Viewer() {
        session.reportDesk = &desk;
        forms.onUncaught = [this](const RuntimeError& error) { uncaught.push_back(error.number()); };
        forms.add("frmCrNesne", [this](Forms& f) { return makeFrmCrNesne(f, session); });
        installLayouts(session.desktop.paths);
    }

    // The viewer with trial pages, in front.
    FrmCrNesne& openTrial() {
        auto& f = dynamic_cast<FrmCrNesne&>(forms.load("frmCrNesne"));
        f.CRViewer1.setSource(std::make_unique<TrialPages>(log));
        f.CRViewer1.viewReport();
        forms.show("frmCrNesne", Kip::Modal);
        return f;
    }
    [[nodiscard]] std::filesystem::path templateFile(const char* name) const {
        return shop.desktop.paths.toNative(std::string(kInstallFolder) + "\\Rapor\\" + name);
    }

    Shop shop;
    Session& session = shop.session;
    Forms& forms = shop.forms;
    NotingDesk desk;
    TrialPages::Log log;
    std::vector<std::int32_t> uncaught;
};

TEST_F(Viewer, PagingWaitsForAViewThatIsBusy) {
    FrmCrNesne& f = openTrial();
    for (const auto operation :
         {RaporSonrakiSayfa, RaporSonSayfa, RaporOncekiSayfa, RaporIlkSayfa, refreshReport}) {
        log.busy = 3;
        operation(f);
        EXPECT_EQ(log.busy, 0);
    }
    EXPECT_EQ(f.lblBookmark.caption(), "1 / 12");
    log.isFinal = false;
    RaporSonrakiSayfa(f);
    EXPECT_EQ(f.lblBookmark.caption(), "2 / 12+");
}

TEST_F(Viewer, ASearchGoesOnBehindItsHitAndElseFromThePageOnShow) {
    FrmCrNesne& f = openTrial();
    RaporSonrakiSayfa(f);
    log.answer = PageHit{5, 7};
    searchReport(f, "kefil");
    EXPECT_EQ(f.lblBookmark.caption(), "5 / 12");
    EXPECT_EQ(f.CRViewer1.hit(), (PageHit{5, 7}));
    searchReport(f, "kefil");
    RaporIlkSayfa(f);
    log.answer.reset();
    searchReport(f, "kefil");
    EXPECT_EQ(f.CRViewer1.hit(), std::nullopt);
    EXPECT_EQ(f.CRViewer1.missed(), "kefil");
    EXPECT_EQ(f.lblBookmark.caption(), "1 / 12");
    // A box that is cancelled looks for the empty text.
    searchReport(f);
    EXPECT_EQ(f.CRViewer1.missed(), "");
    EXPECT_EQ(log.searches, (Lines{"kefil from 2", "kefil from 5 behind 7", "kefil from 1", " from 1"}));
    EXPECT_EQ(shop.said(), (Lines{"Aranacak metni giriniz"}));
}

TEST_F(Viewer, TheReportLastsAsLongAsItsViewer) {
    shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD) VALUES ('7','Ayşe','Yılmaz')");
    shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD) VALUES ('8','Zeki','Kaya')");
    showTemplateReport(session, kCustomerList, {"SELECT * FROM MUSTKAYIT WHERE HSTNO='8'"});
    auto& f = dynamic_cast<FrmCrNesne&>(*forms.active());
    EXPECT_NE(desk.text.find("1 8 Zeki Kaya"), std::string::npos) << desk.text;
    EXPECT_EQ(desk.text.find("Ayşe"), std::string::npos) << desk.text;
    user::clickTool(f.BarIslemler, "cmdYazdir");
    user::clickTool(f.BarIslemler, "cmdMail");
    EXPECT_EQ(desk.events, (Lines{"opened Müşteri Listesi", "print Müşteri Listesi"}));
    user::pressKey(f, {.key = Key::Escape});
    EXPECT_EQ(forms.loaded("frmCrNesne"), nullptr);
    EXPECT_FALSE(session.rapor);
    EXPECT_TRUE(uncaught.empty());
}

TEST_F(Viewer, WithoutAReportItDoesNotStay) {
    forms.show("frmCrNesne", Kip::Modal);
    EXPECT_EQ(forms.loaded("frmCrNesne"), nullptr);
}

TEST_F(Viewer, ATemplateThatIsMissingOrBrokenIsNamedAndNothingOpens) {
    const std::filesystem::path file = templateFile("CariListesi2.rpt");
    const auto expectRefused = [&](std::int32_t number, std::string words) {
        words += file.string();
        const auto error = raised<RuntimeError>(
            [this] { showTemplateReport(session, kCustomerList, {"SELECT * FROM MUSTKAYIT"}); });
        ASSERT_TRUE(error) << words;
        EXPECT_EQ(error->number(), number) << error->description();
        EXPECT_TRUE(error->description().starts_with(words)) << error->description();
    };
    std::ofstream(file) << "<report title=\"x\">\n<tabel/></report>";
    expectRefused(report::kBrokenLayout, "Rapor düzeni hatalı: ");
    // The shop took out the query that the list is put in for.
    std::ofstream(file) << "<report title=\"x\"></report>";
    expectRefused(report::kBrokenLayout, "Rapor düzeni hatalı: ");
    std::filesystem::remove(file);
    expectRefused(53, "Rapor dosyası bulunamadı: ");
    EXPECT_EQ(forms.loaded("frmCrNesne"), nullptr);
    EXPECT_FALSE(session.rapor);
    EXPECT_TRUE(desk.events.empty());
}

// What a shop puts into a template reads the books and nothing else.
TEST_F(Viewer, ATemplateReachesNothingButTheBooks) {
    const std::string outside = shop.desktop.paths.toNative("C:\\disari.mdb");
    std::ofstream(shop.desktop.paths.toNative("C:\\gizli.txt")) << "gizli yazı";
    shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD) VALUES ('1','A')");
    const auto show = [this](const std::string& head, const std::string& sql, const std::string& body) {
        std::ofstream(templateFile("CariListesi2.rpt"))
            << "<?xml version=\"1.0\"?>" << head << "<report title=\"x\"><query name=\"liste\" sql=\"" << sql
            << "\"/><table query=\"liste\"><detail height=\"5\">" << body << "</detail></table></report>";
        return numberRaised([this] { showTemplateReport(session, kCustomerList, {}); });
    };
    const std::string field = "<label x=\"0\" y=\"0\" width=\"100\" text=\"{HSTNO}\"/>";
    EXPECT_EQ(show("", "SELECT * FROM MUSTKAYIT", field), 0) << "what an honest one is";
    for (const std::string sql :
         {"UPDATE MUSTKAYIT SET AD='x'", "DELETE FROM MUSTKAYIT", "DROP TABLE MUSTKAYIT", "VACUUM",
          "INSERT INTO MUSTKAYIT (HSTNO) VALUES ('2')", "SELECT * INTO YENI FROM MUSTKAYIT",
          "SELECT * FROM MUSTKAYIT; DELETE FROM MUSTKAYIT", "PRAGMA table_info(MUSTKAYIT)",
          "SELECT * FROM sqlite_master", "SELECT * FROM pragma_database_list",
          "SELECT load_extension('x') AS HSTNO FROM MUSTKAYIT",
          "SELECT readfile('/etc/passwd') AS HSTNO FROM MUSTKAYIT",
          "SELECT writefile('x','y') AS HSTNO FROM MUSTKAYIT", "SELECT Shell('id') AS HSTNO FROM MUSTKAYIT"})
        EXPECT_NE(show("", sql, field), 0) << sql;
    for (const std::string& sql :
         {"SELECT * FROM MUSTKAYIT IN '" + outside + "'", "ATTACH DATABASE '" + outside + "' AS d",
          "SELECT * FROM [" + outside + "].MUSTKAYIT", "VACUUM INTO '" + outside + "'"})
        EXPECT_NE(show("", sql, field), 0) << sql;
    EXPECT_FALSE(std::filesystem::exists(outside));
    EXPECT_EQ(shop.rows("SELECT HSTNO, AD FROM MUSTKAYIT"), (Lines{"1|A"}));

    const std::string file = "file://" + shop.desktop.paths.toNative("C:\\gizli.txt");
    for (const std::string& body : {"<picture x=\"0\" y=\"0\" width=\"9\" file=\"" + file + "\"/>",
                                    "<image src=\"" + file + "\"/>", "<include file=\"" + file + "\"/>"})
        EXPECT_NE(show("", "SELECT * FROM MUSTKAYIT", body), 0) << body;
    desk.text.clear();
    static_cast<void>(show("<!DOCTYPE report [<!ENTITY d SYSTEM \"" + file + "\">]>",
                           "SELECT * FROM MUSTKAYIT", "<label x=\"0\" y=\"0\" width=\"100\" text=\"&d;\"/>"));
    EXPECT_EQ(desk.text.find("gizli yazı"), std::string::npos) << desk.text;
}

// The operator's Esc, as soon as the note shows.
class Impatient : public WaitNote {
public:
    void show(const std::string& words) override { shown = words; }
    void hide() override { ++hidden; }
    [[nodiscard]] bool isGivenUp() override { return true; }
    std::string shown;
    int hidden = 0;
};

TEST_F(Viewer, AForgottenJoinIsTooLargeOrGivenUpAndTheShopGoesOn) {
    shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD) VALUES ('1','A')");
    for (int i = 0; i < 6; ++i)
        shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD) SELECT HSTNO, AD FROM MUSTKAYIT");
    const std::string join =
        " FROM MUSTKAYIT, MUSTKAYIT AS B, MUSTKAYIT AS C, MUSTKAYIT AS D, MUSTKAYIT AS E";
    for (const char* order : {"", " ORDER BY B.ID, C.ID, MUSTKAYIT.ID"}) {
        const auto error = raised<RuntimeError>(
            [&] { showTemplateReport(session, kCustomerList, {"SELECT MUSTKAYIT.*" + join + order}); });
        EXPECT_NE(error.value().description().find("belleğe sığmayacak kadar büyük"), std::string::npos);
    }
    Impatient note;
    shop.desktop.waitNote = &note;
    forms.load("frmCrNesne").setPointer(MousePointer::Wait);
    showTemplateReport(session, kCustomerList, {"SELECT COUNT(*) AS HSTNO" + join});
    EXPECT_EQ(note.shown, "Rapor hazırlanıyor…");
    EXPECT_EQ(note.hidden, 1);
    EXPECT_TRUE(desk.events.empty());
    EXPECT_EQ(forms.loaded("frmCrNesne")->pointer(), MousePointer::Default);
    shop.desktop.waitNote = nullptr;
    showTemplateReport(session, kCustomerList, {"SELECT * FROM MUSTKAYIT"});
    EXPECT_EQ(desk.events, (Lines{"opened Müşteri Listesi"})) << "the bounds are gone, and so is the failure";
}

} // namespace

} // namespace veldona::test
