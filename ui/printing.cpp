#include "ui/printing.h"

#include <QDir>
#include <QFileDialog>
#include <QPageLayout>
#include <QPainter>
#include <QPdfWriter>
#include <QPrintDialog>
#include <QPrinter>
#include <QPrinterInfo>
#include <QRegularExpression>
#include <QSaveFile>
#include <QStandardPaths>

#include "platform/report/reporterror.h"
#include "ui/host.h"
#include "ui/pagepainter.h"

namespace veldona {

namespace {

constexpr int kPdfDotsPerInch = 1200;
constexpr double kMillimetresPerInch = 25.4;
constexpr std::int32_t kPrinterError = 482; // the platform's number

QPageLayout layoutOf(const report::Document& document) {
    const bool isWide = document.pageWidth > document.pageHeight;
    QSizeF paper(document.pageWidth, document.pageHeight);
    if (isWide) paper.transpose();
    return {QPageSize(paper, QPageSize::Millimeter, QString(), QPageSize::FuzzyOrientationMatch),
            isWide ? QPageLayout::Landscape : QPageLayout::Portrait, QMarginsF()};
}

[[noreturn]] void refuseFile(const QString& path) {
    throw report::ReportError(static_cast<std::int32_t>(ErrorNumber::PathFileAccess),
                              "PDF dosyası yazılamadı: " + path.toStdString());
}

// The first page on the sheet that stands ready, each further one on a new sheet.
template <class Device>
void paintPages(QPainter& painter, Device& device, const report::Document& document, std::size_t first,
                std::size_t last) {
    const double dots = device.resolution() / kMillimetresPerInch;
    for (std::size_t i = first; i <= last; ++i) {
        if (i > first) device.newPage();
        paintPage(painter, document.pages[i], dots);
    }
}

// The report's title, as a file can be called.
QString suggestedPath(const report::Document& document) {
    static const QRegularExpression unfit("[\\\\/:*?\"<>|\\x00-\\x1f]");
    QString name = QString::fromStdString(document.title).replace(unfit, " ").simplified();
    if (name.isEmpty()) name = "Rapor";
    return QDir(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation)).filePath(name + ".pdf");
}

} // namespace

void writePdf(const report::Document& document, const std::string& nativePath) {
    const QString path = QString::fromStdString(nativePath);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly)) refuseFile(path);
    {
        QPdfWriter writer(&file);
        writer.setTitle(QString::fromStdString(document.title));
        writer.setCreator("Veldona");
        writer.setResolution(kPdfDotsPerInch);
        writer.setPageLayout(layoutOf(document));
        QPainter painter(&writer);
        paintPages(painter, writer, document, 0, document.pages.size() - 1);
    }
    if (!file.commit()) refuseFile(path);
}

void printPages(const report::Document& document, QPrinter& printer) {
    const auto count = static_cast<int>(document.pages.size());
    const bool isRange = printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0;
    const int first = isRange ? std::clamp(printer.fromPage(), 1, count) : 1;
    const int last = isRange ? std::clamp(printer.toPage(), first, count) : count;
    QPainter painter;
    if (!painter.begin(&printer))
        throw report::ReportError(kPrinterError,
                                  "Yazıcıya yazılamadı: " + printer.printerName().toStdString());
    paintPages(painter, printer, document, static_cast<std::size_t>(first - 1),
               static_cast<std::size_t>(last - 1));
}

bool askAndPrint(WindowHost& host, QWidget* parent, const report::Document& document) {
    if (QPrinterInfo::availablePrinterNames().isEmpty()) return askAndWritePdf(host, parent, document);
    QPrinter printer(QPrinter::HighResolution);
    printer.setDocName(QString::fromStdString(document.title));
    printer.setFullPage(true);
    printer.setPageLayout(layoutOf(document));
    QPrintDialog dialog(&printer, parent);
    dialog.setWindowTitle("Yazdır");
    dialog.setMinMax(1, static_cast<int>(document.pages.size()));
    if (host.run(dialog) != QDialog::Accepted) return false;
    printPages(document, printer);
    return true;
}

bool askAndWritePdf(WindowHost& host, QWidget* parent, const report::Document& document) {
    QFileDialog dialog(parent, "PDF olarak kaydet");
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilter("PDF belgesi (*.pdf)");
    dialog.setDefaultSuffix("pdf");
    dialog.setLabelText(QFileDialog::LookIn, "Klasör:");
    dialog.setLabelText(QFileDialog::FileName, "Dosya adı:");
    dialog.setLabelText(QFileDialog::FileType, "Tür:");
    dialog.setLabelText(QFileDialog::Accept, "Kaydet");
    dialog.setLabelText(QFileDialog::Reject, "Vazgeç");
    const QString suggested = suggestedPath(document);
    dialog.setDirectory(QFileInfo(suggested).path());
    dialog.selectFile(QFileInfo(suggested).fileName());
    if (host.run(dialog) != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return false;
    writePdf(document, dialog.selectedFiles().front().toStdString());
    return true;
}

} // namespace veldona
