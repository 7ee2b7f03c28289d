#include "platform/report/fontmetrics.h"

#include <utility>

#include "platform/report/fontwidths.h"
#include "platform/runtime/unicode.h"

namespace veldona::report {

namespace {

constexpr unsigned kDigitWidth = 1139;

constexpr std::pair<char32_t, unsigned> kPunctuation[] = {
    {0x2013, 1139}, {0x2014, 2048}, {0x2018, 455},  {0x2019, 455},  {0x201C, 682},
    {0x201D, 682},  {0x2022, 717},  {0x2026, 2048}, {0x2212, 1196},
};

unsigned unitsOf(char32_t code, const FontWidths& widths) {
    if (code < kFirstWidth) return 0;
    if (code - kFirstWidth < widths.size()) return widths[code - kFirstWidth];
    if (code >= 0x300 && code < 0x370) return 0; // combining marks stand on the letter before
    for (const auto& [known, units] : kPunctuation)
        if (known == code) return units;
    return kDigitWidth;
}

class BuiltIn : public FontMetrics {
public:
    [[nodiscard]] double width(std::string_view text, double points, bool bold) const override {
        const FontWidths& widths = bold ? kBoldWidths : kRegularWidths;
        unsigned units = 0;
        for (std::size_t at = 0; at < text.size();) {
            const Letter letter = letterAt(text, at);
            units += unitsOf(letter.code, widths);
            at += letter.bytes;
        }
        return inMillimetres(units, points);
    }
    [[nodiscard]] double ascent(double points) const override { return inMillimetres(kAscentUnits, points); }
    [[nodiscard]] double lineHeight(double points) const override {
        return inMillimetres(kLineUnits, points);
    }

private:
    static double inMillimetres(double units, double points) {
        return units / kUnitsPerEm * points * kMillimetresPerPoint;
    }
};

} // namespace

const FontMetrics& builtInMetrics() {
    static const BuiltIn metrics;
    return metrics;
}

} // namespace veldona::report
