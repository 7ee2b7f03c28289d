#include "platform/export/sheets.h"

#include <algorithm>
#include <set>

#include "platform/export/cells.h"
#include "platform/runtime/error.h"
#include "platform/runtime/text.h"

namespace veldona::exports {

namespace {

constexpr std::size_t kLongestName = 31;

[[noreturn]] void refuse() {
    throw RuntimeError(static_cast<std::int32_t>(ErrorNumber::InvalidCall), "Raporda seçilen kısım yok.");
}

// A sheet's name is short, free of the signs of a formula, and not the name of another one in any case.
std::string sheetName(const std::string& heading, std::set<std::string>& taken) {
    std::string wanted = heading.empty() ? "Rapor" : heading;
    std::ranges::replace_if(
        wanted, [](char c) { return std::string_view("[]:*?/\\'").find(c) != std::string_view::npos; }, ' ');
    std::string name = left(wanted, kLongestName);
    for (int i = 2; !taken.insert(upperTurkish(name)).second; ++i) {
        const std::string number = " " + std::to_string(i);
        name = left(wanted, kLongestName - number.size()) + number;
    }
    return name;
}

std::vector<SheetRows> lineSheet(const report::Document& document, const WorkbookChoices& choices) {
    report::DataSet lines = linesOf(document, [&](const report::TextRun& run) {
        return (!choices.area || run.area == *choices.area) &&
               (choices.group == 0 || run.table == choices.group);
    });
    if (lines.rowCount() == 0 && (choices.area || choices.group)) refuse();
    std::set<std::string> taken;
    return {{sheetName(document.title, taken), std::move(lines), false, false}};
}

} // namespace

std::vector<SheetRows> sheetsOf(const report::Document& document, const WorkbookChoices& choices) {
    const bool isDetail = choices.area == report::Area::Detail;
    const bool hasRows =
        std::ranges::any_of(document.data, [](const report::DataSet& data) { return data.rowCount() > 0; });
    if (!choices.tabular || !hasRows || (choices.area && !isDetail)) return lineSheet(document, choices);
    std::vector<report::DataSet> chosen = tablesOf(document);
    std::erase_if(chosen, [&](const report::DataSet& data) {
        return (isDetail && data.table == 0) || (choices.group != 0 && data.table != choices.group);
    });
    if (chosen.empty()) refuse();
    std::vector<SheetRows> sheets;
    std::set<std::string> taken;
    for (report::DataSet& data : chosen) {
        const std::string heading = headingOf(data);
        const std::string& name = chosen.size() == 1 || heading.empty() ? document.title : heading;
        sheets.push_back({sheetName(name, taken), std::move(data), choices.headings, !isDetail});
    }
    return sheets;
}

} // namespace veldona::exports
