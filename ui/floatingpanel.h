// A group that opens over another part of its window: it stands in no layout, so nothing moves when it comes
// or goes.
//
// The property "anchor" names the widget over whose upper edge it stands, in its middle.
#pragma once

#include <QGroupBox>

namespace veldona {

class FloatingPanel : public QGroupBox {
    Q_OBJECT

public:
    explicit FloatingPanel(QWidget* parent = nullptr);

protected:
    void showEvent(QShowEvent* event) override;
    bool event(QEvent* event) override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void place();
};

} // namespace veldona
