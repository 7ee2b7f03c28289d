#include "apps/operator/pdfwriter.h"

#include <QGuiApplication>

#include "ui/printing.h"

namespace veldona::console {

PdfWriter::PdfWriter(int& count, char** arguments) : count_(count), arguments_(arguments) {}

PdfWriter::~PdfWriter() = default;

void PdfWriter::write(const report::Document& document, const std::string& nativePath) {
    if (!QCoreApplication::instance()) {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        application_ = std::make_unique<QGuiApplication>(count_, arguments_);
    }
    writePages(document, nativePath);
}

} // namespace veldona::console
