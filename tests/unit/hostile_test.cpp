// What nobody should type, in every field of every screen that takes typing, and then the buttons and keys
// that use it. A rule may make anything of it; what may not happen is a crash, a second statement run, a row
// of another account touched, a message in words that are not ours, or a screen that does not go on.
#include <algorithm>
#include <chrono>
#include <deque>
#include <map>
#include <random>
#include <set>

#include <gtest/gtest.h>

#include "apps/operator/verbs.h"
#include "apps/screens.h"
#include "hostiletexts.h"
#include "journal/chain.h"
#include "journal/thinning.h"
#include "platform/controls/userinput.h"
#include "platform/runtime/text.h"
#include "schema/tables.h"
#include "tests/faults/day.h"

namespace veldona::faults {
namespace {

// How an operator comes to each screen, and the tables that may be written from there.
struct Way {
    const char* screen;
    const char* lines;
    std::set<std::string> writes;
    bool hasFields = true; // to type into
};

const std::set<std::string> kSales = {"ISLEMNOTABLO", "URUNAL", "URUNSAT", "TAKSITODENEN", "URUNTANITIM"};

const std::vector<Way>& ways() {
    static const std::vector<Way> all = {
        {"frmMainVeldona", "", {"MUSTKAYIT", "FIRMABILGISI"}},
        {"frmCariEkle", "click cmdMusteriKaydi\n", {"MUSTKAYIT"}},
        {"frmCarihesapSec", "key F10\nclick cmdBul\n", {"MUSTKAYIT"}},
        {"frmAntetBilgisi", "click cmdAntetBilgisi\n", {"FIRMABILGISI"}},
        {"frmArama", "key Ctrl+F\n", {}},
        {"frmSatis", "click cmdSatis\n", {}},
        {"frmSonIslemler", "key Ctrl+Z\n", {}},
        {"frmBugun", "key F8\n", {}},
        {"frmCrNesne", "key F10\nclick cmdBul\nclick cmdYazici\n", {}},
        {"rprodemesigecen", "click cmdGunuGecenOdemeler\n", {}},
        {"rprbeklenentahsilat", "click cmdBeklenenTaksitler\n", {}},
        {"rptGelirGider", "click cmdTahsilatListesi\n", {}},
        {"frmParola", "menu mnuParola\n", {}, false},
        {"frmGunluk", "menu mnuGunluk\n", {}, false},
        {"frmYedek", "menu mnuYedekAl\n", {}, false},
        {"frmGrafik", "menu mnuGrafik\n", {}, false},
        {"taksitodduzelt", "click L4 0\nclick Command3\n", {}},
        {"taksitmustduzelt", "dblclick L1 0\n", {}},
    };
    return all;
}

// Beside the customer whose account is played with, one whose rows nobody may touch.
constexpr const char* kShop = R"op(
insert "MUSTKAYIT (HSTNO,AD,SOYAD)" "'9001','Uzak','Duran'"
insert "ISLEMNOTABLO (MUSTNO,ISLEMNO,TOPBORC,TRH)" "'9001',3,50000000,'20/10/2026'"
insert "URUNAL (MUSTNO,ISLEMNO,URKOD,ADET,FIYAT)" "'9001',3,'1',1,50000000"
insert "URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR)" "'9001',3,'20/12/2026',50000000"
insert "TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR)" "'9001',3,'10/11/2026',10000000"
sql "UPDATE ISLEMNOTABLO SET TRH='20/10/2026'"
)op";

// The operator, who in a screen that opens over the first one does there what he does everywhere.
class Operator : public FormHost {
public:
    Operator(const std::filesystem::path& drive, const std::string& text, unsigned turn)
        : stage(console::Setting{drive.string(), registerScreens, nullptr,
                                 [](const report::Document&, const std::string&) {}},
                *this),
          text_(text), order_(turn + 1) {
        play("clock \"22/11/2026 10:30:00\"\nstart\ntype Text1 \"7\"\ndblclick L3 0\n");
    }

    void play(const std::string& lines) {
        follow(lines);
        playOn();
    }

    // As the screen is opened, and once more with all its panels open, those too that its own work shows.
    void useAll(Form& form) {
        if (depth_ >= 2) return; // from a screen over a screen nothing more is opened
        ++depth_;
        const Forms::Hold hold(form.forms());
        for (const bool allOpen : {false, true}) {
            if (!canGoOn(form)) break;
            for (Control* control : form.controls())
                if (allOpen && dynamic_cast<Frame*>(control)) control->setVisible(true);
            fill(form);
            pressAll(form);
        }
        --depth_;
    }

    void runModal(Form& form) override {
        if (goal_.empty())
            useAll(form);
        else
            arrive();
        if (!form.isUnloaded() && !form.forms().ended()) form.forms().unload(form);
    }

