#include "platform/report/rows.h"

#include <algorithm>
#include <utility>

#include "platform/report/allowance.h"
#include "platform/runtime/error.h"
#include "platform/store/engine/engine.h"
#include "platform/store/faces/adodb.h"

namespace veldona::report {

namespace {

// Column names are of the alphabet without Turkish letters, so "ID" and "id" are one.
bool sameName(std::string_view a, std::string_view b) {
    const auto lowered = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [&](char x, char y) { return lowered(x) == lowered(y); });
}

} // namespace

int DataSet::findColumn(std::string_view column) const {
    const auto found = std::find_if(columns.begin(), columns.end(),
                                    [&](const Column& c) { return sameName(c.name, column); });
    return found == columns.end() ? -1 : static_cast<int>(found - columns.begin());
}

DataSet rowsOf(const adodb::Recordset& rs, std::string name) {
    DataSet made;
    made.name = std::move(name);
    const int columns = rs.fieldCount();
    for (int c = 0; c < columns; ++c)
        made.columns.push_back({rs.fieldName(c), rs.fieldType(c)});
    const int rows = rs.recordCount();
    made.cells.reserve(static_cast<std::size_t>(rows) * static_cast<std::size_t>(columns));
    for (int r = 0; r < rows; ++r)
        for (int c = 0; c < columns; ++c)
            made.cells.push_back(rs.at(r, c));
    return made;
}

ConnectionQueries::ConnectionQueries(adodb::Connection& connection, std::function<bool()> goOn)
    : connection_(&connection), goOn_(std::move(goOn)), bytesLeft_(kMostRowBytes) {}

DataSet ConnectionQueries::run(const std::string& name, const std::string& sql) {
    bool isGivenUp = false;
    const store::ReadBounds bounds{kMostRows, bytesLeft_, [&] {
                                       isGivenUp = goOn_ && !goOn_();
                                       return !isGivenUp;
                                   }};
    adodb::Recordset rs;
    try {
        const adodb::BoundedReading bounded(*connection_, bounds);
        rs.open(sql, *connection_);
    } catch (const RuntimeError&) {
        if (isGivenUp) raise(ErrorNumber::UserInterrupt);
        throw;
    }
    DataSet made = rowsOf(rs, name);
    for (const Value& cell : made.cells)
        bytesLeft_ -= std::min(bytesLeft_, store::bytesOf(cell));
    return made;
}

} // namespace veldona::report
