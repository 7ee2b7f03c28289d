// Reports in real windows: the viewer's pages and mark, the preview of banded reports, and PDF files.
#include <filesystem>

#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include "core/reporting.h"
#include "core/session.h"
#include "core/startup.h"
#include "platform/desktop/desktop.h"
#include "reports/viewer.h"
#include "tests/support/raised.h"
#include "tests/ui/programwindows.h"
#include "ui/pageview.h"
#include "ui/printing.h"
#include "ui/reportpreview.h"

namespace veldona::test {

namespace {

class Reports : public ProgramWindows {
protected:
    Reports() {
        drawScreens(host);
        registerScreens(forms, session);
        session.reportDesk = &desk;
        installLayouts(session.desktop.paths);
        for (int i = 100; i < 170; ++i)
            shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD,EVIL) VALUES ('" + std::to_string(i) +
                     "','Ayşegül','Öztürk','Iğdır')");
        shop.run("INSERT INTO MUSTKAYIT (HSTNO,AD,SOYAD) VALUES ('999','Şükrü','Çağlı')");
    }

    // Does `look` while the modal window that `open` opens is in front.
    template <class Window>
    void with(const std::function<void()>& open, const std::function<void(Window&)>& look) {
        bool seen = false;
        // Who opens it may give way to events before.
        QTimer watch;
        QObject::connect(&watch, &QTimer::timeout, &host, [&] {
            auto* front = dynamic_cast<Window*>(QApplication::activeModalWidget());
            if (front == nullptr) return;
            watch.stop();
            seen = true;
            look(*front);
            front->close();
        });
        watch.start(5);
        forms.dispatch(open);
        EXPECT_TRUE(seen);
    }
    void withPreview(const std::function<void(ReportPreview&)>& look) {
        with<ReportPreview>([this] { desk.preview(document()); }, look);
    }
    // Three pages, the first of which holds a text, a line and a box.
    [[nodiscard]] static report::Document document() {
        report::Document made{"Deneme: Ğğ/İı", 210, 297, {}, {}};
        made.pages.resize(3);
        made.pages[0].items = {
            report::Box{20, 20, 60, 12, 0.5, {}, true, {250, 240, 200}},
            report::TextRun{22, 22, 56, 8, 28, "ĞÜŞİÖÇ ğüşıöç", 14, true, report::Align::Center, {}},
            report::Line{20, 40, 190, 40, 0.4, {}}};
        return made;
    }

