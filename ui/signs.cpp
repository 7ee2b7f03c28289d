#include "ui/signs.h"

#include <algorithm>

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>

namespace veldona {

namespace {

const QColor kBlue("#2c6e9b");
const QColor kAmber("#e08a00");
const QColor kRed("#c62828");

// Lengths are parts of the sign's own side, so that it can be drawn at any.
class Sign : public QIconEngine {
public:
    explicit Sign(QStyle::StandardPixmap which) : which_(which) {}

    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
        const double side = std::min(rect.width(), rect.height());
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.center().x() + 0.5 - side / 2, rect.center().y() + 0.5 - side / 2);
        painter->scale(side, side);
        painter->setPen(Qt::NoPen);
        if (which_ == QStyle::SP_MessageBoxWarning)
            paintWarning(*painter);
        else
            paintDisc(*painter);
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap drawn(size);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return drawn;
    }
    [[nodiscard]] QIconEngine* clone() const override { return new Sign(which_); }

private:
    static void paintWarning(QPainter& painter) {
        QPainterPath triangle(QPointF(0.5, 0.08));
        triangle.lineTo(0.96, 0.9);
        triangle.lineTo(0.04, 0.9);
        triangle.closeSubpath();
        painter.setPen(QPen(kAmber, 0.08, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter.setBrush(kAmber);
        painter.drawPath(triangle);
        paintLetter(painter, "!", QRectF(0, 0.26, 1, 0.62), 0.54);
    }
    void paintDisc(QPainter& painter) const {
        const bool isError = which_ == QStyle::SP_MessageBoxCritical;
        painter.setBrush(isError ? kRed : kBlue);
        painter.drawEllipse(QRectF(0.02, 0.02, 0.96, 0.96));
        if (isError) {
            painter.setPen(QPen(Qt::white, 0.11, Qt::SolidLine, Qt::RoundCap));
            painter.drawLine(QPointF(0.32, 0.32), QPointF(0.68, 0.68));
            painter.drawLine(QPointF(0.68, 0.32), QPointF(0.32, 0.68));
        } else {
            paintLetter(painter, which_ == QStyle::SP_MessageBoxQuestion ? "?" : "i", QRectF(0, 0, 1, 1),
                        0.7);
        }
    }
    // As an outline: a font of less than one unit cannot be asked for.
    static void paintLetter(QPainter& painter, const char* letter, const QRectF& place, double height) {
        QFont font("Liberation Sans");
        font.setBold(true);
        font.setPixelSize(100);
        QPainterPath outline;
        outline.addText(0, 0, font, letter);
        const QRectF bounds = outline.boundingRect();
        const double factor = height / 100;
        painter.save();
        painter.translate(place.center());
        painter.scale(factor, factor);
        painter.translate(-bounds.center());
        painter.setPen(Qt::NoPen);
        painter.fillPath(outline, Qt::white);
        painter.restore();
    }

    QStyle::StandardPixmap which_;
};

} // namespace

QIcon messageSign(QStyle::StandardPixmap which) {
    switch (which) {
    case QStyle::SP_MessageBoxInformation:
    case QStyle::SP_MessageBoxQuestion:
    case QStyle::SP_MessageBoxWarning:
    case QStyle::SP_MessageBoxCritical:
        return QIcon(new Sign(which));
    default:
        return {};
    }
}

} // namespace veldona
