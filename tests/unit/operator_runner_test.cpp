// The protocol, played on a small program of two screens that does one thing of each kind.
#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "apps/operator/folders.h"
#include "apps/operator/runner.h"
#include "platform/controls/controls.h"
#include "platform/controls/lists.h"

namespace veldona::console {

namespace {

struct Kasalar : RowSource {
    int current = -1;
    [[nodiscard]] int rowCount() const override { return 2; }
    [[nodiscard]] std::string cell(int row, std::string_view field) const override {
        return std::string(field) + std::to_string(row);
    }
    [[nodiscard]] int currentRow() const override { return current; }
    void moveTo(int row) override { current = row; }
};

// Writes down what happens to it in lstOlay.
struct AnaEkran : Form {
    Session& session;
    TextBox Text1{*this, "Text1"};
    ListBox lstOlay{*this, "lstOlay"};
    CheckBox chkTamam{*this, "chkTamam"};
    ComboBox cboKasa{*this, "cboKasa"};
    DateBox dtTarih{*this, "dtTarih", DateBox::Style::PickerWithCheck};
    FlexGrid flxPlan{*this, "flxPlan", 3, 2};
    DataGrid grdKasa{*this, "grdKasa"};
    ToolBar bar{*this, "BarIslemler"};
    Timer tmrUyari{*this, "tmrUyari", 700};
    Label lblSonuc{*this, "lblSonuc", "boş"};
    CommandButton cmdAlt{*this, "cmdAlt"};
    CommandButton cmdSor{*this, "cmdSor"};
    CommandButton cmdGir{*this, "cmdGir"};
    CommandButton cmdHata{*this, "cmdHata"};
    CommandButton cmdYaz{*this, "cmdYaz"};
    CommandButton cmdBitir{*this, "cmdBitir"};
    CommandButton cmdKapali{*this, "cmdKapali"};
    Frame fraGizli{*this, "fraGizli"};
    CommandButton cmdGizli{*this, "cmdGizli"};
    MenuItem mnuSil{*this, "mnuSil", "Sil"};
    Kasalar kasalar;

    AnaEkran(Forms& forms, Session& itsSession) : Form(forms, "frmMainVeldona", "Ana"), session(itsSession) {
        cboKasa.add("Merkez");
        cboKasa.add("Şube");
        flxPlan.setTextMatrix(1, 1, "12,50");
        grdKasa.setColumns({{"Kasa Adı", "KASA_ADI"}, {"No", "KASA_NO"}});
        grdKasa.bind(&kasalar);
        for (const char* key : {"cmdYeni", "cmdSil", "cmdBosluk", "cmdGizliArac"})
            bar.add(key, key);
        bar.setToolVisible("cmdGizliArac", false);
        cmdGizli.placeIn(fraGizli);
        fraGizli.setVisible(false);
        cmdKapali.setEnabled(false);
        listen();
    }

private:
    void listen() {
        const auto log = [this](const char* text) { return [this, text] { lstOlay.add(text); }; };
        Text1.onGotFocus = log("gir");
        Text1.onLostFocus = log("çık");
        Text1.onChange = log("değiş");
        Text1.onKeyUp = [this](KeyEvent&) { lstOlay.add("tuş"); };
        onKeyDown = [this](KeyEvent& event) {
            if (event.key == Key::F2) lstOlay.add("F2");
        };
        lstOlay.onDblClick = [this] { lstOlay.clear(); };
        grdKasa.onRowChange = [this] { lblSonuc.setCaption(grdKasa.currentText("No")); };
        flxPlan.onClick = [this] { lblSonuc.setCaption(flxPlan.text()); };
        bar.onToolClick = [this](const std::string& key) { lblSonuc.setCaption(key); };
        tmrUyari.onTimer = [this] { lblSonuc.setCaption("tik"); };
        mnuSil.onClick = [this] { lblSonuc.setCaption("menü"); };
        listenToButtons();
    }

