#include "platform/report/painting.h"

#include <algorithm>
#include <iterator>

#include "platform/report/chartdrawing.h"
#include "platform/report/reporterror.h"
#include "platform/report/textfit.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"

namespace veldona::report {

namespace {

constexpr double kSmallestNumber = 4; // points: below that a number is not shown in part but as "###"

struct Shown {
    std::string text;
    bool isNumber = false;    // nothing but a number
    bool holdsNumber = false; // it is made smaller rather than cut
};

bool isNumberKind(Value::Kind kind) {
    return kind == Value::Kind::Whole || kind == Value::Kind::Double || kind == Value::Kind::Money;
}

class Painter {
public:
    Painter(const BoundSection& section, const Moment& moment, const FontMetrics& metrics,
            Allowance& allowance)
        : section_(section), moment_(moment), metrics_(metrics), allowance_(allowance) {}
    Painted paint();
    [[nodiscard]] Shown shownOf(const BoundText& text) const;

private:
    struct Growth {
        double below; // what starts here or lower moves
        double by;
    };
    [[nodiscard]] double shiftAt(double y) const;
    [[nodiscard]] Place grown(const Place& place) const;
    [[nodiscard]] Shown textOf(const BoundText& text) const;
    [[nodiscard]] Shown textOf(const BoundPiece& piece) const;
    void paintText(const BoundText& text);
    void paintWrapped(const TextElement& element, const std::string& text);
    void addLine(const TextElement& element, double y, std::string text, double size);
    void paintStripe();
    [[noreturn]] void tooLong(const TextElement& element) const {
        throw ReportError(*section_.file, element.line, "gösterilecek yazı çok uzun.");
    }

