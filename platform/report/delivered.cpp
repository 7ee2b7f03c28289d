#include "platform/report/delivered.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "platform/report/layoutreader.h"
#include "platform/report/reporterror.h"
#include "platform/runtime/wholefile.h"

namespace veldona::report {

namespace {

// What an earlier release delivered. A shop that has it byte for byte has never edited it, so it gets the new
// one. Whoever changes a delivered layout adds the digest of the one that the last release brought.
struct FormerLayout {
    std::string_view file;
    std::uint64_t digest;
};
constexpr std::array<FormerLayout, 4> kFormerLayouts = {{{"SozlesmeAntetli.rpt", 0xde4d957177993565},
                                                         {"TahsilatMakbuzu.rpt", 0xafff4ce0074685bb},
                                                         {"CariListesi2.rpt", 0x320e77e5c8084e50},
                                                         {"gungecodmrprYTL.xml", 0x15f57a2d5bdfb1e3}}};

// FNV-1a.
std::uint64_t digestOf(std::string_view bytes) {
    std::uint64_t digest = 0xcbf29ce484222325;
    for (const char c : bytes)
        digest = (digest ^ static_cast<unsigned char>(c)) * 0x100000001b3;
    return digest;
}

bool isFormer(const std::filesystem::path& path, std::string_view file) {
    std::ifstream in(path, std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(in), {}};
    return std::ranges::any_of(kFormerLayouts, [&](const FormerLayout& former) {
        return former.file == file && former.digest == digestOf(bytes);
    });
}

// What a shop edited is never written again, so a half one, which is no delivery, must not come to stand
// there.
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
        if (!std::filesystem::exists(path, failed) || isFormer(path, each.file)) writeLayout(path, each.xml);
    }
}

} // namespace veldona::report
