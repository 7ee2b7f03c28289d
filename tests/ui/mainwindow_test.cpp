// The main screen as a real window over a real database: what the widgets show is what the models hold, and
// money taken by keyboard is a row in the books.
#include <chrono>
#include <filesystem>

#include <QApplication>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QTableView>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include "core/delivered.h"
#include "ledger/mainscreen.h"
#include "platform/runtime/conversion.h"
#include "platform/store/engine/sqlcipher/sqlcipherengine.h"
#include "tests/ui/programwindows.h"
#include "ui/datefield.h"

namespace veldona::test {

namespace {

using Lines = std::vector<std::string>;

class MainWindow : public ProgramWindows {
protected:
    MainWindow() {
        fillBooks();
        start();
        screen = dynamic_cast<FrmMainVeldona*>(forms.loaded("frmMainVeldona"));
        resize(1366, 730);
    }

    void resize(int width, int height) {
        host.window(*screen)->showNormal();
        host.window(*screen)->resize(width, height);
        host.flush();
        settle();
    }
    template <class Widget> Widget& at(const char* name) { return widgetOf<Widget>(host, *screen, name); }

    void fillBooks() {
        shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD,EVMH,EVCD,EVAPT,EVILCE,EVTEL,GSM,UYARI) VALUES "
                 "('7','Ayşe','Yılmaz','Çınar Mah.','Gülşen Cad.','14/7','Üsküdar','0216 333 22 11',"
                 "'0532 444 55 66','Senetsiz mal verilmez')");
        static const char* const others[][2] = {{"Çiğdem", "Öztürk"}, {"İbrahim", "Şahin"},
                                                {"Ömer", "Çelik"},    {"Şükrü", "Yıldırım"},
                                                {"Ümit", "Güneş"},    {"Işık", "Aydın"}};
        for (int i = 0; i < 60; ++i) {
            const auto& [name, surname] = others[i % 6];
            shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD,EVTEL) VALUES ('" + std::to_string(100 + i) +
                     "','" + name + "','" + surname + "','0216 555 00 " + std::to_string(10 + i) + "')");
        }
        addSale(5, 12, "20/11/2025");
        addSale(6, 36, "05/10/2026");
        shop.run("INSERT INTO TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES "
                 "('7',6,'05/10/2026 09:00:00',500000000)");
        shop.run("INSERT INTO TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES "
                 "('7',6,'06/11/2026 17:30:00',350000000)");
    }
    void addSale(int number, int months, const std::string& firstDay) {
        const std::string sale = std::to_string(number);
        shop.run("INSERT INTO ISLEMNOTABLO (MUSTNO,ISLEMNO,TOPBORC,ODEME_TIPI,ACIKLAMA,TESLIMAT_TRH) VALUES "
                 "('7'," +
                 sale + "," + std::to_string(months) + "500000000,'Taksitli','Beyaz eşya','25/11/2026')");
        for (const char* line : {"Buzdolabı", "Çamaşır makinesi"})
            shop.run("INSERT INTO URUNAL (MUSTNO,ISLEMNO,URKOD,ADET,FIYAT,TRH,ACIKLAMA) VALUES ('7'," + sale +
                     ",'1',1," + std::to_string(months * 250) + "000000,'" + firstDay + "','" + line + "')");
        for (int i = 0; i < months; ++i) {
            shop.run("INSERT INTO URUNSAT (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR,PESINAT) VALUES ('7'," + sale +
                     ",'" + toText(addMonths(DateTime::of(2026, 10, 5), i)) + "',500000000," +
                     (i == 0 ? "1" : "0") + ")");
        }
    }
    // By keyboard, as right after the start: the number, down to the sales, the first one, Enter.
    void openFirstSale() {
        typeText(host, *screen, "7");
        for (const Key key : {Key::Down, Key::Down, Key::Enter})
            pressKey(host, *screen, key);
    }
    void expectWidgetsShowModels();

    FrmMainVeldona* screen = nullptr;
};

std::string shownBy(const QWidget& widget) {
    if (const auto* edit = dynamic_cast<const QLineEdit*>(&widget)) return edit->text().toStdString();
    if (const auto* combo = dynamic_cast<const QComboBox*>(&widget))
        return combo->currentText().toStdString();
    if (const auto* label = dynamic_cast<const QLabel*>(&widget)) return label->text().toStdString();
    const auto* date = dynamic_cast<const DateField*>(&widget);
    const auto day = date ? date->date() : std::nullopt;
    return day ? day->toString("dd/MM/yyyy").toStdString() : std::string();
}

Lines rowsOf(const QListView& view) {
    Lines rows;
    for (int row = 0; row < view.model()->rowCount(); ++row)
        rows.push_back(view.model()->index(row, 0).data().toString().toStdString());
    return rows;
}

void MainWindow::expectWidgetsShowModels() {
    for (Control* each : screen->controls()) {
        const auto* widget = host.window(*screen)->findChild<QWidget*>(QString::fromStdString(each->name()));
        if (!widget) continue;
        if (const auto* list = dynamic_cast<ListBox*>(each)) {
            const auto& view = dynamic_cast<const QListView&>(*widget);
            EXPECT_EQ(rowsOf(view), list->rows()) << each->name();
            if (list->onClick) {
                EXPECT_EQ(view.currentIndex().row(), list->listIndex()) << each->name();
            }
        } else if (dynamic_cast<Label*>(each) || dynamic_cast<TextBox*>(each) ||
                   dynamic_cast<DateBox*>(each) || dynamic_cast<ComboBox*>(each)) {
            const bool isLabel = dynamic_cast<Label*>(each); // whose blanks around it aren't shown
            const QString text = QString::fromStdString(each->shownText());
            EXPECT_EQ(shownBy(*widget), (isLabel ? text.trimmed() : text).toStdString()) << each->name();
        }
        // The two pages stand in tabs that the operator turns to; a menu is seen while it is open.
        if (!dynamic_cast<WebPane*>(each) && !dynamic_cast<Menu*>(each)) {
            EXPECT_EQ(widget->isVisible(), each->isShown()) << each->name();
        }
        EXPECT_EQ(widget->isEnabled(), each->isUsable()) << each->name();
    }
}

} // namespace

