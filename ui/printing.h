// Reports on paper, and as PDF files.
#pragma once

#include <string>

#include "platform/report/page.h"

class QPrinter;
class QWidget;

namespace veldona {

class WindowHost;

// Needs a QGuiApplication, but no display. Error 75 where the file cannot be written; one that stood there
// before stays then as it was.
void writePdf(const report::Document& document, const std::string& nativePath);

// The same; where the name ends in ".png", a picture of the first page in its place.
void writePages(const report::Document& document, const std::string& nativePath);

// The pages that the printer was asked for, each upright on a sheet of its own, whichever sheet that is: a
// half one in the upper half of an A4. Error 482 where the printer refuses.
void printPages(const report::Document& document, QPrinter& printer);

// Asks for a printer and prints; where there is none, asks for a file and writes a PDF. Both begin with what
// was chosen the last time. False where the operator thought better of it.
bool askAndPrint(WindowHost& host, QWidget* parent, const report::Document& document);
bool askAndWritePdf(WindowHost& host, QWidget* parent, const report::Document& document);

} // namespace veldona
