#include "platform/export/richtext.h"

#include <cmath>

#include "platform/export/cells.h"
#include "platform/report/pagetext.h"
#include "platform/runtime/unicode.h"

namespace veldona::exports {

namespace {

using report::Align;
using report::TextRun;

std::string twips(double millimetres) {
    return std::to_string(std::lround(millimetres * 1440 / 25.4));
}

// Letters beyond ASCII as numbers, each with "?" for readers that know no better.
std::string escaped(const std::string& text) {
    std::string out;
    for (const char16_t unit : utf16Of(withoutControls(text))) {
        if (unit == u'\\' || unit == u'{' || unit == u'}') out += '\\';
        if (unit == u'\n')
            out += "\\line ";
        else if (unit < 0x80)
            out += static_cast<char>(unit);
        else
            out += "\\u" + std::to_string(static_cast<std::int16_t>(unit)) + "?";
    }
    return out;
}

double stopOf(const TextRun& run) {
    switch (run.align) {
    case Align::Right:
        return run.x + run.width;
    case Align::Center:
        return run.x + run.width / 2;
    case Align::Left:
        break;
    }
    return run.x;
}

std::string tabStop(const TextRun& run) {
    const char* kind = run.align == Align::Right ? "\\tqr" : run.align == Align::Center ? "\\tqc" : "";
    return kind + ("\\tx" + twips(stopOf(run)));
}

std::string paragraph(const report::Page& page, const report::TextLine& line, double gap) {
    std::string out = "\\pard\\plain\\f0\\sb" + twips(gap);
    for (const std::size_t item : line)
        out += tabStop(std::get<TextRun>(page.items[item]));
    out += ' ';
    for (const std::size_t item : line) {
        const auto& run = std::get<TextRun>(page.items[item]);
        out += "{\\fs" + std::to_string(std::lround(run.size * 2)) + (run.bold ? "\\b" : "") + "\\tab " +
               escaped(run.text) + "}";
    }
    return out + "\\par\n";
}

std::string pageContent(const report::Page& page) {
    std::string out;
    double bottom = 0;
    for (const report::TextLine& line : report::textLines(page)) {
        const auto& run = std::get<TextRun>(page.items[line.front()]);
        out += paragraph(page, line, std::max(0.0, run.y - bottom));
        bottom = run.y + run.height;
    }
    return out;
}

} // namespace

std::string richText(const report::Document& document) {
    std::string out =
        "{\\rtf1\\ansi\\ansicpg1254\\deff0{\\fonttbl{\\f0\\fswiss\\fcharset162 Arial;}}\n{\\info{\\title " +
        escaped(document.title) + "}}\n\\paperw" + twips(document.pageWidth) + "\\paperh" +
        twips(document.pageHeight) + "\\margl0\\margr0\\margt0\\margb0" +
        (document.pageWidth > document.pageHeight ? "\\landscape" : "") + "\n";
    for (std::size_t i = 0; i < document.pages.size(); ++i)
        out += (i ? "\\page\n" : "") + pageContent(document.pages[i]);
    return out + "}\n";
}

} // namespace veldona::exports