TEST_F(MainWindow, ACollectionByKeyboard) {
    openFirstSale();
    EXPECT_EQ(screen->Text5.text(), "6");
    EXPECT_EQ(screen->activeControl(), &screen->mskOdenenPara);
    EXPECT_EQ(QApplication::focusWidget(), &at<QLineEdit>("mskOdenenPara"));
    expectWidgetsShowModels();
    typeText(host, *screen, "250,00");
    EXPECT_EQ(at<QLineEdit>("mskOdenenPara").text(), "250,00");
    pressKey(host, *screen, Key::F2);
    EXPECT_EQ(shop.said().back(), "KAYIT İŞLEMİ TAMAMLANDI");
    expectWidgetsShowModels();
    EXPECT_EQ(rowsOf(at<QListView>("L2")), (Lines{"500,00", "350,00", "250,00"}));
    EXPECT_EQ(at<QLabel>("Label8").text(), "1.100,00");
    EXPECT_EQ(at<QLabel>("Label9").text(), "16.900,00");
    EXPECT_TRUE(at<QLabel>("lblVadeFarki").isVisible());
    EXPECT_EQ(query("SELECT MUSTNO,ISLEMNO,ODMIKTAR FROM TAKSITODENEN WHERE ODMIKTAR=250000000"),
              (Lines{"7|6|250000000"}));
    leavePicture(host, *screen, "tahsilat");
}

// Another till holds the books: the window says so, keys typed meanwhile come behind the posting, Esc gives
// up.
TEST_F(MainWindow, WhileAnotherTillIsWaitedForANoteShowsAndNoKeyIsLost) {
    openFirstSale();
    const auto other = store::openSqlcipher(shop.desktop.paths.toNative(kDatabasePath), kDeliveredPassword,
                                            std::chrono::seconds(1));
    const auto press = [&](int key, const QString& text) {
        for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease})
            QCoreApplication::postEvent(host.window(*screen)->windowHandle(),
                                        new QKeyEvent(type, key, Qt::NoModifier, text));
    };
    const auto isTold = [&] {
        for (const QLabel* label : host.window(*screen)->findChildren<QLabel*>())
            if (label->text().contains("bekleniyor") && label->isVisible()) return true;
        return false;
    };
    bool wasTold = false;
    typeText(host, *screen, "250,00");
    other->begin();
    QTimer::singleShot(700, [&] {
        wasTold = isTold();
        leavePicture(host, *screen, "bekleme");
        press(Qt::Key_4, "4");
        press(Qt::Key_2, "2");
    });
    QTimer::singleShot(900, [&] { other->rollback(); });
    pressKey(host, *screen, Key::F2);
    EXPECT_TRUE(wasTold);
    EXPECT_EQ(shop.said().back(), "KAYIT İŞLEMİ TAMAMLANDI");
    for (int i = 0; i < 5; ++i)
        settle();
    EXPECT_FALSE(isTold());
    EXPECT_EQ(at<QLineEdit>("mskOdenenPara").text(), "250,0042");

    other->begin();
    QTimer::singleShot(700, [&] { press(Qt::Key_Escape, ""); });
    const auto begun = std::chrono::steady_clock::now();
    pressKey(host, *screen, Key::F2);
    EXPECT_LT(std::chrono::steady_clock::now() - begun, std::chrono::seconds(10));
    EXPECT_NE(shop.said().back().find("başka bir bilgisayar"), std::string::npos);
    EXPECT_EQ(forms.active(), screen) << "Esc closed the screen too";
    other->rollback();
    EXPECT_EQ(query("SELECT COUNT(*) FROM TAKSITODENEN"), (Lines{"3"}));
}

TEST_F(MainWindow, ACustomerFromTheGridAndByArrows) {
    auto& grid = at<QTableView>("grdList");
    EXPECT_EQ(grid.model()->rowCount(), 61);
    QTest::mouseClick(grid.viewport(), Qt::LeftButton, {},
                      grid.visualRect(grid.model()->index(2, 1)).center());
    EXPECT_EQ(screen->Text1.text(), grid.model()->index(2, 0).data().toString().toStdString());
    expectWidgetsShowModels();
    QTest::mouseClick(&at<QLineEdit>("txtSoyad"), Qt::LeftButton);
    typeText(host, *screen, "ş");
    EXPECT_EQ(grid.model()->rowCount(), 10);
    EXPECT_EQ(grid.model()->index(0, 2).data().toString(), "Şahin");
}

// A report screen stands beside it: a press of the mouse brings the main screen to the front.
TEST_F(MainWindow, AReportScreenIsUsedWhileItIsOpen) {
    QTest::mouseClick(&at<QPushButton>("cmdGunuGecenOdemeler"), Qt::LeftButton);
    ASSERT_EQ(forms.active()->name(), "rprodemesigecen");
    QTest::mouseClick(&at<QLineEdit>("Text1"), Qt::LeftButton);
    EXPECT_EQ(forms.active(), screen);
    typeText(host, *screen, "7");
    EXPECT_EQ(at<QLabel>("Label7").text().trimmed(), "Ayşe     Yılmaz");
    EXPECT_NE(forms.loaded("rprodemesigecen"), nullptr);
}

} // namespace veldona::test
