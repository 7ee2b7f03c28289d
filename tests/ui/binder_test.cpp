// Texts, buttons, dates and combos, both ways; and the way of a key.
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGuiApplication>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "tests/ui/trialform.h"
#include "tests/ui/window_tests.h"
#include "ui/datefield.h"

namespace veldona::test {

namespace {

using Told = std::vector<std::string>;

class Keys : public TrialWindow {
protected:
    Keys() {
        form->onKeyDown = [this](KeyEvent&) { note("screen down"); };
        form->onKeyPress = [this](KeyPress&) { note("screen press"); };
        form->Text.onKeyDown = [this](KeyEvent&) { note("down"); };
        form->Text.onKeyPress = [this](KeyPress&) { note("press"); };
        form->Text.onChange = [this] { note("change " + form->Text.text()); };
        form->Text.onKeyUp = [this](KeyEvent&) { note("up"); };
        form->Text.setFocus();
        host.flush();
        told();
    }
};

} // namespace

TEST_F(Keys, TheScreenFirstThenTheControlThenTheChange) {
    typeText(host, *form, "Ş");
    EXPECT_EQ(told(), (Told{"screen down", "down", "screen press", "press", "change Ş", "up"}));
    typeText(host, *form, "ığI");
    EXPECT_EQ(form->Text.text(), "ŞığI");
    EXPECT_EQ(at<QLineEdit>("Metin").text(), "ŞığI");
}

TEST_F(Keys, PastingAndInputMethodsAreOneChange) {
    commitText(at<QLineEdit>("Metin"), "İstanbul");
    EXPECT_EQ(told(), (Told{"change İstanbul"}));
    QGuiApplication::clipboard()->setText(" Çınar");
    at<QLineEdit>("Metin").paste();
    EXPECT_EQ(told(), (Told{"change İstanbul Çınar"}));
}

TEST_F(Keys, ATextSetByCodeIsCorrectedWhileTyping) {
    form->Text.onChange = [this] {
        if (form->Text.text().size() > 3) form->Text.setText("999");
    };
    typeText(host, *form, "1234");
    EXPECT_EQ(at<QLineEdit>("Metin").text(), "999");
}

TEST_F(TrialWindow, FocusEventsComeOnce) {
    form->Text.setFocus();
    host.flush();
    form->Text.onLostFocus = [this] { note("lost"); };
    form->Ikinci.onGotFocus = [this] {
        note("got");
        form->Ikinci.selectAll();
    };
    form->Ikinci.setText("1.250,00");
    pressKey(host, *form, Key::Tab);
    EXPECT_EQ(told(), (Told{"lost", "got"}));
    EXPECT_EQ(at<QLineEdit>("Ikinci").selectedText(), "1.250,00");
    form->Text.setFocus();
    told();
    host.flush();
    QTest::mouseClick(&at<QLineEdit>("Ikinci"), Qt::LeftButton);
    EXPECT_EQ(told(), (Told{"lost", "got"}));
}

TEST_F(TrialWindow, TheOperatorsChoiceIsInTheModel) {
    form->Text.setText("abcdef");
    host.flush();
    at<QLineEdit>("Metin").setSelection(2, 3);
    EXPECT_EQ(form->Text.selStart(), 2);
    EXPECT_EQ(form->Text.selLength(), 3);
}

TEST_F(TrialWindow, TheModelsStateShowsInTheField) {
    form->Yazi.setCaption("Ad & Soyad");
    form->Text.setToolTip("<b>ham</b>");
    form->Text.setBackColor(Colour::FocusedBackground);
    form->Text.locked = true;
    form->Text.setText("Gülşen");
    form->Ikinci.setVisible(false);
    form->ToolOptions.setVisible(false);
    form->Button.setEnabled(false);
    form->setCaption("Başka");
    host.flush();
    EXPECT_EQ(at<QLabel>("Yazi").text(), "Ad && Soyad");
    EXPECT_EQ(at<QLineEdit>("Metin").text(), "Gülşen");
    EXPECT_TRUE(at<QLineEdit>("Metin").isReadOnly());
    EXPECT_EQ(at<QLineEdit>("Metin").toolTip(), "&lt;b&gt;ham&lt;/b&gt;");
    EXPECT_EQ(at<QLineEdit>("Metin").property("tone").toString(), "focused");
    EXPECT_FALSE(at<QLineEdit>("Ikinci").isVisible());
    EXPECT_FALSE(at<QRadioButton>("Bir").isVisible());
    EXPECT_FALSE(at<QPushButton>("Dugme").isEnabled());
    EXPECT_EQ(host.window(*form)->windowTitle(), "Başka");
    form->Yazi.setCaption("Ad Soyad ");
    form->Text.setBackColor(Colour::WindowBackground);
    host.flush();
    EXPECT_EQ(at<QLabel>("Yazi").text(), "A&d Soyad");
    EXPECT_EQ(at<QLineEdit>("Metin").property("tone").toString(), "");
}

TEST_F(TrialWindow, AButtonByMouseEnterSpaceAndShortcut) {
    int clicks = 0;
    form->Button.onClick = [&] { ++clicks; };
    EXPECT_EQ(at<QPushButton>("Dugme").text(), "&Kaydet");
    QTest::mouseClick(&at<QPushButton>("Dugme"), Qt::LeftButton);
    EXPECT_EQ(form->activeControl(), &form->Button);
    pressKey(host, *form, Key::Enter);
    pressKey(host, *form, Key::Space);
    EXPECT_EQ(clicks, 3);
    form->Button.setEnabled(false);
    host.flush();
    QTest::mouseClick(&at<QPushButton>("Dugme"), Qt::LeftButton);
    EXPECT_EQ(clicks, 3);
}

TEST_F(TrialWindow, BoxAndOptions) {
    form->Kutu.onClick = [this] { note("kutu"); };
    form->Iki.onClick = [this] { note("iki"); };
    QTest::mouseClick(&at<QCheckBox>("Kutu"), Qt::LeftButton, {},
                      QPoint(8, at<QCheckBox>("Kutu").height() / 2));
    EXPECT_TRUE(form->Kutu.checked());
    form->Bir.setValue(true);
    host.flush();
    EXPECT_TRUE(at<QRadioButton>("Bir").isChecked());
    at<QRadioButton>("Iki").click();
    EXPECT_TRUE(form->Iki.value());
    EXPECT_FALSE(at<QRadioButton>("Bir").isChecked());
    EXPECT_EQ(told(), (Told{"kutu", "iki"}));
    form->Iki.setValue(false);
    host.flush();
    EXPECT_FALSE(at<QRadioButton>("Iki").isChecked());
}

TEST_F(TrialWindow, AComboIsChosenFromAndTypedInto) {
    form->Yazilan.add("Merkez", 1);
    form->Yazilan.add("Şube", 2);
    form->Yazilan.onClick = [this] { note("click " + form->Yazilan.boundText()); };
    form->Yazilan.onChange = [this] { note("change " + form->Yazilan.text()); };
    host.flush();
    auto& combo = at<QComboBox>("Yazilan");
    EXPECT_EQ(combo.count(), 2);
    emit combo.activated(1);
    EXPECT_EQ(told(), (Told{"click 2"}));
    form->Yazilan.setFocus();
    form->Yazilan.selectAll();
    host.flush();
    typeText(host, *form, "ğ");
    EXPECT_EQ(told(), (Told{"change ğ"}));
    form->Yazilan.setText("Merkez");
    host.flush();
    EXPECT_EQ(combo.currentText(), "Merkez");
    EXPECT_EQ(combo.currentIndex(), 0);
    EXPECT_FALSE(at<QComboBox>("Secilen").isEditable());
}

TEST_F(TrialWindow, ADateIsTypedClearedAndChecked) {
    form->Gun.setValue(DateTime::of(2026, 11, 22));
    form->Gun.onChange = [this] { note(form->Gun.text()); };
    form->Gun.setFocus();
    host.flush();
    auto& day = at<DateField>("Gun");
    EXPECT_EQ(day.edit().text(), "22/11/2026");
    day.edit().selectAll();
    typeText(host, *form, "05122026");
    EXPECT_EQ(told(), (Told{"05/12/2026"}));
    // No day: what stood there comes back.
    day.edit().selectAll();
    typeText(host, *form, "31");
    pressKey(host, *form, Key::Tab);
    EXPECT_EQ(day.edit().text(), "05/12/2026");
    EXPECT_TRUE(told().empty());

    form->Bos.setValue(DateTime::of(2026, 1, 31));
    form->Bos.setFocus();
    host.flush();
    at<DateField>("Bos").edit().selectAll();
    pressKey(host, *form, Key::Delete);
    pressKey(host, *form, Key::Tab);
    EXPECT_TRUE(form->Bos.value().isNull());

    auto& checked = at<DateField>("Varsa");
    form->Varsa.setFocus();
    pressKey(host, *form, Key::Space);
    EXPECT_EQ(form->Varsa.text(), "22/11/2026");
    checked.check().click();
    EXPECT_TRUE(form->Varsa.value().isNull());
    EXPECT_EQ(checked.date(), std::nullopt);
    EXPECT_EQ(checked.edit().text(), "22/11/2026");
}

TEST(DateFieldRead, DayMonthYear) {
    EXPECT_EQ(DateField::read("1.2.26"), QDate(2026, 2, 1));
    EXPECT_EQ(DateField::read("010230"), QDate(1930, 2, 1));
    EXPECT_EQ(DateField::read("29022026"), std::nullopt);
    EXPECT_EQ(DateField::read("22/11/20"), QDate(2020, 11, 22));
    EXPECT_EQ(DateField::read("22"), std::nullopt);
}

} // namespace veldona::test
