// The sizes that a .ui file gives in pixels, kept in proportion to the letters.
//
// A drawing is made for scale 1. No window is made smaller than its contents need, nor larger than its screen
// as long as they fit into it.
#pragma once

#include <vector>

#include <QPointer>
#include <QSize>
#include <QWidget>

namespace veldona {

class DrawnSizes {
public:
    // The window as it was drawn, before anything has changed a size.
    explicit DrawnSizes(QWidget& window);

    // Brings the limits of what stands in the window to the scale of now.
    void growLimits();
    // The window itself, behind them; one that the operator has resized keeps its proportion.
    void growWindow();

private:
    struct Limits {
        QPointer<QWidget> widget;
        QSize least;
        QSize most;
    };
    QWidget& window_;
    double scale_ = 1;
    std::vector<Limits> limits_;
};

// The wanted size, as far as the screen has room; never less than the contents need.
[[nodiscard]] QSize sizeOnScreen(const QWidget& window, const QSize& wanted);

} // namespace veldona
