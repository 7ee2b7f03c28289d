#include "platform/store/engine/postgres/edition.h"

#include <algorithm>
#include <cinttypes>
#include <cstdint>
#include <cstdio>
#include <tuple>

#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/postgres/definitions.h"

namespace veldona::store {
namespace {

using Kind = StoreError::Kind;

// "veldona 1.0.0 8c2f…": the release, and a digest of all that the schema is made by.
std::string noteOf(const std::vector<TableDef>& tables, const std::vector<SavedQueryDef>& queries) {
    std::uint64_t digest = 0xcbf29ce484222325; // FNV-1a
    for (const char letter : definitionScript(tables, queries))
        digest = (digest ^ static_cast<unsigned char>(letter)) * 0x100000001b3;
    char note[64];
    std::snprintf(note, sizeof note, "veldona " VELDONA_VERSION " %016" PRIx64, digest);
    return note;
}

// 0.0 of books from before it was noted.
std::tuple<int, int, int> releaseOf(const std::string& note) {
    int major = 0, minor = 0, patch = 0;
    static_cast<void>(std::sscanf(note.c_str(), "veldona %d.%d.%d", &major, &minor, &patch));
    return {major, minor, patch};
}

std::string noteIn(Engine& engine) {
    const auto kept = engine.prepare(
        "SELECT coalesce(obj_description(current_schema()::regnamespace, 'pg_namespace'), '')");
    return kept->step() ? std::string(kept->text(0)) : std::string();
}

// The first table or column that is not there; "" where all are.
std::string missingOf(Engine& engine, const std::vector<TableDef>& tables) {
    const Catalog catalog = engine.readCatalog();
    for (const TableDef& table : tables) {
        const Catalog::Relation* known = catalog.find(table.name);
        if (known == nullptr) return table.name;
        for (const ColumnDef& column : table.columns)
            if (std::ranges::find(known->columns, column.name, &ColumnDef::name) == known->columns.end())
                return table.name + '.' + column.name;
    }
    return {};
}

} // namespace

std::string editionStatement(const ServerPlace& place, const std::vector<TableDef>& tables,
                             const std::vector<SavedQueryDef>& queries) {
    return "COMMENT ON SCHEMA " + quotedName(place.schema) + " IS '" + noteOf(tables, queries) + "'; ";
}

Edition editionOf(Engine& engine, const Delivered& delivered) {
    const std::string todays = noteOf(delivered.tables, delivered.queries), known = noteIn(engine);
    if (known == todays) return Edition::Todays;
    return releaseOf(known) > releaseOf(todays) ? Edition::Newer : Edition::Older;
}

void requireTodays(Engine& engine, const ServerPlace& place, const Delivered& delivered) {
    if (delivered.tables.empty()) return;
    const std::string begin = "Sunucudaki defter açılmadı (" + place.address.shown() + "): ";
    switch (editionOf(engine, delivered)) {
    case Edition::Newer:
        throw StoreError(Kind::Other,
                         begin + "programın daha yeni bir sürümüyle yenilenmiş; bu sürüm onu okuyamaz. "
                                 "Deftere dokunulmadı, bir şey kaybolmadı. Öteki bilgisayardaki yeni sürümü "
                                 "buraya da kurup yeniden başlatın.");
    case Edition::Older:
        throw StoreError(Kind::Other,
                         begin + "programın eski bir sürümünün; bu sürümün istediklerinin hepsi onda yok. "
                                 "Deftere dokunulmadı, bir şey kaybolmadı. Bütün kasalarda programı kapatıp "
                                 "bir kasada bir kez vorel-sunucu --yenile komutunu çalıştırın.");
    case Edition::Todays:
        break;
    }
    const std::string missing = missingOf(engine, delivered.tables);
    if (!missing.empty())
        throw StoreError(Kind::Damaged, begin + missing +
                                            " eksik. Sunucudaki veritabanı değiştirilmiş ya da yarım geri "
                                            "yüklenmiş. Deftere dokunulmadı; son yedeği geri yükleyin.");
}

} // namespace veldona::store