    WindowReportDesk desk{host};
};

TEST_F(Reports, TheViewerShowsThePageTheZoomAndTheMark) {
    OturumBaslat(session);
    with<FormWindow>([this] { showTemplateReport(session, "\\Rapor\\CariListesi2.rpt"); },
                     [this](FormWindow& window) {
                         auto& viewer = dynamic_cast<FrmCrNesne&>(window.form());
                         auto& pages = widgetOf<PageView>(host, viewer, "CRViewer1");
                         window.resize(1000, 700);
                         settle();
                         EXPECT_EQ(widgetOf<QLabel>(host, viewer, "lblBookmark").text(), "1 / 3");
                         EXPECT_EQ(pages.horizontalScrollBar()->maximum(), 0)
                             << "the page is as wide as the window";
                         auto& zoom = widgetOf<QComboBox>(host, viewer, "cboZoom");
                         zoom.setFocus();
                         settle();
                         zoom.lineEdit()->selectAll();
                         typeText(host, viewer, "320");
                         EXPECT_EQ(zoom.currentText(), "320");
                         pressKey(host, viewer, Key::Enter);
                         EXPECT_EQ(zoom.currentText(), "320 %");
                         EXPECT_GT(pages.horizontalScrollBar()->maximum(), 0);
                         shop.dialogs.answers.emplace_back("şükrü");
                         QTest::keyClick(&window, Qt::Key_F, Qt::ControlModifier);
                         EXPECT_EQ(widgetOf<QLabel>(host, viewer, "lblBookmark").text(), "3 / 3");
                         leavePicture(host, viewer, "rapor-gosterici");
                     });
    EXPECT_EQ(forms.loaded("frmCrNesne"), nullptr);
}

TEST_F(Reports, EnterPressesTheBlueButton) {
    OturumBaslat(session);
    forms.show("rprodemesigecen", Kip::Modeless);
    Form& screen = *forms.loaded("rprodemesigecen");
    dynamic_cast<DateBox&>(*screen.find("dtRaporTarihiSon")).setValue(Null{});
    screen.find("cboSiralamaKriteri")->setFocus();
    pressKey(host, screen, Key::Enter);
    EXPECT_EQ(shop.said(), std::vector<std::string>{" Tarih Aralığı Seçmelisiniz "});
}

TEST_F(Reports, ThePreviewPagesAndZooms) {
    withPreview([](ReportPreview& preview) {
        auto* place = preview.findChild<QLabel*>();
        auto* zoom = preview.findChild<QComboBox*>();
        auto* pages = preview.findChild<PageView*>();
        const auto press = [&](const QString& words) {
            for (QAction* each : preview.findChild<QToolBar*>()->actions())
                if (each->text() == words) each->trigger();
        };
        EXPECT_EQ(place->text(), "1 / 3");
        press("Önceki");
        press("Sonraki");
        EXPECT_EQ(place->text(), "2 / 3");
        press("Son");
        press("Sonraki");
        EXPECT_EQ(place->text(), "3 / 3");
        QTest::keyClick(pages, Qt::Key_PageUp);
        EXPECT_EQ(place->text(), "2 / 3");
        press("İlk");
        EXPECT_EQ(place->text(), "1 / 3");
        zoom->setEditText("75");
        QTest::keyClick(zoom->lineEdit(), Qt::Key_Return);
        EXPECT_EQ(zoom->currentText(), "75 %");
        EXPECT_NEAR(pages->dotsPerMillimetre(), 0.75 * pages->logicalDpiX() / 25.4, 0.001);
        zoom->setEditText("9999");
        QTest::keyClick(zoom->lineEdit(), Qt::Key_Return);
        EXPECT_EQ(zoom->currentText(), "400 %");
        zoom->setCurrentIndex(1);
        emit zoom->textActivated(zoom->currentText());
        EXPECT_EQ(pages->verticalScrollBar()->maximum(), 0) << "the whole page is in sight";
        EXPECT_TRUE(preview.isVisible());
    });
}

TEST_F(Reports, AWheelTurnsThePageOnlyAtItsEnd) {
    withPreview([](ReportPreview& preview) {
        auto* place = preview.findChild<QLabel*>();
        auto* pages = preview.findChild<PageView*>();
        const auto turn = [&](int angle) {
            QWheelEvent event(QPointF(20, 20), pages->mapToGlobal(QPointF(20, 20)), {}, {0, angle},
                              Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
            QApplication::sendEvent(pages->viewport(), &event);
        };
        turn(-120);
        EXPECT_EQ(place->text(), "1 / 3");
        pages->verticalScrollBar()->setValue(pages->verticalScrollBar()->maximum());
        for (int i = 0; i < 7; ++i)
            turn(-15); // a touch pad
        EXPECT_EQ(place->text(), "1 / 3");
        turn(-15);
        EXPECT_EQ(place->text(), "2 / 3");
        EXPECT_EQ(pages->verticalScrollBar()->value(), 0);
        turn(120);
        EXPECT_EQ(place->text(), "1 / 3");
    });
}

TEST_F(Reports, APdfIsWrittenWholeOrNotAtAll) {
    const QTemporaryDir own;
    const std::filesystem::path folder = own.path().toStdString();
    const std::string file = (folder / "rapor.pdf").string();
    writePdf(document(), file);
    EXPECT_GT(std::filesystem::file_size(file), 1000U);
    EXPECT_EQ(bytesOf(file).substr(0, 5), "%PDF-");
    const auto error =
        raised<RuntimeError>([&] { writePdf(document(), (folder / "yok" / "rapor.pdf").string()); });
    ASSERT_TRUE(error) << "written where there is no folder";
    EXPECT_EQ(error->number(), 75);
    EXPECT_NE(error->description().find("yok/rapor.pdf"), std::string::npos) << error->description();
}

TEST_F(Reports, APdfIsNamedAfterWhoseItIsAndTheNextOneGoesBesideIt) {
    const QTemporaryDir own;
    report::Document paper = document();
    paper.fileName = "Makbuz 7 Ayşe/Ğ 2026-11-22";
    bool written = true;
    const auto ask = [&] { written = askAndWritePdf(host, nullptr, paper); };
    const auto offered = [](const QFileDialog& dialog) {
        return QFileInfo(dialog.selectedFiles().value(0)).fileName();
    };
    with<QFileDialog>(
        ask, [&](QFileDialog& dialog) { EXPECT_EQ(offered(dialog), "Makbuz 7 Ayşe Ğ 2026-11-22.pdf"); });
    EXPECT_FALSE(written);
    with<QFileDialog>(ask, [&](QFileDialog& dialog) {
        dialog.selectFile(own.filePath(offered(dialog)));
        static_cast<QDialog&>(dialog).accept();
    });
    EXPECT_TRUE(written);
    EXPECT_TRUE(QFile::exists(own.filePath("Makbuz 7 Ayşe Ğ 2026-11-22.pdf")));
    with<QFileDialog>(ask, [&](QFileDialog& dialog) {
        EXPECT_EQ(dialog.directory(), QDir(own.path()));
        EXPECT_EQ(offered(dialog), "Makbuz 7 Ayşe Ğ 2026-11-22 (2).pdf");
    });
}

// Pages of both shapes on the sheets that a printer may hold.
TEST_F(Reports, APageStandsUprightOnTheSheetOfThePrinter) {
    const QTemporaryDir own;
    struct Case {
        double width, height;
        QPageSize::PageSizeId sheet;
        QPageLayout::Orientation turned;
    };
    for (const Case& each : {Case{210, 148, QPageSize::A4, QPageLayout::Portrait},
                             {210, 148, QPageSize::A5, QPageLayout::Landscape},
                             {210, 297, QPageSize::A4, QPageLayout::Portrait},
                             {297, 210, QPageSize::A4, QPageLayout::Landscape},
                             {210, 297, QPageSize::A5, QPageLayout::Portrait}}) {
        report::Document paper = document();
        paper.pageWidth = each.width;
        paper.pageHeight = each.height;
        QPrinter printer(QPrinter::HighResolution);
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(own.filePath("kagit.pdf"));
        printer.setPageSize(QPageSize(each.sheet));
        printPages(paper, printer);
        EXPECT_EQ(printer.pageLayout().orientation(), each.turned) << each.width << " x " << each.height;
        EXPECT_EQ(printer.pageLayout().pageSize().id(), each.sheet);
    }
}

} // namespace

} // namespace veldona::test
