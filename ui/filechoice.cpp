#include "ui/filechoice.h"

#include <QApplication>
#include <QFileDialog>

#include "ui/host.h"
#include "ui/turkishtexts.h"

namespace veldona {

namespace {

std::optional<std::string> run(WindowHost& host, QFileDialog& box) {
    if (host.run(box) != QDialog::Accepted || box.selectedFiles().isEmpty()) return std::nullopt;
    return box.selectedFiles().front().toStdString();
}

// Over a dialog that is open already.
QWidget* inFront(const WindowHost& host) {
    QWidget* modal = QApplication::activeModalWidget();
    return modal != nullptr ? modal : host.frontWindow();
}

} // namespace

void dressFileBox(QFileDialog& box, const QString& accept) {
    box.setOption(QFileDialog::DontUseNativeDialog);
    showTurkishTimes(box);
    box.setLabelText(QFileDialog::LookIn, "Klasör:");
    box.setLabelText(QFileDialog::FileName, "Dosya adı:");
    box.setLabelText(QFileDialog::FileType, "Tür:");
    box.setLabelText(QFileDialog::Accept, accept);
    box.setLabelText(QFileDialog::Reject, "Vazgeç");
}

std::optional<std::string> askForFolder(WindowHost& host, const QString& title, const QString& start) {
    QFileDialog box(inFront(host), title, start);
    box.setFileMode(QFileDialog::Directory);
    box.setOption(QFileDialog::ShowDirsOnly);
    dressFileBox(box, "Seç");
    box.setLabelText(QFileDialog::FileName, "Klasör adı:");
    return run(host, box);
}

std::optional<std::string> askForFile(WindowHost& host, const QString& title, const QString& filter,
                                      const QString& start) {
    QFileDialog box(inFront(host), title, start);
    box.setFileMode(QFileDialog::ExistingFile);
    box.setNameFilter(filter);
    dressFileBox(box, "Seç");
    return run(host, box);
}

} // namespace veldona