    void listenToButtons() {
        Dialogs& dialogs = session.desktop.dialogs;
        cmdAlt.onClick = [this] {
            forms().show("frmAlt", Kip::Modal);
            lblSonuc.setCaption("döndü");
        };
        cmdSor.onClick = [&] {
            lblSonuc.setCaption(dialogs.confirm("Silinsin mi", "Sor") ? "evet" : "hayır");
        };
        cmdGir.onClick = [&] { lblSonuc.setCaption(dialogs.input("Ne", "Gir").value_or("yok")); };
        cmdHata.onClick = [] { throw RuntimeError(13, "tür uyuşmuyor"); };
        cmdYaz.onClick = [&] {
            session.desktop.clock.wait(1000);
            dialogs.tell("Yazıldı");
        };
        cmdBitir.onClick = [this] { forms().endProcess(); };
    }
};

struct AltEkran : Form {
    Session& session;
    TextBox Text1{*this, "Text1"};
    CommandButton cmdKapat{*this, "cmdKapat"};
    CommandButton cmdBitir{*this, "cmdBitir"};
    AltEkran(Forms& forms, Session& itsSession) : Form(forms, "frmAlt", "Alt"), session(itsSession) {
        cmdKapat.onClick = [this] { this->forms().unload(*this); };
        cmdBitir.onClick = [this] { this->forms().endProcess(); };
        onUnload = [this] { session.desktop.dialogs.tell("Alt kapandı"); };
    }
};

void registerSmallProgram(Forms& forms, Session& session) {
    forms.add("frmMainVeldona", [&](Forms& all) { return std::make_unique<AnaEkran>(all, session); });
    forms.add("frmAlt", [&](Forms& all) { return std::make_unique<AltEkran>(all, session); });
}

// What the run complained of goes into `complaints`, what it printed into `printed`.
Tally play(const std::string& lines, std::string& complaints, std::string& printed) {
    const DriveFolder folder(std::nullopt);
    std::istringstream text("database\nstart\n" + lines);
    Script script("denek", text);
    Tally tally;
    testing::internal::CaptureStderr();
    testing::internal::CaptureStdout();
    Runner(script, {folder.path(), registerSmallProgram}, tally).run();
    printed = testing::internal::GetCapturedStdout();
    complaints = testing::internal::GetCapturedStderr();
    return tally;
}

Tally play(const std::string& lines, std::string& complaints) {
    std::string printed;
    return play(lines, complaints, printed);
}

void expectAllHold(const std::string& lines) {
    std::string complaints;
    const Tally tally = play(lines, complaints);
    EXPECT_EQ(tally.failed, 0) << complaints;
    EXPECT_GT(tally.passed, 0);
    EXPECT_FALSE(tally.unreadable) << complaints;
}

TEST(OperatorOyunu, EkraniOperatorGibiKullanir) {
    expectAllHold(R"op(
expect-screen "FRMMAINVELDONA"
focus cmdSor
type TEXT1 "7ş"
click cmdYaz
expect-message "Yazıldı"
expect-no-message
expect frmMainVeldona.Text1 "7ş"
expect-list lstOlay "gir" "çık" "gir" "değiş" "tuş" "değiş" "tuş" "çık"
dblclick lstOlay 2
expect-list lstOlay
put Text1 "uzun"
expect-list lstOlay "gir" "değiş" "tuş"
click lstOlay 1
expect-selected lstOlay 1
expect lstOlay "değiş"
key F2
expect-list lstOlay "gir" "değiş" "tuş" "çık" "F2"
choose cboKasa "Şube"
expect cboKasa "Şube"
expect-selected cboKasa 1
expect-list cboKasa "Merkez" "Şube"
check chkTamam on
expect chkTamam "on"
check dtTarih on
expect dtTarih "01/01/2026"
date dtTarih "22/11/2026"
expect dtTarih "22/11/2026"
date dtTarih null
expect dtTarih ""
cell flxPlan 1 1
expect lblSonuc "12,50"
expect-rows flxPlan 3
expect-cell flxPlan 1 1 "12,50"
expect-selected grdKasa -1
click grdKasa 1
expect lblSonuc "KASA_NO1"
expect-rows grdKasa 2
expect-cell grdKasa 0 1 "KASA_NO0"
expect-cell grdKasa 0 "kasa adı" "KASA_ADI0"
expect-cell grdKasa 0 "KASA_NO" "KASA_NO0"
expect-tools "cmdSil" "CMDYENI"
tool cmdSil
expect lblSonuc "cmdSil"
tick tmrUyari
expect lblSonuc "tik"
menu mnuSil
expect lblSonuc "menü"
expect-visible cmdGizli no
expect-visible cmdSor yes
expect-enabled cmdKapali no
expect-enabled cmdSor yes
)op");
}

TEST(OperatorOyunu, MesajlariSirayla) {
    expectAllHold(R"op(
answer yes
click cmdSor
click cmdHata
answer "yanıt"
click cmdGir
click cmdYaz
expect-message "Silinsin mi" "Sor"
expect-error 13
expect-message "Yazıldı" "Veldona"
expect-no-message
expect lblSonuc "yanıt"
answer ""
click cmdGir
expect-message "Ne" "Gir"
expect-no-message
click cmdHata
messages
sql "SELECT YOK FROM YOK"
expect-error &H80040E14
sql "DELETE FROM YOK"
expect-error -2147217900
sql "DELETE FROM YOK"
expect-error 80040E14
expect-no-report
)op");
}

TEST(OperatorOyunu, KaliciEkranSatirlariAlir) {
    expectAllHold(R"op(
click cmdAlt
expect-screen "frmAlt"
type Text1 "alt"
expect Text1 "alt"
expect frmMainVeldona.Text1 ""
expect frmMainVeldona.lblSonuc "boş"
click cmdKapat
expect-closed "frmAlt"
expect lblSonuc "döndü"
expect-message "Alt kapandı"
click cmdAlt
click cmdBitir
expect-closed "frmMainVeldona"
expect-no-message
start
expect lblSonuc "boş"
click cmdAlt
quit
expect-message "Alt kapandı"
expect-closed "frmMainVeldona"
)op");
    // The end of the lines unloads it.
    expectAllHold("expect-screen \"frmMainVeldona\"\nclick cmdAlt");
}

TEST(OperatorOyunu, SaatVeDepoElAltinda) {
    expectAllHold(R"op(
clock "22/11/2026 23:59:58"
click cmdYaz
tick tmrUyari
check dtTarih on
expect dtTarih "22/11/2026"
date dtTarih null
check dtTarih off
tick tmrUyari
quit
start
check dtTarih on
expect dtTarih "23/11/2026"
messages
sql "INSERT INTO MUSTKAYIT (HSTNO,AD,DOGTRH) VALUES ('7','Ayşe','22/11/2026')"
fault 2 "MUSTKAYIT"
sql "UPDATE MUSTKAYIT SET AD='Fatma' WHERE HSTNO='7'"
sql "DELETE FROM MUSTKAYIT"
expect-error -2147217900
expect-sql "SELECT HSTNO,AD,SOYAD,DOGTRH FROM MUSTKAYIT" "7|Fatma|NULL|2026-11-22 00:00:00"
sql "DELETE FROM MUSTKAYIT"
expect-sql "SELECT HSTNO FROM MUSTKAYIT"
expect-file "VELDONA\Veldona_Taksit\firma.txt" "vorel\n"
expect-file "veldona/veldona_taksit/Netwok.txt" "\"C:\VELDONA\Veldona_Taksit\""
quit
expect-sql "SELECT DEGER FROM FIRMABILGISI" "1"
)op");
}

// Each of these lines is one failure, and none of them stops the next.
TEST(OperatorOyunu, TutmayaniVeReddedileniSayar) {
    const std::vector<std::string> lines = {
        "expect Text1 \"x\"",
        "expect Yok \"x\"",
        "expect frmAlt.Text1 \"\"",
        "expect-list cboKasa \"Şube\" \"Merkez\"",
        "expect-list cboKasa",
        "expect-list Text1 \"\"",
        "expect-selected cboKasa 0",
        "expect-visible cmdGizli yes",
        "expect-enabled cmdKapali yes",
        "expect-tools \"cmdYeni\"",
        "expect-tools \"cmdYeni\" \"cmdSil\" \"cmdGizliArac\"",
        "expect-rows flxPlan 2",
        "expect-cell flxPlan 3 0 \"\"",
        "expect-cell flxPlan 1 2 \"\"",
        "expect-cell grdKasa 2 0 \"\"",
        "expect-cell grdKasa 0 \"Yok\" \"\"",
        "expect-message \"x\"",
        "expect-error 13",
        "expect-screen \"frmAlt\"",
        "expect-closed \"frmMainVeldona\"",
        "expect-sql \"SELECT DEGER FROM FIRMABILGISI\"",
        "expect-sql \"SELECT DEGER FROM FIRMABILGISI\" \"1\" \"1\"",
        "expect-sql \"SELECT\" \"1\"",
        "expect-report \"x\"",
        "expect-file \"yok.txt\"",
        "expect-file \"..\\ust.txt\"",
        "expect-file \"VELDONA\\Veldona_Taksit\\firma.txt\" \"başka\"",
        "click cmdGizli",
        "click cmdKapali",
        "click Yok",
        "click lstOlay 99",
        "focus lblSonuc",
        "type lblSonuc \"x\"",
        "choose cboKasa \"Yok\"",
        "check Text1 on",
        "check cboKasa off",
        "date Text1 null",
        "cell flxPlan 9 9",
        "menu cmdSor",
        "tool cmdGizliArac",
        "tool cmdYok",
        "tick Text1",
        "click frmAlt.cmdKapat",
        "database",
        "report",
        "click cmdSor", // a question without an answer
    };
    std::string all;
    for (const std::string& line : lines)
        all += line + "\nmessages\n";
    std::string complaints;
    const Tally tally = play(all, complaints);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        const std::string place = "denek:" + std::to_string(3 + 2 * i) + ": ";
        EXPECT_NE(complaints.find(place), complaints.npos) << lines[i];
    }
    EXPECT_EQ(tally.failed, static_cast<int>(lines.size())) << complaints;
    EXPECT_EQ(tally.passed, 0);
}

TEST(OperatorOyunu, BirakilanHataSayilirMesajSayilmaz) {
    std::string complaints;
    std::string printed;
    EXPECT_EQ(play("click cmdYaz\nclick cmdHata\nclick cmdHata\n", complaints, printed).failed, 2);
    EXPECT_NE(complaints.find("run-time error 13"), complaints.npos) << complaints;
    EXPECT_NE(printed.find("Yazıldı"), printed.npos) << printed;
    // An error met where a message was expected, and the other way round.
    EXPECT_EQ(play("click cmdHata\nexpect-message \"tür uyuşmuyor\"\n", complaints).failed, 1);
    EXPECT_EQ(play("click cmdYaz\nexpect-error 13\n", complaints).failed, 1);
}

TEST(OperatorOyunu, Yazdirir) {
    std::string complaints;
    std::string printed;
    play("click cmdYaz\nmessages\nclick lstOlay 0\nshow lstOlay\nshow cmdGizli\n"
         "sql \"SELECT DEGER,GIRIS FROM FIRMABILGISI\"\n",
         complaints, printed);
    EXPECT_EQ(printed, "\"Yazıldı\" [Veldona]\n"
                       "frmMainVeldona.lstOlay: \"gir\"\n  > gir\n    çık\n"
                       "frmMainVeldona.cmdGizli: \"\" (hidden)\n"
                       "1|NULL\n");
}

TEST(OperatorOyunu, BittiktenSonraYalnizBakilir) {
    std::string complaints;
    const Tally tally =
        play("click cmdBitir\nclick cmdSor\nkey F2\nexpect-closed \"frmMainVeldona\"\n", complaints);
    EXPECT_EQ(tally.failed, 2) << complaints;
    EXPECT_EQ(tally.passed, 1);
}

} // namespace

} // namespace veldona::console
