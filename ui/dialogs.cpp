#include "ui/dialogs.h"

#include <QApplication>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QInputDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QVBoxLayout>

#include "ui/binder.h"
#include "ui/filechoice.h"
#include "ui/host.h"
#include "ui/housestyle.h"

namespace veldona {

namespace {

QMessageBox::Icon iconOf(Icon icon) {
    switch (icon) {
    case Icon::Critical:
        return QMessageBox::Critical;
    case Icon::Question:
        return QMessageBox::Question;
    case Icon::Exclamation:
        return QMessageBox::Warning;
    case Icon::Information:
        return QMessageBox::Information;
    case Icon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

// Store errors are known by their hexadecimal number.
QString numberText(std::int32_t number) {
    return number >= 0 ? QString::number(number)
                       : "&H" + QString::number(static_cast<std::uint32_t>(number), 16).toUpper();
}

} // namespace

Answer WindowDialogs::show(const Message& message) {
    noteShown(message.text);
    QMessageBox box(iconOf(message.icon), toQt(message.title), toQt(message.text), QMessageBox::NoButton,
                    host_.frontWindow());
    box.setTextFormat(Qt::PlainText);
    if (message.buttons == Buttons::Ok) {
        box.addButton("&Tamam", QMessageBox::AcceptRole);
        host_.run(box);
        return Answer::Ok;
    }
    QPushButton* yes = box.addButton("&Evet", QMessageBox::YesRole);
    QPushButton* no = box.addButton("&Hayır", QMessageBox::NoRole);
    box.setDefaultButton(message.proposed == Answer::Yes ? yes : no);
    box.setEscapeButton(no);
    host_.run(box);
    return box.clickedButton() == yes ? Answer::Yes : Answer::No;
}

std::optional<std::string> WindowDialogs::input(const std::string& prompt, const std::string& title) {
    QInputDialog box(host_.frontWindow());
    box.setWindowTitle(toQt(title));
    box.setLabelText(toQt(prompt));
    box.setOkButtonText("Tamam");
    box.setCancelButtonText("Vazgeç");
    if (host_.run(box) != QDialog::Accepted) return std::nullopt;
    return fromQt(box.textValue());
}

std::optional<Dialogs::Password> WindowDialogs::password(const std::string& prompt, const std::string& title,
                                                         bool offersKeeping) {
    QDialog box(host_.frontWindow());
    box.setObjectName("passwordQuestion");
    box.setWindowTitle(toQt(title));
    auto* words = new QLabel(toQt(prompt));
    auto* typed = new QLineEdit;
    typed->setEchoMode(QLineEdit::Password);
    typed->setAccessibleName(toQt(prompt));
    typed->setMinimumWidth(scaled(280));
    words->setBuddy(typed);
    auto* keep = new QCheckBox("Bu makinede &sorma");
    keep->setToolTip("Parola masaüstünün anahtarlığında saklanır; bu kullanıcıya bir daha sorulmaz");
    keep->setVisible(offersKeeping);
    auto* go = new QPushButton("&Tamam");
    auto* cancel = new QPushButton("&Vazgeç");
    go->setDefault(true);
    cancel->setAutoDefault(false);
    QObject::connect(go, &QPushButton::clicked, &box, &QDialog::accept);
    QObject::connect(cancel, &QPushButton::clicked, &box, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(go);
    buttons->addWidget(cancel);
    auto* column = new QVBoxLayout(&box);
    column->setSizeConstraint(QLayout::SetFixedSize);
    column->addWidget(words);
    column->addWidget(typed);
    column->addWidget(keep);
    column->addLayout(buttons);
    if (host_.run(box) != QDialog::Accepted || typed->text().isEmpty()) return std::nullopt;
    std::string text = fromQt(typed->text());
    return Password{Secret::taken(text), keep->isChecked()};
}

std::optional<std::string> WindowDialogs::folder(const std::string& title, const std::string& start) {
    return askForFolder(host_, toQt(title), toQt(start));
}

void WindowDialogs::runtimeError(const RuntimeError& error) {
    noteShown(error.description());
    QMessageBox box(QMessageBox::Critical, QString(kProgramTitle) + " - Çalışma Zamanı Hatası",
                    "Çalışma zamanı hatası " + numberText(error.number()), QMessageBox::NoButton,
                    host_.frontWindow());
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(toQt(error.description()));
    box.addButton("&Tamam", QMessageBox::AcceptRole);
    host_.run(box);
}

void WindowDialogs::beep() {
    QApplication::beep();
}

} // namespace veldona
