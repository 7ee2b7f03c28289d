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
const QColor kGreen("#2e7d32");

// Lengths are parts of the sign's own side, so that it can be drawn at any.
class Sign : public QIconEngine {
public:
    void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
        const double side = std::min(rect.width(), rect.height());
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(rect.center().x() + 0.5 - side / 2, rect.center().y() + 0.5 - side / 2);
        painter->scale(side, side);
        painter->setPen(Qt::NoPen);
        draw(*painter);
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap drawn(size);
        drawn.fill(Qt::transparent);
        QPainter painter(&drawn);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return drawn;
    }

protected:
    virtual void draw(QPainter& painter) const = 0;

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
};

class MessageSign : public Sign {
public:
    explicit MessageSign(QStyle::StandardPixmap which) : which_(which) {}
    [[nodiscard]] QIconEngine* clone() const override { return new MessageSign(which_); }

protected:
    void draw(QPainter& painter) const override {
        if (which_ == QStyle::SP_MessageBoxWarning)
            paintWarning(painter);
        else
            paintDisc(painter);
    }

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

    QStyle::StandardPixmap which_;
};

// A white edge keeps it readable on the row that is selected.
class RowSign : public Sign {
public:
    explicit RowSign(RowMark::Kind mark) : mark_(mark) {}
    [[nodiscard]] QIconEngine* clone() const override { return new RowSign(mark_); }

protected:
    void draw(QPainter& painter) const override {
        const QColor colour = mark_ == RowMark::Kind::Done   ? kGreen
                              : mark_ == RowMark::Kind::Late ? kRed
                                                             : kBlue;
        painter.setBrush(colour);
        painter.setPen(QPen(Qt::white, 0.07));
        switch (mark_) {
        case RowMark::Kind::Done:
            painter.setBrush(Qt::NoBrush);
            for (const auto& [edge, width] : {std::pair(QColor(Qt::white), 0.32), std::pair(colour, 0.18)}) {
                painter.setPen(QPen(edge, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
                painter.drawPolyline(QPolygonF({{0.16, 0.54}, {0.4, 0.78}, {0.84, 0.24}}));
            }
            break;
        case RowMark::Kind::Next:
            painter.drawPolygon(QPolygonF({{0.2, 0.06}, {0.9, 0.5}, {0.2, 0.94}}));
            break;
        case RowMark::Kind::Late:
            painter.drawEllipse(QRectF(0.02, 0.02, 0.96, 0.96));
            paintLetter(painter, "!", QRectF(0, 0, 1, 1), 0.78);
            break;
        case RowMark::Kind::New: // stands out by bold letters
        case RowMark::Kind::None:
            break;
        }
    }

private:
    RowMark::Kind mark_;
};

} // namespace

QIcon messageSign(QStyle::StandardPixmap which) {
    switch (which) {
    case QStyle::SP_MessageBoxInformation:
    case QStyle::SP_MessageBoxQuestion:
    case QStyle::SP_MessageBoxWarning:
    case QStyle::SP_MessageBoxCritical:
        return QIcon(new MessageSign(which));
    default:
        return {};
    }
}

QIcon rowSign(RowMark::Kind mark) {
    return QIcon(new RowSign(mark));
}

} // namespace veldona
