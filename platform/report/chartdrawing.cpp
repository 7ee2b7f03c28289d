#include "platform/report/chartdrawing.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>
#include <utility>

#include "platform/report/textfit.h"
#include "platform/runtime/format.h"

namespace veldona::report {

namespace {

constexpr Color kInk{31, 41, 51};
constexpr Color kFaint{91, 104, 117};
constexpr Color kGrid{211, 218, 226};
constexpr Color kDark{31, 78, 121};
constexpr Color kLight{253, 235, 208};
constexpr double kOutline = 0.2;
constexpr double kGap = 1;         // between a text and what it belongs to
constexpr double kHatchStep = 1.6; // between the lines of a filling
constexpr double kWidestBar = 16;
constexpr double kGroupShare = 0.72; // of a category's width that its bars take
constexpr int kMostSteps = 5;        // of the scale

// The scale's lines: from `low` to `high`, both a whole number of steps.
struct Scale {
    double low = 0, high = 1, step = 1;
};

// 1, 2 or 5 times a power of ten, so that at most kMostSteps of them reach over the values.
Scale scaleFor(const Chart& chart) {
    double low = 0, high = 0;
    for (const ChartSeries& series : chart.series)
        for (const double value : series.values) {
            low = std::min(low, value);
            high = std::max(high, value);
        }
    if (high - low <= 0) high = low + 1;
    Scale scale;
    const double power = std::pow(10, std::floor(std::log10((high - low) / kMostSteps)));
    for (const double times : {1.0, 2.0, 5.0, 10.0}) {
        scale.step = power * times;
        if ((high - low) / scale.step <= kMostSteps) break;
    }
    scale.low = std::floor(low / scale.step) * scale.step;
    scale.high = std::ceil(high / scale.step) * scale.step;
    return scale;
}

std::string numberText(double value, double step) {
    return format(value, step < 1 ? "#,##0.00" : "#,##0");
}

class ChartDrawing {
public:
    ChartDrawing(const Chart& chart, const Place& place, double points, const FontMetrics& metrics)
        : chart_(chart), place_(place), points_(points), metrics_(metrics), scale_(scaleFor(chart)),
          line_(metrics.lineHeight(points)) {}
    std::vector<Item> draw();

private:
    [[nodiscard]] Font font(bool bold = false) const { return {metrics_, points_, bold}; }
    void text(const Place& box, const std::string& words, Align align, Color color, bool bold = false);
    void line(double x1, double y1, double x2, double y2, double thickness, Color color);
    void drawTitle();
    void drawLegend();
    void drawScale();
    [[nodiscard]] double widestCategory() const;
    void leaveRoomForLastName();
    void drawCategories();
    void drawBars();
    void drawBar(const Place& bar, Filling filling);
    void hatch(const Place& bar, bool falling);
    [[nodiscard]] double yOf(double value) const {
        return field_.bottom() - (value - scale_.low) / (scale_.high - scale_.low) * field_.height;
    }
    [[nodiscard]] double categoryWidth() const {
        return field_.width / static_cast<double>(std::max<std::size_t>(chart_.categories.size(), 1));
    }
    [[nodiscard]] double barWidth() const {
        return std::min(categoryWidth() * kGroupShare /
                            static_cast<double>(std::max<std::size_t>(chart_.series.size(), 1)),
                        kWidestBar);
    }
    // Every one of them has room.
    [[nodiscard]] bool valuesFit() const;

