#include "apps/veldona/firststart.h"

#include <QDir>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QVBoxLayout>

#include "apps/aktar/jetheader.h"
#include "apps/aktar/moving.h"
#include "apps/hazirla/firstbooks.h"
#include "apps/veldona/backupmenu.h"
#include "apps/veldona/waiting.h"
#include "core/delivered.h"
#include "ui/filechoice.h"
#include "ui/host.h"
#include "ui/housestyle.h"

namespace veldona {

namespace {

// What was found in the old file, line by line, before anything is moved.
class FoundDialog : public QDialog {
public:
    FoundDialog(QWidget* parent, const std::vector<std::string>& found) : QDialog(parent) {
        setWindowTitle("Eski Dosyadan Taşı");
        auto* words = new QLabel("Dosyada &bulunanlar. Taşınsın mı? Eski dosya olduğu gibi kalır.");
        auto* lines = new QPlainTextEdit;
        words->setBuddy(lines);
        lines->setReadOnly(true);
        lines->setTabChangesFocus(true);
        lines->setAccessibleName("Dosyada bulunanlar");
        for (const std::string& line : found)
            lines->appendPlainText(QString::fromStdString(line));
        lines->moveCursor(QTextCursor::Start);
        auto* go = new QPushButton("&Taşı");
        auto* cancel = new QPushButton("&Vazgeç");
        go->setDefault(true);
        cancel->setAutoDefault(false);
        connect(go, &QPushButton::clicked, this, &QDialog::accept);
        connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
        auto* buttons = new QHBoxLayout;
        buttons->addStretch();
        buttons->addWidget(go);
        buttons->addWidget(cancel);
        auto* column = new QVBoxLayout(this);
        column->addWidget(words);
        column->addWidget(lines, 1);
        column->addLayout(buttons);
        resize(scaled(620), scaled(420));
    }
};

std::string joined(const std::vector<std::string>& lines) {
    std::string text;
    for (const std::string& line : lines)
        text += line + '\n';
    return text;
}

} // namespace

FirstStart::Way FirstStart::ask() const {
    QMessageBox box(QMessageBox::Question, kProgramTitle,
                    "Bu bilgisayarda henüz bir defter yok:\n" +
                        QString::fromStdString(paths_.toNative(kDatabasePath)),
                    QMessageBox::NoButton, host_.frontWindow());
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText("Yeni, Boş Defter: dükkân bu programla başlıyorsa.\n"
                           "Eski Dosyadan Taşı: eski programın dosyası (.mdb) varsa.\n"
                           "Yedekten Dön: bu programın alınmış bir yedeği varsa.\n\n"
                           "Vazgeçerseniz hiçbir şey değişmez.");
    QPushButton* empty = box.addButton("Yeni, &Boş Defter", QMessageBox::YesRole);
    const QPushButton* move = box.addButton("&Eski Dosyadan Taşı…", QMessageBox::ActionRole);
    const QPushButton* restore = box.addButton("Ye&dekten Dön…", QMessageBox::ActionRole);
    QPushButton* leave = box.addButton("&Vazgeç", QMessageBox::RejectRole);
    box.setDefaultButton(empty);
    box.setEscapeButton(leave);
    host_.run(box);
    const QAbstractButton* chosen = box.clickedButton();
    return chosen == empty     ? Way::Empty
           : chosen == move    ? Way::Move
           : chosen == restore ? Way::Restore
                               : Way::None;
}

bool FirstStart::findBooks() {
    while (!hazirla::areThereBooks(paths_)) {
        switch (ask()) {
        case Way::Empty:
            hazirla::makeFirstBooks(paths_, dialogs_);
            break;
        case Way::Move:
            moveIn();
            break;
        case Way::Restore:
            if (backups_.choose()) backups_.putBack();
            break;
        case Way::None:
            return false;
        }
    }
    return true;
}

std::optional<std::string> FirstStart::passwordOf(const std::string& file) {
    try {
        aktar::checkJetHeader(file, "");
        return std::string();
    } catch (const aktar::PasswordLacks&) {
        QInputDialog box(host_.frontWindow());
        box.setWindowTitle("Eski Dosyadan Taşı");
        box.setLabelText("Dosyanın parolası:");
        box.setTextEchoMode(QLineEdit::Password);
        box.setOkButtonText("Tamam");
        box.setCancelButtonText("Vazgeç");
        if (host_.run(box) != QDialog::Accepted) return std::nullopt;
        return box.textValue().toStdString();
    } catch (const hazirla::Refusal&) {
        return std::string(); // told of where it is read
    }
}

void FirstStart::moveIn() {
    const auto file =
        askForFile(host_, "Eski programın dosyasını seçin", "Eski defter (*.mdb)", QDir::homePath());
    if (!file) return;
    const auto password = passwordOf(*file);
    if (!password) return;
    const auto run = [&](const char* words, bool isTrial) {
        aktar::Moved moved;
        WindowSideWork(host_).run(words, [&](const Progress& progress) {
            std::string doing = words;
            moved = aktar::moveShopApart({*file, *password, isTrial}, paths_, [&](const std::string& line) {
                if (!line.empty()) doing = line;
                return progress(doing, -1);
            });
        });
        if (!moved.failure.empty())
            dialogs_.tell(joined(moved.found) + "\n" + moved.failure, Icon::Exclamation);
        return moved;
    };
    const aktar::Moved found = run("Dosya okunuyor…", true);
    if (!found.isDone) return;
    FoundDialog dialog(host_.frontWindow(), found.found);
    if (host_.run(dialog) != QDialog::Accepted) return;
    const aktar::Moved moved = run("Dosya taşınıyor…", false);
    if (moved.isDone)
        dialogs_.tell("Eski dosya taşındı ve denetlendi. Eski dosya olduğu gibi duruyor.\n\n" +
                          joined(moved.found),
                      Icon::Information);
}

} // namespace veldona
