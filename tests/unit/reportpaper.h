// Takes the rows of the report that was shown last, cells joined by "|"; Null as "NULL".
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/report/desk.h"
#include "platform/runtime/conversion.h"

namespace veldona::test {

class PaperDesk : public report::ReportDesk {
public:
    using Paper = std::vector<std::string>;

    void preview(const report::Document& document) override {
        paper_.emplace();
        const report::DataSet& data = document.data.front();
        for (std::size_t row = 0; row < data.rowCount(); ++row) {
            std::string line;
            for (std::size_t column = 0; column < data.columns.size(); ++column) {
                const Value& cell = data.at(row, column);
                line += (column ? "|" : "") + (cell.isNull() ? "NULL" : toText(cell));
            }
            paper_->push_back(line);
        }
    }
    void opened(const report::Document&) override {}
    bool print(const report::Document&) override { return true; }
    void writeFile(const report::Document&, const std::string&) override {}

    // Nothing where none was shown since.
    [[nodiscard]] std::optional<Paper> take() { return std::exchange(paper_, std::nullopt); }

private:
    std::optional<Paper> paper_;
};

} // namespace veldona::test
