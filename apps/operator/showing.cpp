#include <iostream>

#include "apps/operator/verbs.h"
#include "platform/controls/lists.h"

namespace veldona::console {

namespace {

void printRows(const ListBox& list) {
    for (int row = 0; row < list.count(); ++row) {
        std::cout << (row == list.listIndex() ? "  > " : "    ") << list.list(row) << '\n';
    }
}

void printRows(const ComboBox& combo) {
    for (int row = 0; row < combo.count(); ++row) {
        std::cout << (row == combo.listIndex() ? "  > " : "    ") << combo.list(row) << '\n';
    }
}

void printRows(const FlexGrid& grid) {
    for (int row = 0; row < grid.rows(); ++row) {
        std::cout << (row == grid.row() ? "  > " : "    ");
        for (int column = 0; column < grid.columns(); ++column) {
            std::cout << (column > 0 ? "|" : "") << grid.textMatrix(row, column);
        }
        std::cout << '\n';
    }
}

void printRows(const DataGrid& grid) {
    for (int row = 0; row < grid.rowCount(); ++row) {
        std::cout << (row == grid.currentRow() ? "  > " : "    ");
        for (int column = 0; column < static_cast<int>(grid.columns().size()); ++column) {
            std::cout << (column > 0 ? "|" : "") << grid.cell(row, column);
        }
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
    if (const auto* list = dynamic_cast<const ListBox*>(&control)) printRows(*list);
    if (const auto* combo = dynamic_cast<const ComboBox*>(&control)) printRows(*combo);
    if (const auto* sheet = dynamic_cast<const FlexGrid*>(&control)) printRows(*sheet);
    if (const auto* grid = dynamic_cast<const DataGrid*>(&control)) printRows(*grid);
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