    // A screen that opens over the others keeps those who opened it waiting: the rest of the way and what is
    // to be done there is done within.
    void comeTo(const Way& way) {
        goal_ = way.screen;
        follow(way.lines);
        arrive();
        EXPECT_TRUE(goal_.empty()) << "the way does not lead there";
        goal_.clear();
    }

    // Back on the first screen, newly started where the program was closed.
    void comeBack() {
        if (stage.process().hasEnded()) {
            stage.renewProcess();
            play("start\n");
        }
        Forms& forms = stage.process().forms();
        for (std::size_t left = forms.loadedForms().size(); left > 1 && forms.active() != nullptr; --left) {
            if (forms.active()->name() == "frmMainVeldona") break;
            forms.dispatch([&] { forms.unload(*forms.active()); });
        }
    }

    console::Stage stage;
    int typed = 0;   // texts that a control took
    int pressed = 0; // buttons, menus, tools and rows

private:
    void follow(const std::string& lines) {
        std::istringstream text(lines);
        for (std::string line; std::getline(text, line);)
            lines_.push_back(line);
    }

    void playOn() {
        while (!lines_.empty()) {
            const auto read = console::readLine(lines_.front());
            lines_.pop_front();
            const Forms::Hold hold(stage.process().forms());
            if (!read) continue;
            for (const console::Line& step : console::stepsOf(*read))
                console::verbOf(step).run(stage, step);
        }
    }

    void arrive() {
        playOn();
        Form* front = stage.process().forms().active();
        if (goal_.empty() || front == nullptr || front->name() != goal_) return;
        goal_.clear();
        useAll(*front);
    }

    static bool canGoOn(const Form& form) { return !form.isUnloaded() && !form.forms().ended(); }

    // What is still there of the controls as they stood, one after another. Many a key or button closes its
    // screen, so each text begins with another one.
    template <class Use> void each(Form& form, const Use& use) {
        std::vector<Control*> controls = form.controls();
        std::ranges::shuffle(controls, order_);
        std::stable_partition(controls.begin(), controls.end(),
                              [](const Control* each) { return each->name() != "cmdCikis"; });
        const Forms::Hold hold(form.forms());
        for (Control* control : controls) {
            if (!canGoOn(form)) return;
            if (user::canReach(*control)) use(*control);
            stage.dialogs.answers.clear();
            stage.dialogs.answers.push_back("yes");
        }
    }

    void fill(Form& form) {
        each(form, [&](Control& control) {
            auto* grid = dynamic_cast<FlexGrid*>(&control);
            if (grid && length(text_) < 40) typeInto(*grid);
            if (!user::put(control, text_)) return;
            ++typed;
            if (!canGoOn(form)) return;
            if (length(text_) < 40) {
                user::type(control, text_);
            }
            for (const Key key : {Key::Enter, Key::Tab})
                if (canGoOn(form)) user::pressKey(form, {.key = key});
        });
    }

    // The cell's own editor takes what is typed into the sheet.
    void typeInto(FlexGrid& grid) {
        for (int column = 1; column < grid.columns(); ++column) {
            if (!user::clickCell(grid, grid.rows() - 1, column)) continue;
            for (const char c : text_)
                user::pressKey(grid.form(), {.character = static_cast<unsigned char>(c)});
            user::pressKey(grid.form(), {.key = Key::Enter});
        }
    }

    // What a button uses may have been emptied by the one before it, so all is typed anew: now and then, and
    // always where the text would change what a statement means.
    void typeAgain(Form& form) {
        each(form, [&](Control& control) { user::put(control, text_); });
    }

    void pressAll(Form& form) {
        each(form, [&](Control& control) {
            if (control.name() == "cmdKoy") return; // books with a password of their own would shut us out
            if (text_.find(" OR ") != text_.npos || order_() % 3 == 0) typeAgain(form);
            if (!canGoOn(form)) return;
            stage.dialogs.answers.assign({"yes", text_, "yes"});
            if (auto* bar = dynamic_cast<ToolBar*>(&control)) {
                const auto tools = bar->tools();
                for (const ToolBar::Tool& tool : tools)
                    if (canGoOn(form) && user::clickTool(*bar, tool.key)) ++pressed;
            } else if (dynamic_cast<ListBox*>(&control) || dynamic_cast<DataGrid*>(&control)) {
                if (user::dblClickRow(control, 0)) ++pressed;
            } else if (user::click(control)) {
                ++pressed;
            }
        });
        for (int key = static_cast<int>(Key::F2); key <= static_cast<int>(Key::F12); ++key)
            if (canGoOn(form)) user::pressKey(form, {.key = static_cast<Key>(key)});
    }

