// Shows reports as a scenario sees them: each is kept as the one shown last, and a preview ends at once.
#pragma once

#include <functional>
#include <string>

#include "apps/operator/reportsink.h"
#include "platform/report/desk.h"

namespace veldona::console {

using WritePdf = std::function<void(const report::Document&, const std::string& nativePath)>;

class ConsoleDesk : public report::ReportDesk {
public:
    ConsoleDesk(ReportSink& sink, WritePdf pdf) : sink_(&sink), pdf_(std::move(pdf)) {}

    void preview(const report::Document& document) override { opened(document); }
    void opened(const report::Document& document) override;
    // What went to the printer is told on standard output.
    bool print(const report::Document& document) override;
    void writeFile(const report::Document& document, const std::string& nativePath) override;

private:
    ReportSink* sink_;
    WritePdf pdf_; // empty: nobody here can write one
};

} // namespace veldona::console
