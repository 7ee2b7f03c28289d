#include "platform/export/ownform.h"

#include <cmath>
#include <sstream>
#include <string_view>

#include <pugixml.hpp>

#include "platform/export/cells.h"
#include "platform/report/reporterror.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"

namespace veldona::exports {

namespace {

// What the layout reader takes.
constexpr std::size_t kMostBytes = 1'000'000;
constexpr std::size_t kMostElements = 4900;

std::string measure(double value) {
    return replaceAll(format(value, "0.000"), ",", ".");
}

std::string colour(report::Color color) {
    constexpr std::string_view digits = "0123456789abcdef";
    std::string out = "#";
    for (const std::uint8_t part : {color.red, color.green, color.blue})
        out += {digits[part >> 4], digits[part & 15]};
    return out;
}

void set(pugi::xml_node node, const char* name, const std::string& value) {
    node.append_attribute(name) = value.c_str();
}

void place(pugi::xml_node node, double x, double y, double width, double height) {
    set(node, "x", measure(x));
    set(node, "y", measure(y));
    set(node, "width", measure(width));
    set(node, "height", measure(height));
}

// The signs of the notation stand for themselves when doubled.
std::string asItStands(const std::string& text) {
    return replaceAll(replaceAll(withoutControls(text), "%", "%%"), "{", "{{");
}

void append(pugi::xml_node band, const report::TextRun& run) {
    constexpr const char* aligns[] = {"left", "center", "right"};
    pugi::xml_node label = band.append_child("label");
    place(label, run.x, run.y, run.width, run.height);
    // Never up: an amount that was made smaller until it just fitted would be cut.
    set(label, "size", measure(std::floor(run.size * 1000 + 1e-6) / 1000));
    if (run.bold) set(label, "bold", "yes");
    set(label, "align", aligns[static_cast<std::size_t>(run.align)]);
    set(label, "color", colour(run.color));
    set(label, "text", asItStands(run.text));
}

void append(pugi::xml_node band, const report::Line& line) {
    pugi::xml_node made = band.append_child("line");
    place(made, line.x1, line.y1, line.x2 - line.x1, line.y2 - line.y1);
    set(made, "thickness", measure(line.thickness));
    set(made, "color", colour(line.color));
}

void append(pugi::xml_node band, const report::Box& box) {
    pugi::xml_node made = band.append_child("box");
    place(made, box.x, box.y, box.width, box.height);
    set(made, "thickness", measure(box.thickness));
    set(made, "color", colour(box.color));
    if (box.filled) set(made, "fill", colour(box.fill));
}

void setPaper(pugi::xml_node report, const report::Document& document) {
    const double longer = std::max(document.pageWidth, document.pageHeight);
    set(report, "paper", longer > 250 ? "A4" : "A5");
    set(report, "orientation", document.pageWidth > document.pageHeight ? "landscape" : "portrait");
    for (const char* margin : {"marginLeft", "marginTop", "marginRight", "marginBottom"})
        set(report, margin, "0");
}

} // namespace

std::string ownForm(const report::Document& document) {
    pugi::xml_document file;
    pugi::xml_node report = file.append_child("report");
    set(report, "title", withoutControls(document.title));
    setPaper(report, document);
    std::size_t elements = 0;
    for (const report::Page& page : document.pages) {
        pugi::xml_node band = report.append_child("band");
        set(band, "height", measure(document.pageHeight));
        elements += page.items.size();
        for (const report::Item& item : page.items)
            std::visit([&](const auto& each) { append(band, each); }, item);
    }
    std::ostringstream out;
    file.save(out, " ", pugi::format_default | pugi::format_no_declaration, pugi::encoding_utf8);
    if (elements > kMostElements || out.str().size() > kMostBytes)
        throw report::ReportError(report::kBrokenLayout,
                                  "Rapor bu biçim için çok uzun. Başka bir biçim seçiniz.");
    return out.str();
}

} // namespace veldona::exports
