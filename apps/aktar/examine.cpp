#include "apps/aktar/examine.h"

#include <algorithm>
#include <cmath>
#include <iterator>
#include <map>
#include <string_view>
#include <unordered_set>
#include <utility>

#include "apps/aktar/jettext.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/dialect/literal.h"
#include "platform/store/dialect/names.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/journalseal.h"
#include "schema/tables.h"

namespace veldona::aktar {
namespace {

using store::ColumnDef;
using store::ColumnType;
using store::sameName;
using store::TableDef;

// What every balance and every link between the tables is made of. A file without one of these is no shop's,
// or the name of a table or a field is damaged.
struct Needed {
    const char* table;
    std::vector<const char*> columns;
};
const std::vector<Needed> kNeeded = {
    {"MUSTKAYIT", {"HSTNO", "AD", "SOYAD"}},
    {"ISLEMNOTABLO", {"MUSTNO", "ISLEMNO", "TOPBORC", "TRH", "INDIRIM_YTL"}},
    {"URUNAL", {"MUSTNO", "ISLEMNO", "URKOD", "ADET", "FIYAT"}},
    {"URUNSAT", {"MUSTNO", "ISLEMNO", "ODTRH", "ODMIKTAR", "PESINAT"}},
    {"TAKSITODENEN", {"MUSTNO", "ISLEMNO", "ODTRH", "ODMIKTAR"}},
    {"URUNTANITIM", {"URKOD"}},
};

bool isWhole(ColumnType type) {
    return type == ColumnType::Counter || type == ColumnType::Whole || type == ColumnType::Small;
}

const TableDef* findIn(const std::vector<TableDef>& tables, const std::string& name) {
    for (const TableDef& table : tables)
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

void checkNeeded(const Examination& made) {
    const auto refuse = [](const std::string& what) {
        throw Damaged("Dosyada " + what +
                      " yok: ya bir dükkân defteri değil ya da bozuk. Hiçbir şey aktarılmadı.");
    };
    for (const Needed& needed : kNeeded) {
        const auto match = std::find_if(made.matches.begin(), made.matches.end(), [&](const Match& known) {
            return known.target.table->name == needed.table;
        });
        if (match == made.matches.end()) refuse(std::string(needed.table) + " tablosu");
        for (const char* column : needed.columns) {
            const auto& there = match->target.columns;
            if (std::none_of(there.begin(), there.end(),
                             [&](const ColumnDef& known) { return known.name == column; }))
                refuse(std::string(needed.table) + '.' + column + " alanı");
        }
    }
}

// The journal is written by the engine alone: no file brings entries.
bool isJournal(const std::string& table) {
    return sameName(table, store::kJournalTable);
}

void matchTables(const JetFile& file, Examination& made) {
    for (const JetTable& source : file.tables()) {
        const TableDef* target = isJournal(source.name) ? nullptr : findIn(schema::tables(), source.name);
        if (findIn(schema::scratchTables(), source.name) != nullptr) continue; // what a report left behind
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
        if (!found && !isJournal(table.name)) made.remarks.push_back("Dosyada olmayan tablo: " + table.name);
    }
    checkNeeded(made);
}

// Gathers values by what is wrong with them, one line a column, with the first row that shows it.
class Problems {
public:
    explicit Problems(std::string title) : title_(std::move(title)) {}

    void note(const std::string& place, std::uint64_t row, const std::string& what) {
        Found& found = found_[place];
        if (found.count++ == 0) found.first = what + " (ilki " + std::to_string(row) + ". satırda)";
    }
    [[nodiscard]] std::vector<std::string> lines() const {
        std::vector<std::string> lines;
        for (const auto& [place, found] : found_)
            lines.push_back(title_ + place + ", " + std::to_string(found.count) + " değer: " + found.first);
        return lines;
    }

private:
    struct Found {
        std::uint64_t count = 0;
        std::string first;
    };
    std::string title_;
    std::map<std::string, Found> found_;
};

// Amounts that an operator types, to the kuruş; the shares of a plan may have fractions. A damaged bit of
// such a number nearly always leaves a fraction.
bool isTypedAmount(const TableDef& table, const ColumnDef& column) {
    static constexpr std::pair<std::string_view, std::string_view> kTyped[] = {
        {"TAKSITODENEN", "ODMIKTAR"},
        {"URUNAL", "FIYAT"},
        {"ISLEMNOTABLO", "TOPBORC"},
        {"ISLEMNOTABLO", "INDIRIM_YTL"}};
    return std::find(std::begin(kTyped), std::end(kTyped),
                     std::pair<std::string_view, std::string_view>(table.name, column.name)) !=
           std::end(kTyped);
}

// The screens ask for an account by its number between quotes, as it is typed into one line and without the
// blanks at its ends. A number that is lost on that way has an account that nobody can open.
bool isOpenable(const Value& number) {
    if (!number.isText()) return !number.isNull();
    const std::string& text = number.get<std::string>();
    return !text.empty() && text.find('\'') == std::string::npos && visibleText(text) == text &&
           trim(text) == text;
}

enum class Sort { Plain, AccountNumber, TypedAmount };

Sort sortOf(const TableDef& table, const ColumnDef& column) {
    if (column.name == "HSTNO" || column.name == "MUSTNO") return Sort::AccountNumber;
    return isTypedAmount(table, column) ? Sort::TypedAmount : Sort::Plain;
}

// Why a value that fits is hardly what somebody wrote; empty where there is no reason.
std::string doubtOf(const Value& value, Sort sort) {
    constexpr int kFirstYear = 1900, kLastYear = 2100;
    constexpr double kKurus = 10'000; // of the stored scale
    if (sort == Sort::AccountNumber && !isOpenable(value)) return "ekranların açamadığı hesap numarası: ";
    if (value.isText()) {
        const std::optional<std::string> letter = foreignLetter(value.get<std::string>());
        return letter ? "Türkçe Windows'ta olmayan \"" + *letter + "\" harfi: " : std::string();
    }
    if (sort == Sort::TypedAmount && value.kind() == Value::Kind::Double)
        return std::fmod(value.get<double>(), kKurus) != 0 ? "kuruşun kesri olan tutar: " : "";
    if (value.kind() != Value::Kind::Date) return {};
    const int year = value.get<DateTime>().year();
    return year < kFirstYear || year > kLastYear ? "uzak bir tarih: " : "";
}

struct Gathered {
    Problems problems{"Sığmıyor: "};
    Problems doubts{"Şüpheli: "};
};

void examineTable(const JetFile& file, const Match& match, Report& report, Gathered& gathered,
                  const Progress& progress) {
    TableCounter counter(report, match.target);
    std::unordered_set<std::int64_t> counters;
    std::vector<Value> fitting(match.columns.size());
    std::vector<Sort> sorts;
    for (const ColumnDef& column : match.target.columns)
        sorts.push_back(sortOf(*match.target.table, column));
    std::uint64_t row = 0;
    const auto note = [&](Problems& into, const ColumnDef& column, const std::string& what,
                          const Value& value) {
        into.note(match.target.table->name + '.' + column.name, row, what + '"' + joinText(value) + '"');
    };
    file.read(*match.source, [&](std::span<const Value> values) {
        ++row;
        for (std::size_t i = 0; i < fitting.size(); ++i) {
            const Value& value = values[match.columns[i]];
            const ColumnDef& column = match.target.columns[i];
            const std::optional<Value> fits = fitted(value, column);
            fitting[i] = fits.value_or(Value());
            if (!fits) note(gathered.problems, column, "", value);
            const std::string doubt = doubtOf(value, sorts[i]);
            if (!doubt.empty()) note(gathered.doubts, column, doubt, value);
            if (column.type != ColumnType::Counter || !fits) continue;
            const bool fresh = !fits->isNull() && counters.insert(fits->get<std::int64_t>()).second;
            if (!fresh) note(gathered.problems, column, "sayaç boş ya da ikinci kez: ", value);
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
    const bool holdsText = type == ColumnType::Text || type == ColumnType::Memo;
    if (!holdsText && value.isText() && value.get<std::string>().empty()) return Value();
    try {
        return store::bindValue(value, type == ColumnType::Counter ? ColumnType::Whole : type);
    } catch (const store::StoreError&) {
        return std::nullopt;
    }
}

std::optional<Value> fitted(const Value& value, const ColumnDef& column) {
    const std::optional<Value> fits = fitted(value, column.type);
    return fits && fits->isNull() && column.defaultValue ? Value(*column.defaultValue) : fits;
}

Examination examine(const JetFile& file, const Progress& progress) {
    Examination made;
    matchTables(file, made);
    Gathered gathered;
    for (const Match& match : made.matches)
        examineTable(file, match, made.report, gathered, progress);
    made.doubts = gathered.doubts.lines();
    for (std::string& line : gathered.problems.lines())
        made.problems.push_back(std::move(line));
    return made;
}

} // namespace veldona::aktar
