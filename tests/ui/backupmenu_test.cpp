// The menu "Yedek" over real books: what is told, what is asked, and that nothing changes without a yes.
#include <filesystem>
#include <fstream>

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include "apps/veldona/backupmenu.h"
#include "apps/veldona/restoredialog.h"
#include "backup/proof.h"
#include "tests/support/shop.h"
#include "tests/ui/manners.h"
#include "tests/ui/window_tests.h"

namespace veldona::test {

namespace {

namespace fs = std::filesystem;

class Backups : public ::testing::Test {
protected:
    Backups() {
        shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD) VALUES ('7','Ayşe','Yılmaz')");
        QObject::connect(&watch, &QTimer::timeout, &watch, [this] { answer(); });
        watch.start(10);
    }
    // Each dialog that comes up is written down and answered.
    void answer() {
        QWidget* front = QApplication::activeModalWidget();
        if (auto* box = dynamic_cast<QMessageBox*>(front)) {
            said << box->text() + "\n" + box->informativeText();
            defaults << (box->defaultButton() ? box->defaultButton()->text() : QString());
            manners << mnemonicClashes(*box) << namelessControls(*box) << clippedWords(*box);
            for (QAbstractButton* button : box->buttons())
                if (saysYes == (box->buttonRole(button) == QMessageBox::YesRole) ||
                    box->buttons().size() == 1)
                    return button->click();
        } else if (auto* list = dynamic_cast<RestoreDialog*>(front)) {
            const auto* table = list->findChild<QTableWidget*>();
            if (table->item(0, 2)->text() == "…") return; // still being read
            rows = table->rowCount();
            firstRow = table->item(0, 1)->text() + ": " + table->item(0, 2)->text();
            if (const auto* payments = table->item(0, 4)) firstRow += "/" + payments->text();
            manners << mnemonicClashes(*list) << namelessControls(*list) << clippedWords(*list)
                    << tabFaults(*list);
            list->accept();
        }
    }
    void pay() {
        shop.run("INSERT INTO TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES "
                 "('7',1,'22/11/2026 10:00:00',125500000)");
    }
    void closeBooks() { shop.session.gBaglanti.reset(); }
    [[nodiscard]] std::string books() const { return shop.desktop.paths.toNative(kDatabasePath); }
    [[nodiscard]] fs::path folder() const { return shop.desktop.paths.toNative("C:\\VELDONA\\Yedek"); }

    Shop shop;
    WindowHost host{shop.clock};
    BackupMenu menu{host, shop.clock, shop.desktop.paths};
    QTimer watch;
    QStringList said, defaults, manners;
    bool saysYes = false;
    int rows = 0;
    QString firstRow;
};

TEST_F(Backups, TakenWhileTheBooksAreOpenAndGoneBackToByConsent) {
    menu.take();
    ASSERT_EQ(said.size(), 1);
    EXPECT_TRUE(said[0].contains("vorel-2026-11-22_103000.mdb")) << said[0].toStdString();
    EXPECT_TRUE(said[0].contains("1 müşteri, 0 satış, 0 ödeme")) << said[0].toStdString();
    pay();

    EXPECT_FALSE(menu.choose());
    EXPECT_EQ(rows, 1);
    EXPECT_EQ(firstRow, "Yedek: 1/0");
    ASSERT_EQ(said.size(), 2);
    EXPECT_TRUE(said[1].contains("1 ödeme, toplam 125,50, kaybolur")) << said[1].toStdString();
    EXPECT_EQ(defaults[1], "&Hayır");
    EXPECT_FALSE(menu.chosen());

    saysYes = true;
    EXPECT_TRUE(menu.choose());
    // Still open here, as on another workstation.
    menu.putBack();
    EXPECT_TRUE(said.back().contains("defter olduğu gibi duruyor")) << said.back().toStdString();
    EXPECT_EQ(shop.rows("SELECT COUNT(*) FROM TAKSITODENEN"), std::vector<std::string>{"1"});

    EXPECT_TRUE(menu.choose());
    closeBooks();
    menu.putBack();
    EXPECT_TRUE(said.back().contains("degistirilen-vorel-2026-11-22_103000.mdb"))
        << said.back().toStdString();
    EXPECT_EQ(backup::inspect(books()).rows.at("TAKSITODENEN"), 0);

    EXPECT_TRUE(menu.choose());
    EXPECT_EQ(rows, 2);
    EXPECT_EQ(firstRow, "Değişen defter: 1/1");
    EXPECT_TRUE(manners.isEmpty()) << manners.join("\n").toStdString();
}

TEST_F(Backups, WhatFailsIsToldAndChangesNothing) {
    menu.choose();
    EXPECT_TRUE(said.back().contains("Alınmış yedek yok")) << said.back().toStdString();
    std::ofstream(folder()) << "a file where the folder should be";
    menu.take();
    EXPECT_TRUE(said.back().contains("klasör değil, bir dosya var")) << said.back().toStdString();
    fs::remove(folder());
    menu.take();
    fs::resize_file(folder() / "vorel-2026-11-22_103000.mdb", 9000);
    saysYes = true;
    EXPECT_FALSE(menu.choose());
    EXPECT_EQ(firstRow, "Yedek: okunamıyor") << firstRow.toStdString();
    EXPECT_TRUE(said.back().contains("Bu yedeğe dönülemez")) << said.back().toStdString();
}

TEST_F(Backups, OfferedAtAStartThatFailsForADamagedFileOnly) {
    menu.take();
    closeBooks();
    EXPECT_FALSE(menu.offerAfterFailedStart());
    EXPECT_EQ(said.size(), 1) << "the books are sound";
    std::ofstream(books(), std::ios::binary) << std::string(8192, 'x');
    EXPECT_FALSE(menu.offerAfterFailedStart());
    EXPECT_EQ(defaults.back(), "&Hayır");
    saysYes = true;
    EXPECT_TRUE(menu.offerAfterFailedStart());
    menu.putBack();
    EXPECT_EQ(backup::inspect(books()).rows.at("MUSTKAYIT"), 1);
}

} // namespace

} // namespace veldona::test
