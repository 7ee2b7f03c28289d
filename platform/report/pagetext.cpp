#include "platform/report/pagetext.h"

#include <algorithm>

#include "platform/runtime/text.h"

namespace veldona::report {

namespace {

constexpr double kSameLine = 1; // millimetres between a small and a large letter's foot

const TextRun& runAt(const Page& page, std::size_t item) {
    return std::get<TextRun>(page.items[item]);
}

// The cell in which byte `at` of the line's folded text lies.
std::size_t itemAt(const Page& page, const TextLine& line, std::size_t at) {
    std::size_t end = 0;
    for (const std::size_t item : line) {
        end += lowerTurkish(runAt(page, item).text).size() + 1;
        if (at < end) return item;
    }
    return line.back();
}

std::vector<Found> hitsOn(const Document& document, std::size_t page, const std::string& folded) {
    std::vector<Found> hits;
    const Page& searched = document.pages[page];
    for (const TextLine& line : textLines(searched)) {
        const std::string text = lowerTurkish(lineText(searched, line));
        for (std::size_t at = text.find(folded); at != std::string::npos; at = text.find(folded, at + 1)) {
            const Found hit{page, itemAt(searched, line, at)};
            if (hits.empty() || !(hits.back() == hit)) hits.push_back(hit);
        }
    }
    return hits;
}

} // namespace

std::vector<TextLine> textLines(const Page& page) {
    TextLine texts;
    for (std::size_t i = 0; i < page.items.size(); ++i)
        if (std::holds_alternative<TextRun>(page.items[i])) texts.push_back(i);
    std::stable_sort(texts.begin(), texts.end(), [&](std::size_t a, std::size_t b) {
        return runAt(page, a).baseline < runAt(page, b).baseline;
    });
    std::vector<TextLine> lines;
    double height = 0;
    for (const std::size_t item : texts) {
        const double baseline = runAt(page, item).baseline;
        if (lines.empty() || baseline > height + kSameLine) {
            lines.emplace_back();
            height = baseline;
        }
        lines.back().push_back(item);
    }
    for (TextLine& line : lines)
        std::stable_sort(line.begin(), line.end(),
                         [&](std::size_t a, std::size_t b) { return runAt(page, a).x < runAt(page, b).x; });
    return lines;
}

std::string lineText(const Page& page, const TextLine& line) {
    std::string text;
    for (const std::size_t item : line)
        text += (text.empty() ? "" : " ") + runAt(page, item).text;
    return text;
}

std::string pageText(const Page& page) {
    std::string text;
    for (const TextLine& line : textLines(page))
        text += lineText(page, line) + '\n';
    return text;
}

std::string documentText(const Document& document) {
    std::string text;
    for (const Page& page : document.pages)
        text += (text.empty() ? "" : "\f") + pageText(page);
    return text;
}

std::optional<Found> findText(const Document& document, std::string_view text, std::optional<Found> after) {
    if (text.empty()) return std::nullopt;
    const std::string folded = lowerTurkish(text);
    const std::size_t pages = document.pages.size();
    const std::size_t start = after ? std::min(after->page, pages - 1) : 0;
    // The first page is looked at twice: behind `after`, and in the end from its top.
    for (std::size_t step = 0; step <= pages; ++step) {
        const std::vector<Found> hits = hitsOn(document, (start + step) % pages, folded);
        auto hit = hits.begin();
        if (step == 0 && after) {
            const auto here = std::find(hits.begin(), hits.end(), *after);
            if (here == hits.end()) continue;
            hit = here + 1;
        }
        if (hit != hits.end()) return *hit;
    }
    return std::nullopt;
}

} // namespace veldona::report
