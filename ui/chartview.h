// Paints a chart as large as it is, with letters of its font's size.
#pragma once

#include <memory>

#include <QWidget>

namespace veldona {

namespace report {
struct Chart;
}

class ChartView : public QWidget {
    Q_OBJECT

public:
    explicit ChartView(QWidget* parent = nullptr);
    void setChart(std::shared_ptr<const report::Chart> chart); // empty: none

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    std::shared_ptr<const report::Chart> chart_;
};

} // namespace veldona
