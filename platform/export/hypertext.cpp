#include "platform/export/hypertext.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <vector>

#include "platform/export/cells.h"
#include "platform/report/pagetext.h"
#include "platform/runtime/text.h"

namespace veldona::exports {

namespace {

using report::TextRun;

constexpr std::array<const char*, 3> kAligns = {"left", "center", "right"};

std::string words(const std::string& text) {
    return escapedMarkup(withoutControls(text));
}

std::string measure(double value, const char* unit) {
    std::array<char, 32> text{};
    const auto count = static_cast<int>(value * 100 + (value < 0 ? -0.5 : 0.5));
    std::snprintf(text.data(), text.size(), "%s%d.%02d%s", count < 0 ? "-" : "", std::abs(count) / 100,
                  std::abs(count) % 100, unit);
    return text.data();
}

std::string colour(report::Color color) {
    std::array<char, 8> text{};
    std::snprintf(text.data(), text.size(), "#%02x%02x%02x", color.red, color.green, color.blue);
    return text.data();
}

// Links to the first, previous, next and last page.
std::string links(std::size_t page, std::size_t count) {
    const auto link = [&](std::size_t to, const char* caption) {
        return to == page || to >= count
                   ? std::string(caption) + " "
                   : "<a href=\"#sayfa" + std::to_string(to + 1) + "\">" + caption + "</a> ";
    };
    return "<p>" + link(0, "İlk") + link(page ? page - 1 : page, "Önceki") + link(page + 1, "Sonraki") +
           link(count - 1, "Son") + std::to_string(page + 1) + " / " + std::to_string(count) + "</p>\n";
}

std::string anchor(std::size_t page) {
    return "<a name=\"sayfa" + std::to_string(page + 1) + "\"></a>\n";
}

double anchorOf(const TextRun& run) {
    return run.x;
}

// The places at which the texts of a page begin, near ones as one: the columns of its table.
std::vector<double> columnsOf(const report::Page& page) {
    constexpr double near = 2; // millimetres
    std::vector<double> starts;
    for (const report::Item& item : page.items)
        if (const auto* run = std::get_if<TextRun>(&item)) starts.push_back(anchorOf(*run));
    std::ranges::sort(starts);
    const auto same = [](double kept, double next) { return next - kept < near; };
    starts.erase(std::unique(starts.begin(), starts.end(), same), starts.end());
    return starts;
}

std::string tableCell(const TextRun& run, std::size_t span) {
    const bool large = run.size > 11;
    return "<td colspan=\"" + std::to_string(span) + "\" align=\"" +
           kAligns[static_cast<std::size_t>(run.align)] + "\">" + (large ? "<font size=\"4\">" : "") +
           (run.bold ? "<b>" : "") + words(run.text) + (run.bold ? "</b>" : "") + (large ? "</font>" : "") +
           "</td>";
}

std::string tableRow(const report::Page& page, const report::TextLine& line,
                     const std::vector<double>& columns) {
    std::string out = "<tr>";
    const auto columnAt = [&](std::size_t index) {
        const double x = anchorOf(std::get<TextRun>(page.items[line[index]]));
        return static_cast<std::size_t>(std::ranges::upper_bound(columns, x) - columns.begin()) - 1;
    };
    std::size_t used = 0;
    for (std::size_t i = 0; i < line.size(); ++i) {
        const std::size_t from = std::max(columnAt(i), used);
        if (from > used) out += "<td colspan=\"" + std::to_string(from - used) + "\"></td>";
        const std::size_t next = i + 1 < line.size() ? std::max(columnAt(i + 1), from + 1) : columns.size();
        const std::size_t span = std::max<std::size_t>(next, from + 1) - from;
        out += tableCell(std::get<TextRun>(page.items[line[i]]), span);
        used = from + span;
    }
    return out + "</tr>\n";
}

std::string placed(double x, double y, double width, double height) {
    return "left:" + measure(x, "mm") + ";top:" + measure(y, "mm") + ";width:" + measure(width, "mm") +
           ";height:" + measure(height, "mm");
}

std::string drawn(const TextRun& run) {
    return "<div style=\"" + placed(run.x, run.y, run.width, run.height) +
           ";font-size:" + measure(run.size, "pt") +
           ";text-align:" + kAligns[static_cast<std::size_t>(run.align)] + ";color:" + colour(run.color) +
           (run.bold ? ";font-weight:bold" : "") + "\">" + words(run.text) + "</div>\n";
}

std::string drawn(const report::Line& line) {
    const double width = std::max(line.x2 - line.x1, line.thickness);
    const double height = std::max(line.y2 - line.y1, line.thickness);
    return "<div style=\"" + placed(line.x1, line.y1, width, height) + ";background:" + colour(line.color) +
           "\"></div>\n";
}

std::string drawn(const report::Box& box) {
    const std::string border =
        box.thickness > 0 ? ";border:" + measure(box.thickness, "mm") + " solid " + colour(box.color) : "";
    return "<div style=\"" + placed(box.x, box.y, box.width, box.height) + border +
           (box.filled ? ";background:" + colour(box.fill) : "") + "\"></div>\n";
}

} // namespace

std::string hypertext32(const report::Document& document, bool navigator) {
    std::string out = "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 3.2 Final//EN\">\n<html><head>\n"
                      "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\">\n<title>" +
                      words(document.title) + "</title></head><body>\n";
    for (std::size_t i = 0; i < document.pages.size(); ++i) {
        const report::Page& page = document.pages[i];
        const std::vector<double> columns = columnsOf(page);
        out += (i ? "<hr>\n" : "") + anchor(i) + (navigator ? links(i, document.pages.size()) : "") +
               "<table width=\"100%\" border=\"0\">\n";
        for (const report::TextLine& line : report::textLines(page))
            out += tableRow(page, line, columns);
        if (columns.empty()) out += "<tr><td></td></tr>\n";
        out += "</table>\n";
    }
    return out + "</body></html>\n";
}

std::string hypertext4(const report::Document& document, bool navigator) {
    const std::string size =
        "width:" + measure(document.pageWidth, "mm") + ";height:" + measure(document.pageHeight, "mm");
    std::string out = "<!DOCTYPE HTML PUBLIC \"-//W3C//DTD HTML 4.01 Transitional//EN\" "
                      "\"http://www.w3.org/TR/html4/loose.dtd\">\n<html lang=\"tr\"><head>\n"
                      "<meta http-equiv=\"Content-Type\" content=\"text/html; charset=utf-8\">\n<title>" +
                      words(document.title) +
                      "</title>\n<style type=\"text/css\">\n"
                      "div.page { position: relative; border: 1px solid #999999; margin-bottom: 6mm; " +
                      replaceAll(size, ";", "; ") +
                      " }\ndiv.page div { position: absolute; white-space: pre; "
                      "font-family: Arial, \"Liberation Sans\", sans-serif }\n"
                      "</style></head><body>\n";
    for (std::size_t i = 0; i < document.pages.size(); ++i) {
        out += "<div>" + anchor(i) + "</div>\n" + (navigator ? links(i, document.pages.size()) : "") +
               "<div class=\"page\">\n";
        for (const report::Item& item : document.pages[i].items)
            out += std::visit([](const auto& each) { return drawn(each); }, item);
        out += "</div>\n";
    }
    return out + "</body></html>\n";
}

} // namespace veldona::exports
