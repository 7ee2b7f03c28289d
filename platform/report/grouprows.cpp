#include "platform/report/grouprows.h"

#include "platform/report/reporterror.h"
#include "platform/runtime/conversion.h"

namespace veldona::report {

namespace {

DataSet emptyLike(const DataSet& data) {
    return {data.name, data.columns, {}, data.heading, data.table};
}

void addRow(DataSet& into, const DataSet& from, std::size_t row) {
    for (std::size_t column = 0; column < from.columns.size(); ++column)
        into.cells.push_back(from.at(row, column));
}

} // namespace

std::vector<const DataSet*> pointersTo(const std::vector<DataSet>& data) {
    std::vector<const DataSet*> all;
    all.reserve(data.size());
    for (const DataSet& each : data)
        all.push_back(&each);
    return all;
}

GroupRows::GroupRows(const Group& group, const std::vector<DataSet>& data, const std::string& file) {
    for (const DataSet& each : data) {
        const int column = each.findColumn(group.key);
        if (each.name == group.query) {
            own_ = &each;
            keyColumn_ = column;
        } else if (column < 0) {
            whole_.push_back(&each);
        } else {
            Keyed& keyed = keyed_.emplace_back(Keyed{&each, {}});
            for (std::size_t row = 0; row < each.rowCount(); ++row)
                keyed.rowsOf[joinText(each.at(row, static_cast<std::size_t>(column)))].push_back(row);
        }
    }
    if (!own_) throw ReportError(file, group.line, "\"" + group.query + "\" adında veri yok.");
    if (keyColumn_ < 0)
        throw ReportError(file, group.line,
                          "\"" + group.query + "\" verisinde \"" + group.key + "\" sütunu yok.");
}

std::vector<const DataSet*> GroupRows::Slice::all() const {
    std::vector<const DataSet*> sets = pointersTo(limited_);
    sets.insert(sets.end(), whole_.begin(), whole_.end());
    return sets;
}

GroupRows::Slice GroupRows::at(std::size_t row) const {
    Slice slice;
    slice.whole_ = whole_;
    addRow(slice.limited_.emplace_back(emptyLike(*own_)), *own_, row);
    const std::string key = joinText(own_->at(row, static_cast<std::size_t>(keyColumn_)));
    for (const Keyed& keyed : keyed_) {
        DataSet& limited = slice.limited_.emplace_back(emptyLike(*keyed.data));
        const auto rows = keyed.rowsOf.find(key);
        if (rows == keyed.rowsOf.end()) continue;
        for (const std::size_t each : rows->second)
            addRow(limited, *keyed.data, each);
    }
    return slice;
}

} // namespace veldona::report
