#include "platform/report/layout.h"

#include <utility>

namespace veldona::report {

namespace {

std::vector<Section*> sectionsOf(Layout& layout) {
    std::vector<Section*> all;
    const auto add = [&](std::optional<Section>& section) {
        if (section) all.push_back(&*section);
    };
    for (auto* section : {&layout.reportHeader, &layout.pageHeader, &layout.pageFooter, &layout.reportFooter})
        add(*section);
    eachPart(
        layout.body, [&](Section& band) { all.push_back(&band); },
        [&](Table& table) {
            add(table.header);
            all.push_back(&table.detail);
            add(table.footer);
        });
    return all;
}

} // namespace

bool Layout::setText(std::string_view section, std::string_view name, std::string text) {
    for (Section* each : sectionsOf(*this)) {
        if (each->name != section) continue;
        for (TextElement& element : each->texts) {
            if (element.name != name) continue;
            element.pieces.assign(1, Piece{Piece::Kind::Words, std::move(text), {}, {}});
            return true;
        }
    }
    return false;
}

bool Layout::setChart(std::string_view name, const Chart& chart) {
    bool isThere = false;
    for (Section* section : sectionsOf(*this))
        for (ChartElement& element : section->charts) {
            if (element.name != name) continue;
            element.chart = chart;
            isThere = true;
        }
    return isThere;
}

std::vector<TextElement*> Layout::texts() {
    std::vector<TextElement*> all;
    for (Section* section : sectionsOf(*this))
        for (TextElement& element : section->texts)
            all.push_back(&element);
    return all;
}

bool Layout::setQuery(std::string_view name, std::string sql) {
    for (Query& query : queries) {
        if (query.name != name) continue;
        query.sql = std::move(sql);
        return true;
    }
    return false;
}

} // namespace veldona::report
