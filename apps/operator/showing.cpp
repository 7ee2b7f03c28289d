#include <iostream>

#include "apps/operator/verbs.h"
#include "platform/controls/lists.h"

namespace veldona::console {

namespace {

void printRows(const ShownRows& rows) {
    for (int row = 0; row < rows.countShown(); ++row) {
        std::cout << (row == rows.selectedShown() ? "  > " : "    ") << rows.textShown(row, 0);
        for (int column = 1; column < rows.columnsShown(); ++column)
            std::cout << '|' << rows.textShown(row, column);
        std::cout << '\n';
    }
}

void printTools(const ToolBar& bar) {
    for (const ToolBar::Tool& tool : bar.tools()) {
        if (tool.visible) std::cout << "    " << tool.key << (tool.enabled ? "" : " (disabled)") << '\n';
    }
}

void show(Stage& stage, const Line& line) {
    const Control& control = stage.control(line.words[0]);
    std::cout << control.form().name() << '.' << control.name() << ": \"" << control.shownText() << '"'
              << (control.isShown() ? "" : " (hidden)") << (control.isUsable() ? "" : " (disabled)") << '\n';
    if (const ShownRows* rows = control.shownRows()) printRows(*rows);
    if (const auto* bar = dynamic_cast<const ToolBar*>(&control)) printTools(*bar);
}

void showMessages(Stage& stage, const Line&) {
    for (const auto& said : stage.dialogs.said)
        std::cout << messageText(said) << '\n';
    stage.dialogs.said.clear();
}

const ShownReport& lastReport(Stage& stage) {
    if (stage.reports.last()) return *stage.reports.last();
    throw Shortfall("no report has been shown");
}

void showReport(Stage& stage, const Line&) {
    std::cout << lastReport(stage).text << '\n';
}

void saveReport(Stage& stage, const Line& line) {
    try {
        lastReport(stage).writePdf(line.words[0].text);
    } catch (const RuntimeError& error) {
        throw Shortfall("the report was not written: " + error.description());
    }
}

void takePicture(Stage& stage, const Line& line) {
    if (stage.windows() == nullptr) throw Shortfall("there are no windows to picture without --pencere");
    if (!stage.windows()->takePicture(stage.screen(), line.words[0].text)) {
        throw Shortfall("the picture was not written: " + line.words[0].text);
    }
}

constexpr Verb kVerbs[] = {
    {"show", 1, 1, show},
    {"messages", 0, 0, showMessages},
    {"report", 0, 0, showReport},
    {"report-save", 1, 1, saveReport},
    {"screenshot", 1, 1, takePicture},
};

} // namespace

std::span<const Verb> showingVerbs() {
    return kVerbs;
}

} // namespace veldona::console
