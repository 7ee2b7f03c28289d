// Writes reports as PDF files, or their first page as a picture, with the fonts of the window system, but
// without a display.
#pragma once

#include <memory>
#include <string>

#include "platform/report/page.h"

class QGuiApplication;

namespace veldona::console {

class PdfWriter {
public:
    // The arguments of the process, which it may need to start the window system.
    PdfWriter(int& count, char** arguments);
    ~PdfWriter();
    PdfWriter(const PdfWriter&) = delete;
    PdfWriter& operator=(const PdfWriter&) = delete;

    // Error 75 where the file cannot be written.
    void write(const report::Document& document, const std::string& nativePath);

private:
    int& count_;
    char** arguments_;
    std::unique_ptr<QGuiApplication> application_; // only where none stands, and not before it is needed
};

} // namespace veldona::console