    const Chart& chart_;
    Place place_, field_; // the whole, and where the bars stand
    double points_;
    const FontMetrics& metrics_;
    Scale scale_;
    double line_; // a line of text is that high
    std::vector<Item> items_, words_;
};

std::vector<Item> ChartDrawing::draw() {
    drawTitle();
    double widest = 0;
    for (double value = scale_.low; value <= scale_.high + scale_.step / 2; value += scale_.step)
        widest = std::max(widest, font().width(numberText(value, scale_.step)));
    const double top = line_ * 2 + (chart_.series.size() > 1 ? line_ + kGap : 0) + kGap;
    field_ = {place_.x + widest + 2 * kGap, place_.y + top, place_.width - widest - 3 * kGap,
              place_.height - top - line_ - 2 * kGap};
    leaveRoomForLastName();
    if (field_.width < 10 || field_.height < line_) return std::move(words_);
    if (chart_.series.size() > 1) drawLegend();
    drawScale();
    drawCategories();
    drawBars();
    std::move(words_.begin(), words_.end(), std::back_inserter(items_));
    return std::move(items_);
}

void ChartDrawing::text(const Place& box, const std::string& words, Align align, Color color, bool bold) {
    std::string shown = clipped(words, font(bold), box.width);
    if (shown.empty()) return;
    words_.emplace_back(TextRun{box.x, box.y, box.width, line_, box.y + metrics_.ascent(points_),
                                std::move(shown), points_, bold, align, color});
}

void ChartDrawing::line(double x1, double y1, double x2, double y2, double thickness, Color color) {
    items_.emplace_back(Line{x1, y1, x2, y2, thickness, color});
}

void ChartDrawing::drawTitle() {
    text({place_.x, place_.y, place_.width, line_}, chart_.title, Align::Left, kInk, true);
}

void ChartDrawing::drawLegend() {
    const double box = line_ * 0.8;
    double x = field_.x;
    const double y = place_.y + line_ + kGap;
    for (const ChartSeries& series : chart_.series) {
        drawBar({x, y + (line_ - box) / 2, box * 1.6, box}, series.filling);
        x += box * 1.6 + kGap;
        const double width = font().width(series.name) + kGap;
        text({x, y, std::min(width, std::max(place_.right() - x, 0.0)), line_}, series.name, Align::Left,
             kInk);
        x += width + 4 * kGap;
    }
}

void ChartDrawing::drawScale() {
    for (double value = scale_.low; value <= scale_.high + scale_.step / 2; value += scale_.step) {
        const double y = yOf(value);
        line(field_.x, y, field_.right(), y, 0.1, kGrid);
        text({place_.x, y - line_ / 2, field_.x - place_.x - kGap, line_}, numberText(value, scale_.step),
             Align::Right, kFaint);
    }
}

double ChartDrawing::widestCategory() const {
    double widest = 1;
    for (const std::string& name : chart_.categories)
        widest = std::max(widest, font().width(name) + kGap);
    return widest;
}

// The name of the last category stands in its middle, wider than the category itself.
void ChartDrawing::leaveRoomForLastName() {
    const auto count = static_cast<double>(std::max<std::size_t>(chart_.categories.size(), 1));
    const double width = (place_.right() - field_.x - widestCategory() / 2) / (1 - 1 / (2 * count));
    field_.width = std::min(field_.width, width);
}

// Where there is no room for each, every second one, or third. The last one is the one that is looked at, so
// it has its name in any case.
void ChartDrawing::drawCategories() {
    const double widest = widestCategory();
    const auto every = static_cast<std::size_t>(std::max(1.0, std::ceil(widest / categoryWidth())));
    for (std::size_t back = 0; back < chart_.categories.size(); back += every) {
        const std::size_t i = chart_.categories.size() - 1 - back;
        const double x =
            std::max(place_.x, field_.x + (static_cast<double>(i) + 0.5) * categoryWidth() - widest / 2);
        text({x, field_.bottom() + kGap, widest, line_}, chart_.categories[i], Align::Center, kInk);
    }
}

bool ChartDrawing::valuesFit() const {
    double widest = 0;
    for (const ChartSeries& series : chart_.series)
        for (const double value : series.values)
            widest = std::max(widest, font().width(numberText(value, 1)));
    return widest <= std::max(barWidth(), chart_.series.size() == 1 ? categoryWidth() - kGap : 0.0);
}

void ChartDrawing::drawBars() {
    const bool tellsValues = valuesFit();
    const double width = barWidth();
    const double zero = yOf(0);
    for (std::size_t s = 0; s < chart_.series.size(); ++s) {
        const ChartSeries& series = chart_.series[s];
        for (std::size_t i = 0; i < std::min(series.values.size(), chart_.categories.size()); ++i) {
            const double middle = field_.x + (static_cast<double>(i) + 0.5) * categoryWidth();
            const double group = width * static_cast<double>(chart_.series.size());
            const double x = middle - group / 2 + width * static_cast<double>(s);
            const double y = yOf(series.values[i]);
            const Place bar{x, std::min(y, zero), width, std::abs(y - zero)};
            if (bar.height > 0) drawBar(bar, series.filling);
            if (!tellsValues) continue;
            const double room = chart_.series.size() == 1 ? categoryWidth() : width;
            text({x + width / 2 - room / 2, bar.y - line_, room, line_}, numberText(series.values[i], 1),
                 Align::Center, kInk);
        }
    }
    line(field_.x, zero, field_.right(), zero, 0.3, kInk);
}

void ChartDrawing::drawBar(const Place& bar, Filling filling) {
    const Color fill = filling == Filling::Solid ? kDark : kLight;
    items_.emplace_back(Box{bar.x, bar.y, bar.width, bar.height, kOutline, kDark, true, fill});
    if (filling == Filling::Solid) return;
    hatch(bar, false);
    if (filling == Filling::Crossed) hatch(bar, true);
}

// Slanting lines, cut at the bar's edges. They start at places of the page, so that neighbours look alike.
void ChartDrawing::hatch(const Place& bar, bool falling) {
    for (double along = kHatchStep / 2; along < bar.width + bar.height; along += kHatchStep) {
        const double right = std::min(along, bar.width), left = std::max(along - bar.height, 0.0);
        const double low = along - right, high = along - left; // above the foot, at the right and the left
        const double first = falling ? bar.right() - left : bar.x + left;
        const double last = falling ? bar.right() - right : bar.x + right;
        line(first, bar.bottom() - high, last, bar.bottom() - low, 0.15, kDark);
    }
}

} // namespace

std::vector<Item> drawChart(const Chart& chart, const Place& place, double points,
                            const FontMetrics& metrics) {
    return ChartDrawing(chart, place, points, metrics).draw();
}

} // namespace veldona::report
