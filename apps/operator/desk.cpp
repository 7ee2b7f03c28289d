#include "apps/operator/desk.h"

#include <iostream>
#include <memory>

#include "platform/report/pagetext.h"
#include "platform/report/reporterror.h"

namespace veldona::console {

namespace {

constexpr std::int32_t kDeviceUnavailable = 68; // the platform's number

} // namespace

void ConsoleDesk::opened(const report::Document& document) {
    // It is looked at when the program has long given it up.
    const auto kept = std::make_shared<const report::Document>(document);
    sink_->show(
        {report::documentText(*kept), [this, kept](const std::string& file) { writeFile(*kept, file); }});
}

bool ConsoleDesk::print(const report::Document& document) {
    std::cout << "printed: " << document.title << ", " << document.pages.size() << " sayfa\n";
    return true;
}

void ConsoleDesk::writeFile(const report::Document& document, const std::string& nativePath) {
    if (!pdf_) throw report::ReportError(kDeviceUnavailable, "Burada dosya yazılamıyor.");
    pdf_(document, nativePath);
}

} // namespace veldona::console
