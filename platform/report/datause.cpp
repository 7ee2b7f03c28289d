#include "platform/report/datause.h"

#include <algorithm>

namespace veldona::report {

namespace {

class Describer {
public:
    explicit Describer(std::vector<DataSet>& data) : data_(data) {}

    void query(const Query& query) {
        if (DataSet* set = find(query.name)) set->heading = query.heading;
    }

    void table(const Table& table) {
        ++tables_;
        DataSet* shown = find(table.query);
        if (shown && shown->table == 0) shown->table = tables_;
        if (table.footer) sums(*table.footer);
    }
    void sums(const Section& section) {
        for (const TextElement& text : section.texts)
            for (const Piece& piece : text.pieces)
                if (piece.kind == Piece::Kind::Sum) sum(piece.from, section.query);
    }

private:
    [[nodiscard]] DataSet* find(const std::string& name) {
        const auto found = std::ranges::find(data_, name, &DataSet::name);
        return found == data_.end() ? nullptr : &*found;
    }
    void sum(const ColumnRef& from, const std::string& around) {
        DataSet* set = find(from.query.empty() ? around : from.query);
        const int column = set ? set->findColumn(from.column) : -1;
        if (column >= 0) set->columns[static_cast<std::size_t>(column)].summed = true;
    }

    std::vector<DataSet>& data_;
    int tables_ = 0;
};

} // namespace

void describeData(std::vector<DataSet>& data, const Layout& layout) {
    Describer describer(data);
    for (const Query& query : layout.queries)
        describer.query(query);
    eachPart(
        layout.body, [&](const Section& band) { describer.sums(band); },
        [&](const Table& table) { describer.table(table); });
    for (const auto* once : {&layout.reportHeader, &layout.reportFooter})
        if (*once) describer.sums(**once);
    std::ranges::stable_sort(data, [](const DataSet& a, const DataSet& b) {
        return a.table != 0 && (b.table == 0 || a.table < b.table);
    });
}

} // namespace veldona::report
