#include "platform/report/delivered.h"

#include <algorithm>
#include <filesystem>

#include "platform/report/layoutreader.h"
#include "platform/report/reporterror.h"
#include "platform/runtime/wholefile.h"

namespace veldona::report {

namespace {

// Once it stands it is the shop's and never written again, so a half one must not come to stand there.
void writeLayout(const std::filesystem::path& path, std::string_view text) {
    if (!writeWholeFile(path.string(), text))
        throw ReportError(static_cast<std::int32_t>(ErrorNumber::PathFileAccess),
                          "Rapor dosyası yazılamadı: " + path.string());
}

} // namespace

Layout bandedLayout(const std::string& folder, const std::string& name) {
    const std::string file = name + ".xml";
    const std::filesystem::path own = std::filesystem::path(folder) / file;
    std::error_code ignored;
    if (std::filesystem::exists(own, ignored)) return readLayout(own.string());
    const auto& all = deliveredLayouts();
    const auto found =
        std::find_if(all.begin(), all.end(), [&](const DeliveredLayout& each) { return each.file == file; });
    return found == all.end() ? readLayout(own.string()) : parseLayout(found->xml, file);
}

void writeMissingLayouts(const std::string& folder) {
    std::error_code failed;
    std::filesystem::create_directories(folder, failed);
    for (const DeliveredLayout& each : deliveredLayouts()) {
        const std::filesystem::path path = std::filesystem::path(folder) / each.file;
        if (!std::filesystem::exists(path, failed)) writeLayout(path, each.xml);
    }
}

} // namespace veldona::report
