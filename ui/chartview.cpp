#include "ui/chartview.h"

#include <utility>

#include <QPainter>

#include "platform/report/chartdrawing.h"
#include "ui/pagepainter.h"

namespace veldona {

namespace {

constexpr double kMargin = 2; // millimetres
constexpr double kMillimetresPerInch = 25.4;

} // namespace

ChartView::ChartView(QWidget* parent) : QWidget(parent) {}

void ChartView::setChart(std::shared_ptr<const report::Chart> chart) {
    if (chart == chart_) return;
    chart_ = std::move(chart);
    update();
}

void ChartView::paintEvent(QPaintEvent*) {
    if (!chart_) return;
    QPainter painter(this);
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    const double dots = logicalDpiX() / kMillimetresPerInch;
    const report::Place place{kMargin, kMargin, width() / dots - 2 * kMargin, height() / dots - 2 * kMargin};
    paintPage(painter, {report::drawChart(*chart_, place, font().pointSizeF())}, dots);
}

} // namespace veldona
