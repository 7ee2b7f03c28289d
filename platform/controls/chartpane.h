// Shows a chart. What it tells stands in words beside it, for whoever does not see the bars.
#pragma once

#include <memory>
#include <string>
#include <utility>

#include "platform/controls/control.h"

namespace veldona {

namespace report {
struct Chart;
}

class ChartPane : public Control {
public:
    ChartPane(Form& form, std::string name) : Control(form, std::move(name)) {}

    void show(std::shared_ptr<const report::Chart> chart, std::string words) {
        chart_ = std::move(chart);
        words_ = std::move(words);
        changed();
    }
    [[nodiscard]] const std::shared_ptr<const report::Chart>& chart() const { return chart_; } // may be empty
    [[nodiscard]] bool takesFocus() const override { return false; }
    [[nodiscard]] std::string shownText() const override { return words_; }

private:
    std::shared_ptr<const report::Chart> chart_;
    std::string words_;
};

} // namespace veldona
