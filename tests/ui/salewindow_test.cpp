// The sale screen as a real window: a cell is edited under the mouse, Enter goes on from cell to cell, and
// the rows typed are the sale's schedule in the books.
#include <QLineEdit>
#include <QTableView>
#include <QTest>

#include <gtest/gtest.h>

#include "core/session.h"
#include "core/showscreen.h"
#include "sales/salescreen.h"
#include "tests/ui/programwindows.h"
#include "ui/datefield.h"

namespace veldona::test {

namespace {

class SaleWindow : public ProgramWindows {
protected:
    SaleWindow() {
        shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD) VALUES ('7','Ayşe','Yılmaz')");
        start();
        FormKayit& record = session.gFormKayit;
        record.Kip = FormModu::Yeni;
        record.CariID = 1;
        record.HSTNO = session.gHSTNO = "7";
        record.Unvan = "Ayşe  Yılmaz";
        showScreen(session, "frmSatis", Kip::Modeless);
        screen = dynamic_cast<FrmSatis*>(forms.active());
        host.window(*screen)->resize(1000, 600);
        host.flush();
        settle();
    }

    template <class Widget> Widget& at(const char* name) { return widgetOf<Widget>(host, *screen, name); }

    void typeInto(const char* name, const char* text) {
        at<QWidget>(name).setFocus();
        typeText(host, *screen, text);
        settle();
    }
    QRect cellOf(QTableView& sheet, int row, int column) {
        const QRect shown = sheet.visualRect(sheet.model()->index(row, column));
        return {sheet.viewport()->mapToGlobal(shown.topLeft()), shown.size()};
    }
    static bool liesOver(const QWidget& editor, const QRect& cell) {
        return editor.isVisible() &&
               QRect(editor.mapToGlobal(QPoint()), editor.size()).contains(cell.center());
    }

    FrmSatis* screen = nullptr;
};

TEST_F(SaleWindow, CellsAreEditedUnderTheMouseAndFollowedByEnter) {
    leavePicture(host, *screen, "satis-bos");
    typeInto("MskToplamUcret", "12500");
    typeInto("MskAlinanPesinat", "2500");
    typeInto("MskTaksitAdedi", "12");
    leavePicture(host, *screen, "satis-plan");
    auto& sheet = at<QTableView>("grdYapilacakOdeme");
    EXPECT_TRUE(sheet.isRowHidden(0));
    EXPECT_EQ(sheet.model()->headerData(1, Qt::Horizontal, Qt::DisplayRole).toString(), "Miktar");
    EXPECT_GE(sheet.columnWidth(1), sheet.fontMetrics().horizontalAdvance("2.500,00"));

    // The last row, which is scrolled to, and from it into a new one.
    const int last = sheet.model()->rowCount() - 1;
    sheet.scrollToBottom();
    settle();
    QTest::mouseClick(sheet.viewport(), Qt::LeftButton, {},
                      sheet.visualRect(sheet.model()->index(last, 1)).center());
    settle();
    EXPECT_TRUE(liesOver(at<QWidget>("txtYapilacakOdmDrug"), cellOf(sheet, last, 1)));
    typeText(host, *screen, "75,5");
    pressKey(host, *screen, Key::Enter);
    EXPECT_TRUE(liesOver(at<QWidget>("dtYapilacakOdmTarh"), cellOf(sheet, last, 2)));
    EXPECT_FALSE(at<QWidget>("txtYapilacakOdmDrug").isVisible());
    typeText(host, *screen, "01012028");
    pressKey(host, *screen, Key::Enter);
    pressKey(host, *screen, Key::Enter);
    settle();
    leavePicture(host, *screen, "satis-hucre");
    EXPECT_EQ(sheet.model()->rowCount(), last + 2);
    EXPECT_TRUE(liesOver(at<QWidget>("txtYapilacakOdmDrug"), cellOf(sheet, last + 1, 1)));
    EXPECT_TRUE(sheet.viewport()->rect().contains(sheet.visualRect(sheet.model()->index(last + 1, 1))));

    // Scrolled away, the editor leaves with its cell.
    sheet.scrollToTop();
    settle();
    EXPECT_LE(at<QWidget>("txtYapilacakOdmDrug").geometry().right(), 0);

    pressKey(host, *screen, Key::F2);
    EXPECT_EQ(shop.said(), std::vector<std::string>{"İşlem Tamamlandı"});
    EXPECT_EQ(query("SELECT ODTRH,ODMIKTAR FROM URUNSAT WHERE ODMIKTAR=75500000"),
              std::vector<std::string>{"01/01/2028|75500000"});
    EXPECT_EQ(query("SELECT COUNT(*) FROM URUNSAT"), std::vector<std::string>{"14"});
}

} // namespace

} // namespace veldona::test
