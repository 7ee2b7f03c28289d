#include "apps/aktar/movein.h"

#include "apps/hazirla/delivered.h"
#include "apps/hazirla/firstbooks.h"
#include "core/delivered.h"
#include "platform/store/engine/bulkload.h"
#include "platform/store/engine/journalseal.h"
#include "platform/store/engine/openplace.h"
#include "schema/tables.h"

namespace veldona::aktar {
namespace {

using hazirla::Refusal;

// But the journal, which tells of the making itself.
std::vector<TableView> everything() {
    std::vector<TableView> views;
    for (const store::TableDef& table : schema::tables())
        if (table.name != store::kJournalTable) views.push_back({&table, table.columns});
    return views;
}

// The rows that every shop starts from give way where the shop brings its own.
std::vector<std::string> emptying(const Examination& examined) {
    std::vector<std::string> statements;
    for (const Match& match : examined.matches)
        if (match.source->rows > 0) statements.push_back("DELETE FROM " + match.target.table->name);
    return statements;
}

void writeTable(store::BulkLoad& load, const JetFile& file, const Match& match, const Progress& progress) {
    std::vector<std::string> names;
    for (const store::ColumnDef& column : match.target.columns)
        names.push_back(column.name);
    store::BulkLoad::Rows rows = load.into(*match.target.table, names);
    std::vector<Value> row(names.size());
    std::uint64_t done = 0;
    file.read(*match.source, [&](std::span<const Value> values) {
        for (std::size_t i = 0; i < row.size(); ++i) {
            const std::optional<Value> fits = fitted(values[match.columns[i]], match.target.columns[i]);
            if (!fits) throw Refusal("Dosya aktarılırken değişti. Hiçbir şey aktarılmadı.");
            row[i] = *fits;
        }
        rows.add(row);
        progress(match.target.table->name, ++done, match.source->rows);
    });
}

Report readBack(const std::string& file, const Examination& examined) {
    std::vector<TableView> views;
    for (const Match& match : examined.matches)
        views.push_back(match.target);
    return readBooks(file, views);
}

// Whether nobody has written to `target` since it was made; `books` is as delivered, and may be left as the
// first start makes it.
bool isUntouched(const std::string& target, const std::string& books) {
    const Report found = readBooks(target, everything());
    if (found == readBooks(books, everything())) return true;
    hazirla::runStatements(books, {hazirla::kAskForLetterhead});
    return found == readBooks(books, everything());
}

void fill(const JetFile& file, const Examination& examined, const std::string& books,
          const Progress& progress) {
    hazirla::runStatements(books, emptying(examined));
    store::BulkLoad load(books, kDeliveredPassword);
    for (const Match& match : examined.matches)
        if (match.source->rows > 0 && !match.columns.empty()) writeTable(load, file, match, progress);
    load.finish();
}

} // namespace

void moveIn(const JetFile& file, const Examination& examined, const std::string& target,
            const Progress& progress) {
    const bool stands = hazirla::standAt(store::placeOf(target));
    const auto existing = stands ? hazirla::Existing::Replace : hazirla::Existing::Keep;
    hazirla::deliver(target, existing, [&](const std::string& books) {
        if (stands && !isUntouched(target, books))
            throw Refusal(store::shown(store::placeOf(target)) +
                          " boş değil ve olduğu gibi bırakıldı. Yalnızca boş bir deftere aktarılır.");
        fill(file, examined, books, progress);
        if (readBack(books, examined) != examined.report)
            throw Refusal("Yeni defter eski dosyayla aynı çıkmadı. Hiçbir şey aktarılmadı.");
    });
}

} // namespace veldona::aktar
