// The life of windows: modal ones, dialogs, waits, ends.
#include <QApplication>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>

#include "tests/ui/trialform.h"
#include "tests/ui/window_tests.h"
#include "ui/dialogs.h"
#include "ui/windowdesktop.h"

namespace veldona::test {

namespace {

using Told = std::vector<std::string>;

struct Question : Form {
    explicit Question(Forms& all) : Form(all, "frmSoru", "Soru") {}
    CommandButton Kapat{*this, "Kapat", "Kapat"};
};

void drawQuestion(QWidget& window) {
    auto* column = new QVBoxLayout(&window);
    auto* button = new QPushButton(&window);
    button->setObjectName("Kapat");
    column->addWidget(button);
}

class Life : public TrialWindow {
protected:
    Life() {
        host.draw("frmSoru", drawQuestion);
        forms.add("frmSoru", [this](Forms& all) {
            auto made = std::make_unique<Question>(all);
            made->Kapat.onClick = [this, question = made.get()] {
                note("closing");
                forms.unload(*question);
            };
            return made;
        });
    }
    void pressButton() { at<QPushButton>("Dugme").click(); }
};

} // namespace

TEST_F(Life, AProcessThatEndsInAModalScreenPassesThemAll) {
    bool told = false;
    host.onProcessEnded = [&] { told = true; };
    form->Button.onClick = [this] {
        forms.show("frmSoru", Kip::Modal);
        note("after");
    };
    QTimer::singleShot(0, &host, [this] {
        auto* question = dynamic_cast<Question*>(forms.loaded("frmSoru"));
        question->Kapat.onClick = [this] { forms.endProcess(); };
        widgetOf<QPushButton>(host, *question, "Kapat").click();
    });
    pressButton();
    EXPECT_TRUE(told);
    EXPECT_TRUE(log.empty());
    EXPECT_TRUE(forms.ended());
}

TEST_F(Life, AScreenThatClosesItselfAndTheWindowsButton) {
    bool allClosed = false;
    host.onAllClosed = [&] { allClosed = true; };
    form->Button.onClick = [this] { forms.unload(*form); };
    pressButton();
    EXPECT_TRUE(allClosed);
    settle();
    forms.show("frmDeneme", Kip::Modeless);
    form->onUnload = [this] { note("unload"); };
    host.window(*form)->close();
    EXPECT_EQ(told(), (Told{"unload"}));
    EXPECT_TRUE(forms.loadedForms().empty());
}

TEST_F(Life, MessageYesNo) {
    WindowDialogs dialogs(host);
    const auto answerWith = [](const QString& caption) {
        QTimer::singleShot(0, [caption] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            ASSERT_NE(box, nullptr);
            for (QAbstractButton* each : box->buttons())
                if (each->text() == caption) each->click();
        });
    };
    answerWith("&Hayır");
    EXPECT_EQ(dialogs.show({"Eminmisiniz", "Kayıt Sil", Icon::Question, Buttons::YesNo}), Answer::No);
    answerWith("&Evet");
    EXPECT_EQ(dialogs.show({"Eminmisiniz", "Kayıt Sil", Icon::Question, Buttons::YesNo}), Answer::Yes);
    QTimer::singleShot(0, [] { QTest::keyClick(QApplication::activeModalWidget(), Qt::Key_Return); });
    EXPECT_FALSE(dialogs.confirmDeleting("Silinsin mi"));
    QString text;
    QTimer::singleShot(0, [&text] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        text = box->text() + "|" + box->informativeText();
        QTest::keyClick(box, Qt::Key_Return);
    });
    dialogs.runtimeError(RuntimeError(static_cast<std::int32_t>(0x80040E14), "<b>Sözdizimi</b> hatası"));
    EXPECT_EQ(text, "Çalışma zamanı hatası &H80040E14|<b>Sözdizimi</b> hatası");
}

// What is shown during a long procedure is what the model holds by then.
TEST_F(Life, TheScreenIsUpToDateOnceEventsAreReleased) {
    WindowPump pump(host);
    form->Button.onClick = [&] {
        form->Text.setText("yarısı");
        pump.doEvents();
        note(at<QLineEdit>("Metin").text().toStdString());
    };
    pressButton();
    EXPECT_EQ(told(), (Told{"yarısı"}));
}

// The operator closes the screen in the middle of its own load; what is left of the load runs to its end.
TEST_F(Life, AScreenThatClosesWhileItLoads) {
    WindowPump pump(host);
    form->Text.onChange = [&] {
        QTimer::singleShot(0, &host, [this] { host.window(*form)->close(); });
        pump.doEvents();
        pump.doEvents();
        form->Ikinci.setText("sonu");
        note(form->Ikinci.text());
    };
    form->Text.setFocus();
    typeText(host, *form, "5");
    EXPECT_EQ(told(), (Told{"sonu"}));
    EXPECT_TRUE(forms.loadedForms().empty());
    settle();
}

TEST_F(Life, WaitingTimeAndCursorComeBack) {
    WindowClock waiting;
    waiting.attach(&host);
    QElapsedTimer elapsed;
    elapsed.start();
    bool waitsUnderCursor = false;
    QTimer::singleShot(5, [&] { waitsUnderCursor = QGuiApplication::overrideCursor() != nullptr; });
    waiting.wait(40);
    EXPECT_GE(elapsed.elapsed(), 40);
    EXPECT_TRUE(waitsUnderCursor);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    form->setPointer(MousePointer::Wait);
    form->setEnabled(false);
    EXPECT_EQ(QGuiApplication::overrideCursor()->shape(), Qt::WaitCursor);
    EXPECT_FALSE(host.window(*form)->isEnabled());
    form->setEnabled(true);
    form->setPointer(MousePointer::Default);
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(Life, TheTimerRunsOnlyWhereAllowed) {
    int ticks = 0;
    form->Saat.onTimer = [&] { ++ticks; };
    QTest::qWait(20);
    EXPECT_EQ(ticks, 0);
    host.timersRun = true;
    form->Saat.setToolTip("değişti"); // any change has the timer looked at again
    QTRY_VERIFY(ticks > 0);
}

TEST_F(Life, AControlWithoutADrawingIsToldByItsName) {
    EXPECT_DEATH(
        {
            host.draw("frmSoru", [](QWidget& window) {
                auto* wrong = new QLineEdit(&window);
                wrong->setObjectName("Kapat");
                wrong->setText("Kapat");
                window.setProperty("withoutWidget", "Yok");
            });
            forms.load("frmSoru");
        },
        "frmSoru.*Yok \\(no such control\\), Kapat \\(is drawn with words.*, Kapat \\(is drawn as "
        "QLineEdit\\)");
}

} // namespace veldona::test