    const std::string& text_;
    std::minstd_rand order_; // the same in every run
    std::deque<std::string> lines_;
    std::string goal_; // the screen that the lines lead to; empty: it was reached
    int depth_ = 0;
};

std::string brokenJournal(const Drive& drive) {
    const journal::Chain chain = journal::examine(*drive.engine());
    return chain.broken ? describe(chain) : "";
}

// That the shop was made is no act of the operator's: nobody could take it back.
void forgetMaking(const Drive& drive) {
    const auto engine = drive.engine();
    journal::thin(*engine, journal::planThinning(*engine, DateTime::of(9999, 1, 1)));
}

std::string schemaOf(const Drive& drive) {
    return drive.answer("SELECT type, name, sql FROM sqlite_master");
}

// The rows that nobody may touch: of tables that are not this screen's, and of the account nobody opens.
std::map<std::string, std::string> untouched(const Drive& drive, const std::set<std::string>& writes) {
    std::map<std::string, std::string> rows;
    for (const store::TableDef& table : schema::tables()) {
        const bool mayChange =
            writes.contains(table.name) || kSales.contains(table.name) || table.name == "GUNLUK";
        const bool isOfAccount = kSales.contains(table.name) && table.name != "URUNTANITIM";
        if (!mayChange) rows[table.name] = drive.answer("SELECT * FROM \"" + table.name + "\" ORDER BY ID");
        if (isOfAccount)
            rows[table.name] =
                drive.answer("SELECT * FROM \"" + table.name + "\" WHERE MUSTNO = '9001' ORDER BY ID");
    }
    rows["9001"] = drive.answer("SELECT * FROM MUSTKAYIT WHERE HSTNO = '9001'");
    return rows;
}

// Our own sentences, whatever of the operator's text is quoted in them.
void expectOurWords(const std::string& said) {
    EXPECT_FALSE(said.empty());
    EXPECT_EQ(validUtf8(said), said);
    for (const char* foreign :
         {"syntax error", "no such ", "near \"", "constraint failed", "std::", "basic_string",
          "vector::", "Deyim çalıştırılamadı", "SQL logic", "datatype mismatch"})
        EXPECT_EQ(said.find(foreign), said.npos) << said.substr(0, 300);
}

class Hostile : public testing::TestWithParam<Way> {};

TEST_P(Hostile, TypedTextDoesNoHarm) {
    const Way& way = GetParam();
    const Drive shop;
    openShop(shop);
    Till(shop).play(kShop);
    forgetMaking(shop);
    const auto wanted = untouched(shop, way.writes);
    const std::string schema = schemaOf(shop);
    const std::vector<std::string> texts = hostileTexts();
    const Drive drive;
    int typed = 0;
    int pressed = 0;
    for (std::size_t i = 0; i < texts.size(); ++i) {
        SCOPED_TRACE(std::string(way.screen) + ", text " + std::to_string(i) + ": " +
                     left(validUtf8(texts[i]), 60));
        std::filesystem::remove_all(drive.path());
        std::filesystem::copy(shop.path(), drive.path(), std::filesystem::copy_options::recursive);
        {
            Operator hand(drive.path(), texts[i], static_cast<unsigned>(i));
            hand.comeTo(way);
            typed += hand.typed;
            pressed += hand.pressed;
            for (const auto& said : hand.stage.dialogs.said)
                expectOurWords(said.text);
            hand.stage.dialogs.said.clear();
            hand.stage.dialogs.answers.clear();
            hand.comeBack();
            hand.play("type Text1 \"8\"\ndblclick L3 0\nput mskOdenenPara \"1,25\"\nclick Command1\n");
            const auto& said = hand.stage.dialogs.said;
            EXPECT_TRUE(std::ranges::any_of(
                said, [](const auto& each) { return each.text == "KAYIT İŞLEMİ TAMAMLANDI"; }))
                << "a payment behind it: " << (said.empty() ? "" : said.front().text);
        }
        ASSERT_EQ(untouched(drive, way.writes), wanted);
        ASSERT_EQ(schemaOf(drive), schema);
        ASSERT_EQ(brokenJournal(drive), "");
        ASSERT_EQ(drive.answer("PRAGMA integrity_check"), "ok");
        ASSERT_EQ(drive.answer("SELECT COUNT(*) FROM TAKSITODENEN WHERE MUSTNO='8' AND ODMIKTAR=1250000"),
                  "1");
    }
    RecordProperty("typed", typed);
    RecordProperty("pressed", pressed);
    EXPECT_GE(typed, way.hasFields ? 10 : 0) << "what is typed reaches the screen's fields";
    EXPECT_GE(pressed, static_cast<int>(texts.size())) << "and its buttons";
}

INSTANTIATE_TEST_SUITE_P(Screens, Hostile, testing::ValuesIn(ways()),
                         [](const auto& each) { return std::string(each.param.screen); });

} // namespace
} // namespace veldona::faults
