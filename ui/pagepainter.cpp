#include "ui/pagepainter.h"

#include <QFont>
#include <QFontMetricsF>
#include <QPainter>

namespace veldona {

namespace {

constexpr double kMillimetresPerPoint = 25.4 / 72;
// Letters are drawn at this size and scaled, so that they keep their shape and width at any zoom.
constexpr int kNominalPixels = 64;

QColor toQt(const report::Color& color) {
    return {color.red, color.green, color.blue};
}

QPen penOf(const report::Color& color, double thickness) {
    QPen pen(toQt(color), thickness);
    pen.setCapStyle(Qt::FlatCap);
    pen.setJoinStyle(Qt::MiterJoin);
    return pen;
}

// By the widths of Liberation Sans the pages are laid out; Arial has the same ones.
QFont fontOf(bool bold) {
    QFont font(QStringList{"Liberation Sans", "Arial"});
    font.setStyleHint(QFont::SansSerif);
    font.setPixelSize(kNominalPixels);
    font.setBold(bold);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setKerning(false);
    return font;
}

// How far the text's letters stand from the left side of its box, and how wide they run; in millimetres.
struct Extent {
    double indent = 0, width = 0;
};

double scaleOf(const report::TextRun& run) {
    return run.size * kMillimetresPerPoint / kNominalPixels;
}

Extent extentOf(const report::TextRun& run, const QFont& font) {
    const double width =
        QFontMetricsF(font).horizontalAdvance(QString::fromStdString(run.text)) * scaleOf(run);
    const double room = run.width - width;
    switch (run.align) {
    case report::Align::Left:
        break;
    case report::Align::Center:
        return {room / 2, width};
    case report::Align::Right:
        return {room, width};
    }
    return {0, width};
}

class ItemPainter {
public:
    explicit ItemPainter(QPainter& painter) : painter_(painter) {}

    void operator()(const report::TextRun& run) const {
        const QFont& font = run.bold ? bold_ : regular_;
        painter_.save();
        painter_.translate(run.x + extentOf(run, font).indent, run.baseline);
        painter_.scale(scaleOf(run), scaleOf(run));
        painter_.setFont(font);
        painter_.setPen(toQt(run.color));
        painter_.drawText(QPointF(0, 0), QString::fromStdString(run.text));
        painter_.restore();
    }

    void operator()(const report::Line& line) const {
        painter_.setPen(penOf(line.color, line.thickness));
        painter_.drawLine(QPointF(line.x1, line.y1), QPointF(line.x2, line.y2));
    }

    void operator()(const report::Box& box) const {
        painter_.setPen(box.thickness > 0 ? penOf(box.color, box.thickness) : QPen(Qt::NoPen));
        painter_.setBrush(box.filled ? QBrush(toQt(box.fill)) : QBrush(Qt::NoBrush));
        painter_.drawRect(QRectF(box.x, box.y, box.width, box.height));
    }

private:
    QPainter& painter_;
    QFont regular_ = fontOf(false);
    QFont bold_ = fontOf(true);
};

} // namespace

void paintPage(QPainter& painter, const report::Page& page, double dotsPerMillimetre) {
    painter.save();
    painter.scale(dotsPerMillimetre, dotsPerMillimetre);
    const ItemPainter paint(painter);
    for (const report::Item& item : page.items)
        std::visit(paint, item);
    painter.restore();
}

QRectF placeOf(const report::Item& item) {
    if (const auto* run = std::get_if<report::TextRun>(&item)) {
        const Extent extent = extentOf(*run, fontOf(run->bold));
        return {run->x + extent.indent, run->y, extent.width, run->height};
    }
    if (const auto* box = std::get_if<report::Box>(&item)) return {box->x, box->y, box->width, box->height};
    const auto& line = std::get<report::Line>(item);
    return QRectF(QPointF(line.x1, line.y1), QPointF(line.x2, line.y2)).normalized();
}

} // namespace veldona
