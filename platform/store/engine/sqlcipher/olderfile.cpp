#include "platform/store/engine/sqlcipher/olderfile.h"

#include <string>

#include "platform/store/engine/sqlcipher/definitionsql.h"

namespace veldona::store {
namespace {

std::string declarationOf(Engine& engine, const std::string& table) {
    const auto known = engine.prepare("SELECT sql FROM sqlite_master WHERE type = 'table' AND name = ?1");
    known->bind(1, table);
    return known->step() ? std::string(known->text(0)) : std::string();
}

// Where the column's definition ends in `declaration`, if it stands there without its default.
std::size_t endOfUndefaulted(const std::string& declaration, const ColumnDef& column) {
    const std::string definition = columnDefinition({column.name, column.type});
    const std::size_t at = declaration.find(definition);
    if (at == std::string::npos) return at;
    const std::size_t end = at + definition.size();
    const char behind = end < declaration.size() ? declaration[end] : ' ';
    return behind == ',' || behind == ')' ? end : std::string::npos;
}

// The declaration with the defaults that it lacks; what holds Null in their columns holds them, too, if
// `fill`.
std::string defaulted(Engine& engine, const TableDef& table, std::string declaration, bool fill) {
    for (const ColumnDef& column : table.columns) {
        if (!column.defaultValue) continue;
        const std::size_t end = endOfUndefaulted(declaration, column);
        if (end == std::string::npos) continue;
        const std::string value = std::to_string(*column.defaultValue);
        declaration.insert(end, " DEFAULT " + value);
        const std::string name = '"' + column.name + '"';
        if (fill)
            engine.execute("UPDATE \"" + table.name + "\" SET " + name + " = " + value + " WHERE " + name +
                           " IS NULL");
    }
    return declaration;
}

bool lacksDefaults(Engine& engine, const std::vector<TableDef>& tables) {
    for (const TableDef& table : tables) {
        const std::string known = declarationOf(engine, table.name);
        if (defaulted(engine, table, known, false) != known) return true;
    }
    return false;
}

// The engine has no statement that gives a column a default. Where nothing else of a declaration changes, it
// allows its text to be written; the raised version makes other workstations read it anew.
void writeDefaults(Engine& engine, const std::vector<TableDef>& tables) {
    engine.begin();
    for (const TableDef& table : tables) {
        const std::string known =
            declarationOf(engine, table.name); // another workstation may have been first
        const std::string today = defaulted(engine, table, known, true);
        if (today == known) continue;
        engine.execute("PRAGMA writable_schema = ON");
        const auto write =
            engine.prepare("UPDATE sqlite_master SET sql = ?1 WHERE type = 'table' AND name = ?2");
        write->bind(1, today);
        write->bind(2, table.name);
        write->step();
        engine.execute("PRAGMA writable_schema = OFF");
    }
    const auto version = engine.prepare("PRAGMA schema_version");
    version->step();
    const std::int64_t raised = version->whole(0) + 1;
    version->reset();
    engine.execute("PRAGMA schema_version = " + std::to_string(raised));
    engine.commit();
}

} // namespace

bool addMissingDefaults(Engine& engine, const std::vector<TableDef>& tables) {
    if (!lacksDefaults(engine, tables)) return false;
    try {
        writeDefaults(engine, tables);
    } catch (const StoreError&) {
        // The books can be read and worked on all the same; what the disk has to say, the next save says.
        if (engine.inTransaction()) engine.rollback();
        engine.execute("PRAGMA writable_schema = OFF");
        static_cast<void>(engine.takeDiskFailure());
        return false;
    }
    return true;
}

} // namespace veldona::store
