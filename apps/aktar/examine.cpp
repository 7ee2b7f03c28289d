#include "apps/aktar/examine.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <unordered_set>

#include "platform/runtime/conversion.h"
#include "platform/store/dialect.h"
#include "platform/store/names.h"
#include "platform/store/storeerror.h"
#include "schema/tables.h"

namespace veldona::aktar {
namespace {

using store::ColumnDef;
using store::ColumnType;
using store::sameName;
using store::TableDef;

bool isWhole(ColumnType type) {
    return type == ColumnType::Counter || type == ColumnType::Whole || type == ColumnType::Small;
}

const TableDef* findTarget(const std::string& name) {
    for (const TableDef& table : schema::tables())
        if (sameName(table.name, name)) return &table;
    return nullptr;
}

Match matchColumns(const JetTable& source, const TableDef& target, Examination& made) {
    Match match{&source, {&target, {}}, {}};
    std::vector<bool> used(source.columns.size());
    for (const ColumnDef& column : target.columns) {
        const auto found =
            std::find_if(source.columns.begin(), source.columns.end(),
                         [&](const JetColumn& known) { return sameName(known.name, column.name); });
        if (found == source.columns.end()) {
            if (column.type != ColumnType::Counter)
                made.remarks.push_back("Dosyada olmayan alan boş kalır: " + target.name + '.' + column.name);
            continue;
        }
        const auto place = static_cast<std::size_t>(found - source.columns.begin());
        used[place] = true;
        if (!found->readable)
            made.problems.push_back("Sığmıyor: " + target.name + '.' + column.name +
                                    " alanının türü okunamaz.");
        match.columns.push_back(place);
        match.target.columns.push_back(column);
    }
    for (std::size_t i = 0; i < used.size(); ++i)
        if (!used[i])
            made.remarks.push_back("Bilinmeyen alan aktarılmaz: " + source.name + '.' +
                                   source.columns[i].name);
    return match;
}

void matchTables(const JetFile& file, Examination& made) {
    for (const JetTable& source : file.tables()) {
        const TableDef* target = findTarget(source.name);
        if (target == nullptr) {
            made.remarks.push_back("Bilinmeyen tablo aktarılmaz: " + source.name + " (" +
                                   std::to_string(source.rows) + " satır)");
            continue;
        }
        if (source.linked)
            throw hazirla::Refusal(source.name + " bağlı bir tablo; satırları başka bir dosyada. Önce o "
                                                 "dosyadan bu dosyaya alınmalı. Hiçbir şey aktarılmadı.");
        made.matches.push_back(matchColumns(source, *target, made));
    }
    for (const TableDef& table : schema::tables()) {
        const bool found = std::any_of(made.matches.begin(), made.matches.end(),
                                       [&](const Match& match) { return match.target.table == &table; });
        if (found) continue;
        if (table.name == "MUSTKAYIT")
            throw Damaged("Dosyada MUSTKAYIT tablosu yok: ya bir dükkân defteri değil ya da bozuk.");
        made.remarks.push_back("Dosyada olmayan tablo: " + table.name);
    }
}

// Gathers what does not fit, one line a column, with the first row that shows it.
class Problems {
public:
    void note(const std::string& place, std::uint64_t row, const std::string& what) {
        Found& found = found_[place];
        if (found.count++ == 0) found.first = what + " (ilki " + std::to_string(row) + ". satırda)";
    }
    [[nodiscard]] std::vector<std::string> lines() const {
        std::vector<std::string> lines;
        for (const auto& [place, found] : found_)
            lines.push_back("Sığmıyor: " + place + ", " + std::to_string(found.count) +
                            " değer: " + found.first);
        return lines;
    }

private:
    struct Found {
        std::uint64_t count = 0;
        std::string first;
    };
    std::map<std::string, Found> found_;
};

void examineTable(const JetFile& file, const Match& match, Report& report, Problems& problems,
                  const Progress& progress) {
    TableCounter counter(report, match.target);
    std::unordered_set<std::int64_t> counters;
    std::vector<Value> fitting(match.columns.size());
    std::uint64_t row = 0;
    const auto note = [&](const ColumnDef& column, const std::string& what, const Value& value) {
        problems.note(match.target.table->name + '.' + column.name, row, what + '"' + joinText(value) + '"');
    };
    file.read(*match.source, [&](std::span<const Value> values) {
        ++row;
        for (std::size_t i = 0; i < fitting.size(); ++i) {
            const Value& value = values[match.columns[i]];
            const ColumnDef& column = match.target.columns[i];
            const std::optional<Value> fits = fitted(value, column.type);
            fitting[i] = fits.value_or(Value());
            if (!fits) note(column, "", value);
            if (column.type != ColumnType::Counter || !fits) continue;
            const bool fresh = !fits->isNull() && counters.insert(fits->get<std::int64_t>()).second;
            if (!fresh) note(column, "sayaç boş ya da ikinci kez: ", value);
        }
        counter.add(fitting);
        progress(match.target.table->name, row, match.source->rows);
    });
}

} // namespace

std::optional<Value> fitted(const Value& value, ColumnType type) {
    if (value.kind() == Value::Kind::Boolean) return fitted(value.get<bool>() ? -1 : 0, type);
    const bool broken = value.kind() == Value::Kind::Double && isWhole(type) &&
                        value.get<double>() != std::trunc(value.get<double>());
    if (broken) return std::nullopt;
    try {
        return store::bindValue(value, type == ColumnType::Counter ? ColumnType::Whole : type);
    } catch (const store::StoreError&) {
        return std::nullopt;
    }
}

Examination examine(const JetFile& file, const Progress& progress) {
    Examination made;
    matchTables(file, made);
    Problems problems;
    for (const Match& match : made.matches)
        examineTable(file, match, made.report, problems, progress);
    for (std::string& line : problems.lines())
        made.problems.push_back(std::move(line));
    return made;
}

} // namespace veldona::aktar
