// Who shows and prints what has been laid out: the windows, or the operator console.
#pragma once

#include <string>

#include "platform/report/page.h"

namespace veldona::report {

class ReportDesk {
public:
    virtual ~ReportDesk() = default;
    // A banded report's own preview; returns when it has ended.
    virtual void preview(const Document& document) = 0;
    // The viewer's report was opened: it is the report shown last.
    virtual void opened(const Document& document) = 0;
    // To a printer, or into a PDF where there is none. False where the operator thought better of it.
    virtual bool print(const Document& document) = 0;
    // A PDF; where the name ends in ".png" a picture of the first page. Error 75 where the file cannot be
    // written.
    virtual void writeFile(const Document& document, const std::string& nativePath) = 0;
};

} // namespace veldona::report
