#include "ui/printing.h"

#include <algorithm>

#include <QDir>
#include <QFileDialog>
#include <QImage>
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
#include "ui/filechoice.h"
#include "ui/host.h"
#include "ui/pagepainter.h"

namespace veldona {

namespace {

constexpr int kPdfDotsPerInch = 1200;
constexpr int kPictureDotsPerInch = 200;
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
                              "Dosya yazılamadı: " + path.toStdString());
}

// The first page on the sheet that stands ready, each further one on a new sheet.
template <class Device>
void paintPages(QPainter& painter, Device& device, const report::Document& document, std::size_t first,
                std::size_t last, double shrinkage = 1) {
    const double dots = shrinkage * device.resolution() / kMillimetresPerInch;
    for (std::size_t i = first; i <= last; ++i) {
        if (i > first) device.newPage();
        paintPage(painter, document.pages[i], dots);
    }
}

constexpr const char* kFolderKey = "pdf/folder";
constexpr const char* kPrinterKey = "printer/name";
constexpr qsizetype kLongestName = 120; // letters; a file's name has room for 255 bytes

// Whose paper it is, as a file can be called.
QString paperName(const report::Document& document) {
    static const QRegularExpression unfit("[\\\\/:*?\"<>|\\x00-\\x1f]");
    QString name = QString::fromStdString(document.fileName.empty() ? document.title : document.fileName);
    name = name.replace(unfit, " ").simplified().left(kLongestName).trimmed();
    return name.isEmpty() ? "Rapor" : name;
}

// With a number behind it where a file of that name stands already.
QString freeFile(const QString& name, const QDir& folder) {
    QString file = name + ".pdf";
    for (int i = 2; folder.exists(file); ++i)
        file = QString("%1 (%2).pdf").arg(name).arg(i);
    return file;
}

QDir lastFolder(const UserSettings& settings) {
    const QString documents = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
    for (const QString& folder : {settings.value(kFolderKey).toString(), documents})
        if (!folder.isEmpty() && QDir(folder).exists()) return QDir(folder);
    return QDir::home();
}

QString paperKey(const report::Document& document) {
    return QString("printer/paper%1x%2").arg(document.pageWidth).arg(document.pageHeight);
}

bool isHalfSheet(const report::Document& document) {
    return document.pageWidth * document.pageHeight < 40000; // an A5 has 31,080 mm², an A4 62,370
}

// The sheet to ask for: the one of the last time; else a half sheet only where the printer holds those.
QPageSize sheetFor(const report::Document& document, const QPrinter& printer, const UserSettings& settings) {
    const QVariant last = settings.value(paperKey(document));
    if (last.isValid()) return QPageSize(static_cast<QPageSize::PageSizeId>(last.toInt()));
    const bool holdsHalves = printer.pageLayout().pageSize().id() == QPageSize::A5;
    if (isHalfSheet(document) && !holdsHalves) return QPageSize(QPageSize::A4);
    return layoutOf(document).pageSize();
}

bool fits(const report::Document& document, QSizeF sheet) {
    constexpr double tolerance = 1; // millimetres: half an A4 is a little more than an A5
    return document.pageWidth <= sheet.width() + tolerance &&
           document.pageHeight <= sheet.height() + tolerance;
}

// The printer's sheet turned so that the page stands upright on it, from its top left corner: a half sheet in
// the upper half of a whole one. A page that is larger than any way of laying the sheet gets the one nearer
// to its own shape.
void layUpright(QPrinter& printer, const report::Document& document) {
    const QSizeF portrait = printer.pageLayout().pageSize().size(QPageSize::Millimeter);
    const bool isWide = document.pageWidth > document.pageHeight;
    const bool turns = !fits(document, portrait) && (fits(document, portrait.transposed()) || isWide);
    printer.setFullPage(true);
    printer.setPageOrientation(turns ? QPageLayout::Landscape : QPageLayout::Portrait);
}

// How much a page has to shrink to fit the printer's sheet; 1 where it needn't.
double shrinkage(const QPrinter& printer, const report::Document& document) {
    const QSizeF sheet = printer.pageLayout().fullRect(QPageLayout::Millimeter).size();
    if (fits(document, sheet)) return 1;
    return std::min(sheet.width() / document.pageWidth, sheet.height() / document.pageHeight);
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

void writePages(const report::Document& document, const std::string& nativePath) {
    if (!nativePath.ends_with(".png")) return writePdf(document, nativePath);
    const double dots = kPictureDotsPerInch / kMillimetresPerInch;
    QImage picture(QSize(qRound(document.pageWidth * dots), qRound(document.pageHeight * dots)),
                   QImage::Format_RGB32);
    picture.fill(Qt::white);
    {
        QPainter painter(&picture);
        painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
        paintPage(painter, document.pages.front(), dots);
    }
    const QString path = QString::fromStdString(nativePath);
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly) || !picture.save(&file, "PNG") || !file.commit()) refuseFile(path);
}

void printPages(const report::Document& document, QPrinter& printer) {
    const auto count = static_cast<int>(document.pages.size());
    const bool isRange = printer.printRange() == QPrinter::PageRange && printer.fromPage() > 0;
    const int first = isRange ? std::clamp(printer.fromPage(), 1, count) : 1;
    const int last = isRange ? std::clamp(printer.toPage(), first, count) : count;
    layUpright(printer, document);
    QPainter painter;
    if (!painter.begin(&printer))
        throw report::ReportError(kPrinterError,
                                  "Yazıcıya yazılamadı: " + printer.printerName().toStdString());
    paintPages(painter, printer, document, static_cast<std::size_t>(first - 1),
               static_cast<std::size_t>(last - 1), shrinkage(printer, document));
}

bool askAndPrint(WindowHost& host, QWidget* parent, const report::Document& document) {
    const QStringList printers = QPrinterInfo::availablePrinterNames();
    if (printers.isEmpty()) return askAndWritePdf(host, parent, document);
    const QString last = host.settings.value(kPrinterKey).toString();
    QPrinter printer(QPrinter::HighResolution);
    if (printers.contains(last)) printer.setPrinterName(last);
    printer.setDocName(paperName(document));
    printer.setPageSize(sheetFor(document, printer, host.settings));
    layUpright(printer, document);
    QPrintDialog dialog(&printer, parent);
    dialog.setWindowTitle("Yazdır");
    dialog.setMinMax(1, static_cast<int>(document.pages.size()));
    if (host.run(dialog) != QDialog::Accepted) return false;
    if (printer.outputFormat() == QPrinter::NativeFormat)
        host.settings.set(kPrinterKey, printer.printerName());
    host.settings.set(paperKey(document), static_cast<int>(printer.pageLayout().pageSize().id()));
    printPages(document, printer);
    return true;
}

bool askAndWritePdf(WindowHost& host, QWidget* parent, const report::Document& document) {
    QFileDialog dialog(parent, "PDF olarak kaydet");
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setNameFilter("PDF belgesi (*.pdf)");
    dialog.setDefaultSuffix("pdf");
    dressFileBox(dialog, "Kaydet");
    const QDir folder = lastFolder(host.settings);
    dialog.setDirectory(folder);
    dialog.selectFile(freeFile(paperName(document), folder));
    if (host.run(dialog) != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return false;
    const QString file = dialog.selectedFiles().front();
    writePdf(document, file.toStdString());
    host.settings.set(kFolderKey, QFileInfo(file).path());
    return true;
}

} // namespace veldona
