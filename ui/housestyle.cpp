#include "ui/housestyle.h"

#include <algorithm>
#include <cmath>

#include <QApplication>
#include <QFont>
#include <QPalette>
#include <QProxyStyle>
#include <QScreen>
#include <QSize>
#include <QStyleFactory>
#include <QWidget>

#include "ui/signs.h"

namespace veldona {

namespace {

constexpr double kFontPoints = 10;
constexpr double kDesktopDots = 96; // an inch, where the desktop asks for nothing else
double currentScale = 1;

// Lengths that the base style counts in pixels grow with the font.
class ScaledStyle : public QProxyStyle {
public:
    explicit ScaledStyle(double scale) : QProxyStyle(QStyleFactory::create("Fusion")), scale_(scale) {}

    int pixelMetric(PixelMetric metric, const QStyleOption* option, const QWidget* widget) const override {
        switch (metric) {
        case PM_LayoutLeftMargin:
        case PM_LayoutRightMargin:
        case PM_LayoutTopMargin:
        case PM_LayoutBottomMargin:
            return grown(8);
        case PM_LayoutHorizontalSpacing:
        case PM_LayoutVerticalSpacing:
            return grown(5);
        case PM_ScrollBarExtent:
            return grown(13);
        case PM_IndicatorWidth:
        case PM_IndicatorHeight:
        case PM_ExclusiveIndicatorWidth:
        case PM_ExclusiveIndicatorHeight:
            return grown(15);
        case PM_MessageBoxIconSize:
            return grown(36);
        default:
            return QProxyStyle::pixelMetric(metric, option, widget);
        }
    }

    QIcon standardIcon(StandardPixmap which, const QStyleOption* option,
                       const QWidget* widget) const override {
        const QIcon sign = messageSign(which);
        return sign.isNull() ? QProxyStyle::standardIcon(which, option, widget) : sign;
    }

    QRect subControlRect(ComplexControl control, const QStyleOptionComplex* option, SubControl part,
                         const QWidget* widget) const override {
        QRect rect = QProxyStyle::subControlRect(control, option, part, widget);
        if (control != CC_ComboBox || scale_ <= 1) return rect;
        const int more = grown(rect.width()) - rect.width();
        if (part == SC_ComboBoxArrow) rect.setLeft(rect.left() - more);
        if (part == SC_ComboBoxEditField) rect.setRight(rect.right() - (grown(18) - 18));
        return rect;
    }

    // As high as a text field, whatever the base style thinks of its letters.
    QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& contents,
                           const QWidget* widget) const override {
        QSize size = QProxyStyle::sizeFromContents(type, option, contents, widget);
        if (type == CT_ComboBox && widget) size.setHeight(widget->fontMetrics().height() + grown(8));
        return size;
    }

private:
    [[nodiscard]] int grown(int pixels) const { return static_cast<int>(std::lround(pixels * scale_)); }
    double scale_;
};

QPalette lightPalette() {
    const QColor ink("#1f2933");
    const QColor faded("#98a2ad");
    QPalette palette(ink, QColor("#f7f9fb"), QColor("#ffffff"), QColor("#aab4bf"), QColor("#d5dbe2"), ink,
                     QColor("#ffffff"), QColor("#ffffff"), QColor("#eceff3"));
    palette.setColor(QPalette::AlternateBase, QColor("#f4f7fa"));
    palette.setColor(QPalette::Highlight, QColor("#2c6e9b"));
    palette.setColor(QPalette::HighlightedText, QColor("#ffffff"));
    palette.setColor(QPalette::PlaceholderText, faded);
    palette.setColor(QPalette::ToolTipBase, QColor("#fffbe6"));
    palette.setColor(QPalette::ToolTipText, ink);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        palette.setColor(QPalette::Disabled, role, faded);
    return palette;
}

} // namespace

double scaleForScreen(const QSize& available, double dotsPerInch) {
    // Full size up to 1200 rows; above, four fifths of the growth go into the letters and one into more rows.
    const double growth = available.height() / 1080.0;
    const double byRows = growth <= 1.12 ? 1.0 : 1.0 + (growth - 1.0) * 0.8;
    const double wanted = std::max(byRows, dotsPerInch / kDesktopDots);
    const double room = std::min(available.width() / 1010.0, available.height() / 690.0);
    return std::clamp(std::min(wanted, room), 1.0, 4.0);
}

void followScreen(QApplication& application) {
    const QScreen* screen = QGuiApplication::primaryScreen();
    if (!screen) return; // the last one was unplugged; another will come
    const double scale = scaleForScreen(screen->availableSize(), screen->logicalDotsPerInchY());
    if (scale != currentScale || application.styleSheet().isEmpty()) applyHouseStyle(application, scale);
}

void applyHouseStyle(QApplication& application, double scale) {
    currentScale = scale;
    QApplication::setStyle(new ScaledStyle(scale));
    QApplication::setPalette(lightPalette());
    // The desktop's wish is in the scale already, and must not come twice.
    const double letters = scale * kDesktopDots / QGuiApplication::primaryScreen()->logicalDotsPerInchY();
    QFont font("Liberation Sans");
    font.setPointSizeF(kFontPoints * letters);
    QApplication::setFont(font);
    application.setStyleSheet(houseSheet(scale, letters));
}

QColor letterColour(RowMark::Kind mark) {
    switch (mark) {
    case RowMark::Kind::Done:
        return {"#5b6875"};
    case RowMark::Kind::Next:
    case RowMark::Kind::New:
        return {"#1d5c8a"};
    case RowMark::Kind::Late:
        return {"#b71c1c"};
    case RowMark::Kind::None:
        break;
    }
    return {"#1f2933"};
}

QColor lineColour() {
    return {"#e08a00"};
}

double houseScale() {
    return currentScale;
}

int scaled(int pixels) {
    return static_cast<int>(std::lround(pixels * currentScale));
}

} // namespace veldona
