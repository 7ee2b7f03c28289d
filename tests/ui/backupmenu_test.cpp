// The way back to a backup over real books: what is told and asked, and that nothing changes without a yes.
#include <filesystem>
#include <fstream>
#include <thread>

#include <QApplication>
#include <QFileDialog>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include "apps/veldona/backupmenu.h"
#include "apps/veldona/firststart.h"
#include "apps/veldona/restoredialog.h"
#include "apps/veldona/waiting.h"
#include "backup/proof.h"
#include "backup/taking.h"
#include "core/delivered.h"
#include "core/session.h"
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
            lookAt(*box);
            for (QAbstractButton* button : box->buttons())
                if (saysYes == (box->buttonRole(button) == QMessageBox::YesRole) ||
                    box->buttons().size() == 1)
                    return button->click();
        } else if (auto* list = dynamic_cast<RestoreDialog*>(front)) {
            const auto* table = list->findChild<QTableWidget*>();
            if (table->rowCount() > 0 && table->item(0, 2)->text() == "…") return; // still being read
            rows = table->rowCount();
            if (rows > 0) firstRow = table->item(0, 1)->text() + ": " + table->item(0, 2)->text();
            if (const auto* payments = rows > 0 ? table->item(0, 4) : nullptr)
                firstRow += "/" + payments->text();
            lookAt(*list);
            manners << tabFaults(*list);
            if (table->rowCount() == 0) return list->reject();
            list->accept();
        } else if (auto* bar = front ? front->findChild<QProgressBar*>() : nullptr;
                   bar && bar->value() == 40) {
            lookAt(*front);
            leavePicture(*front, "yedek-bekleme");
            QTest::keyClick(front, Qt::Key_Escape);
        }
    }
    void lookAt(const QWidget& dialog) {
        manners << mnemonicClashes(dialog) << namelessControls(dialog) << clippedWords(dialog);
    }
    void pay() {
        shop.run("INSERT INTO TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES "
                 "('7',1,'22/11/2026 10:00:00',125500000)");
    }
    void take() { backup::takeBackup(books(), folder(), shop.clock.now()); }
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
    take();
    pay();

    EXPECT_FALSE(menu.choose());
    EXPECT_EQ(rows, 1);
    EXPECT_EQ(firstRow, "Yedek: 1/0");
    ASSERT_EQ(said.size(), 1);
    EXPECT_TRUE(said[0].contains("1 ödeme, toplam 125,50, kaybolur")) << said[0].toStdString();
    EXPECT_EQ(defaults[0], "&Hayır");
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
    EXPECT_FALSE(menu.choose());
    EXPECT_EQ(rows, 0);
    take();
    fs::resize_file(folder() / "vorel-2026-11-22_103000.mdb", 9000);
    saysYes = true;
    EXPECT_FALSE(menu.choose());
    EXPECT_EQ(firstRow, "Yedek: okunamıyor") << firstRow.toStdString();
    EXPECT_TRUE(said.back().contains("Bu yedeğe dönülemez")) << said.back().toStdString();
}

TEST_F(Backups, OfferedAtAStartThatFailsForADamagedFileOnly) {
    take();
    closeBooks();
    EXPECT_FALSE(menu.offerAfterFailedStart());
    EXPECT_TRUE(said.isEmpty()) << "the books are sound";
    std::ofstream(books(), std::ios::binary) << std::string(8192, 'x');
    EXPECT_FALSE(menu.offerAfterFailedStart());
    EXPECT_EQ(defaults.back(), "&Hayır");
    saysYes = true;
    EXPECT_TRUE(menu.offerAfterFailedStart());
    menu.putBack();
    EXPECT_EQ(backup::inspect(books()).rows.at("MUSTKAYIT"), 1);
}

TEST_F(Backups, WorkBesideTheWindowsShowsHowFarItIsAndIsGivenUpByEscape) {
    WindowSideWork beside(host);
    int looks = 0;
    beside.run("Yedek alınıyor", [&looks](const Progress& progress) {
        for (; progress("Defter kopyalanıyor…", 40); ++looks)
            std::this_thread::sleep_for(std::chrono::milliseconds(2));
    });
    EXPECT_GT(looks, 0);
    EXPECT_TRUE(manners.isEmpty()) << manners.join("\n").toStdString();
    EXPECT_THROW(beside.run("x", [](const Progress&) { throw std::runtime_error("x"); }), std::runtime_error);
}

// The whole road, in real windows: the question, the file, what was found in it, the books.
TEST_F(Backups, TheFirstStartMovesAnOldFileIn) {
    const TemporaryFolder drive;
    const Paths paths(drive.path().string());
    BackupMenu none(host, shop.clock, paths);
    bool isGivenUp = true;
    const auto walk = [&] {
        auto* front = dynamic_cast<QDialog*>(QApplication::activeModalWidget());
        if (auto* box = dynamic_cast<QMessageBox*>(front)) {
            for (QAbstractButton* button : box->buttons())
                if (button->text() == (isGivenUp ? "&Vazgeç" : "&Eski Dosyadan Taşı…"))
                    return button->click();
        } else if (auto* files = dynamic_cast<QFileDialog*>(front)) {
            files->selectFile(VELDONA_VERI "/dukkan-jet4.mdb");
            front->accept();
        } else if (const auto* found = front ? front->findChild<QPlainTextEdit*>() : nullptr) {
            said << found->toPlainText();
            lookAt(*front);
            front->accept();
        }
    };
    watch.stop();
    QTimer walking;
    QObject::connect(&walking, &QTimer::timeout, &walking, walk);
    walking.start(10);
    RecordingDialogs dialogs;
    EXPECT_FALSE(FirstStart(host, dialogs, paths, none).findBooks());
    isGivenUp = false;
    EXPECT_TRUE(FirstStart(host, dialogs, paths, none).findBooks());
    ASSERT_EQ(said.size(), 1);
    EXPECT_TRUE(said[0].contains("MUSTKAYIT: 12 satır")) << said[0].toStdString();
    ASSERT_EQ(dialogs.said.size(), 1U);
    EXPECT_NE(dialogs.said[0].text.find("Toplam: satış 59.574,02"), std::string::npos)
        << dialogs.said[0].text;
    EXPECT_EQ(backup::inspect(paths.toNative(kDatabasePath)).rows.at("MUSTKAYIT"), 12);
    EXPECT_TRUE(manners.isEmpty()) << manners.join("\n").toStdString();
}

} // namespace

} // namespace veldona::test