    const BoundSection& section_;
    const Moment& moment_;
    const FontMetrics& metrics_;
    Allowance& allowance_;
    std::vector<Growth> growths_;
    std::vector<Item> texts_;
    Painted painted_;
};

Painted Painter::paint() {
    std::vector<const BoundText*> topDown;
    for (const BoundText& text : section_.texts)
        topDown.push_back(&text);
    std::stable_sort(topDown.begin(), topDown.end(), [](const BoundText* a, const BoundText* b) {
        return a->element->place.y < b->element->place.y;
    });
    for (const BoundText* text : topDown)
        paintText(*text);
    const Section& section = *section_.section;
    painted_.height = section.height + shiftAt(section.height);
    paintStripe();
    for (const BoxElement& box : section.boxes) {
        const Place place = grown(box.place);
        painted_.items.emplace_back(Box{place.x, place.y, place.width, place.height, box.thickness, box.color,
                                        box.fill.has_value(), box.fill.value_or(Color{})});
    }
    for (const LineElement& line : section.lines) {
        const Place place = grown(line.place);
        painted_.items.emplace_back(
            Line{place.x, place.y, place.right(), place.bottom(), line.thickness, line.color});
    }
    for (const ChartElement& chart : section.charts)
        std::ranges::move(drawChart(chart.chart, grown(chart.place), chart.size, metrics_),
                          std::back_inserter(painted_.items));
    allowance_.takeBytes(painted_.items.size() * sizeof(Item));
    std::move(texts_.begin(), texts_.end(), std::back_inserter(painted_.items));
    return std::move(painted_);
}

void Painter::paintStripe() {
    if (!section_.section->stripe || moment_.row % 2 == 0) return;
    painted_.items.emplace_back(
        Box{0, 0, section_.extent, painted_.height, 0, Color{}, true, *section_.section->stripe});
}

double Painter::shiftAt(double y) const {
    double shift = 0;
    for (const Growth& growth : growths_)
        if (growth.below <= y + 0.001) shift = std::max(shift, growth.by);
    return shift;
}

Place Painter::grown(const Place& place) const {
    const double top = place.y + shiftAt(place.y);
    return {place.x, top, place.width, place.bottom() + shiftAt(place.bottom()) - top};
}

Shown Painter::textOf(const BoundPiece& piece) const {
    switch (piece.kind) {
    case Piece::Kind::PageNumber:
        return {std::to_string(moment_.page)};
    case Piece::Kind::PageCount:
        return {std::to_string(moment_.pageCount)};
    case Piece::Kind::RowNumber:
        return {std::to_string(moment_.row + 1)};
    case Piece::Kind::Date:
        return {format(moment_.now, "dd/mm/yyyy")};
    case Piece::Kind::Time:
        return {format(moment_.now, "hh:mm:ss")};
    case Piece::Kind::Sum:
        return {piece.words, true, true};
    case Piece::Kind::Words:
        return {piece.words};
    case Piece::Kind::Column:
        break;
    }
    const std::size_t row = piece.data == section_.data ? moment_.row : 0;
    if (row >= piece.data->rowCount()) return {};
    const Value& value = piece.data->at(row, piece.column);
    const bool isNumber = isNumberKind(value.kind()) || piece.mask.find_first_of("#0") != std::string::npos;
    return {piece.mask.empty() ? joinText(value) : format(value, piece.mask), isNumber, isNumber};
}

// A column without a text takes one blank beside it away, so that "{EVMH} {EVCD} {EVIL}" reads well without a
// street.
Shown Painter::textOf(const BoundText& text) const {
    if (text.pieces.size() == 1) return textOf(text.pieces.front());
    std::string all;
    bool dropsBlank = false, holdsNumber = false;
    for (const BoundPiece& piece : text.pieces) {
        const auto& [part, isNumber, hasNumber] = textOf(piece);
        holdsNumber = holdsNumber || hasNumber;
        if (part.empty() && !all.empty() && all.back() == ' ') {
            all.pop_back();
        } else if (part.empty()) {
            dropsBlank = all.empty();
        } else {
            all.append(part, dropsBlank && part.front() == ' ' ? 1 : 0);
            dropsBlank = false;
        }
    }
    return {all, false, holdsNumber};
}

// A mask may be none for the column's values: a date's for a number beyond every date.
Shown Painter::shownOf(const BoundText& text) const {
    try {
        Shown shown = textOf(text);
        if (shown.text.size() > kMostTextBytes) tooLong(*text.element);
        shown.text = validUtf8(shown.text); // measured as it will be written
        return shown;
    } catch (const ReportError&) {
        throw;
    } catch (const RuntimeError& error) {
        throw ReportError(*section_.file, text.element->line, "değer gösterilemedi: " + error.description());
    }
}

void Painter::paintText(const BoundText& text) {
    allowance_.goOn();
    const TextElement& element = *text.element;
    const Shown shown = shownOf(text);
    if (shown.text.find_first_not_of(" \r\n\t") == std::string::npos) return;
    if (element.wraps && !shown.isNumber) return paintWrapped(element, shown.text);
    const double y = element.place.y + shiftAt(element.place.y);
    const double room = element.place.width;
    double size = element.size;
    if (shown.holdsNumber)
        size = std::min(size, size * room / metrics_.width(shown.text, size, element.bold));
    const bool legible = size >= std::min(kSmallestNumber, element.size);
    if (!legible) size = kSmallestNumber;
    addLine(element, y,
            shown.isNumber && !legible ? "###" : clipped(shown.text, {metrics_, size, element.bold}, room),
            size);
}

void Painter::paintWrapped(const TextElement& element, const std::string& text) {
    const Font font{metrics_, element.size, element.bold};
    const double lineHeight = metrics_.lineHeight(element.size);
    const double top = element.place.y + shiftAt(element.place.y);
    double y = top;
    std::vector<std::string> lines =
        wrapped(replaceAll(text, "\t", " "), font, element.place.width, kMostLines + 1);
    if (lines.size() > kMostLines) tooLong(element);
    for (std::string& line : lines) {
        if (!line.empty()) addLine(element, y, std::move(line), element.size);
        y += lineHeight;
    }
    const double bottom = std::max(y, top + element.place.height);
    if (bottom > element.place.bottom() + 0.001)
        growths_.push_back({element.place.bottom(), bottom - element.place.bottom()});
}

void Painter::addLine(const TextElement& element, double y, std::string text, double size) {
    allowance_.takeBytes(sizeof(Item) + text.size());
    const double ascent = metrics_.ascent(element.size);
    texts_.emplace_back(TextRun{element.place.x, y, element.place.width, metrics_.lineHeight(element.size),
                                y + ascent, std::move(text), size, element.bold, element.align,
                                element.color});
}

} // namespace

Painted paint(const BoundSection& section, const Moment& moment, const FontMetrics& metrics,
              Allowance& allowance) {
    return Painter(section, moment, metrics, allowance).paint();
}

std::string shownText(const BoundSection& section, const BoundText& text, const Moment& moment,
                      Allowance& allowance) {
    return Painter(section, moment, builtInMetrics(), allowance).shownOf(text).text;
}

void moveItem(Item& item, double x, double y) {
    if (auto* text = std::get_if<TextRun>(&item)) {
        text->x += x;
        text->y += y;
        text->baseline += y;
    } else if (auto* line = std::get_if<Line>(&item)) {
        line->x1 += x;
        line->x2 += x;
        line->y1 += y;
        line->y2 += y;
    } else {
        auto& box = std::get<Box>(item);
        box.x += x;
        box.y += y;
    }
}

namespace {

double topOf(const Item& item) {
    if (const auto* text = std::get_if<TextRun>(&item)) return text->y;
    if (const auto* line = std::get_if<Line>(&item)) return line->y1;
    return std::get<Box>(item).y;
}

double bottomOf(const Item& item) {
    if (const auto* text = std::get_if<TextRun>(&item)) return text->y + text->height;
    if (const auto* line = std::get_if<Line>(&item)) return line->y2;
    const auto& box = std::get<Box>(item);
    return box.y + box.height;
}

// The part of a line or box from `top` to `bottom`.
Item between(Item item, double top, double bottom) {
    if (auto* line = std::get_if<Line>(&item)) {
        line->y1 = std::max(line->y1, top);
        line->y2 = std::min(line->y2, bottom);
    } else if (auto* box = std::get_if<Box>(&item)) {
        const double end = std::min(box->y + box->height, bottom);
        box->y = std::max(box->y, top);
        box->height = end - box->y;
    }
    return item;
}

} // namespace

Painted cutAt(Painted& upper, double room) {
    double cut = room;
    for (const Item& item : upper.items)
        if (std::holds_alternative<TextRun>(item) && bottomOf(item) > room) cut = std::min(cut, topOf(item));
    if (cut <= 0) cut = room; // not even one line fits: it is cut through
    std::vector<Item> kept;
    Painted rest;
    rest.height = upper.height - cut;
    for (Item& item : upper.items) {
        const bool starts = topOf(item) >= cut;
        const bool ends = std::holds_alternative<TextRun>(item) || bottomOf(item) <= cut;
        if (!starts) kept.push_back(ends ? item : between(item, topOf(item), cut));
        if (starts || !ends)
            rest.items.push_back(starts ? std::move(item) : between(item, cut, bottomOf(item)));
    }
    for (Item& item : rest.items)
        moveItem(item, 0, -cut);
    upper.items = std::move(kept);
    upper.height = cut;
    return rest;
}

} // namespace veldona::report
