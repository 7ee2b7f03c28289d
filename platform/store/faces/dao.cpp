#include "platform/store/faces/dao.h"

#include "platform/runtime/text.h"
#include "platform/store/dialect/names.h"
#include "platform/store/faces/daoerror.h"
#include "platform/store/faces/daorecordset.h"
#include "platform/store/faces/database.h"
#include "platform/store/faces/rowwalk.h"
#include "platform/store/faces/workspace.h"

namespace veldona::dao {
namespace {

bool isSelect(std::string_view source) {
    constexpr std::string_view word = "SELECT";
    if (!store::sameName(source.substr(0, word.size()), word) || source.size() == word.size()) return false;
    return std::string_view(" \t\r\n([*").find(source[word.size()]) != std::string_view::npos;
}

std::unique_ptr<RowWalk> walk(std::shared_ptr<store::Database> database, std::string_view source,
                              const Narrowings& narrowing) {
    if (isSelect(source)) return walkAnswer(std::move(database), source, narrowing);
    const store::Catalog::Relation* relation = database->catalog().find(source);
    if (relation == nullptr)
        throw RuntimeError(kNoSuchRelation, "Tablo ya da sorgu bulunamadı: " + std::string(source) + ".");
    if (relation->isQuery)
        return walkAnswer(std::move(database), "SELECT * FROM [" + relation->name + "]", narrowing);
    return walkTable(std::move(database), *relation, narrowing);
}

// What stands behind "PWD=", to the end: a password may hold any sign.
std::string_view passwordOf(std::string_view connect) {
    constexpr std::string_view mark = ";PWD=";
    for (std::size_t at = 0; at + mark.size() <= connect.size(); ++at)
        if (store::sameName(connect.substr(at, mark.size()), mark)) return connect.substr(at + mark.size());
    return {};
}

} // namespace

Recordset Database::openRecordset(std::string_view source, std::vector<Narrowing> narrowing) {
    const std::string trimmed = trim(source);
    return withNumbers([&] {
        return Recordset(std::make_unique<Recordset::State>(database_, walk(database_, trimmed, narrowing)));
    });
}

void Database::execute(std::string_view sql) {
    withNumbers([&] { database_->execute(sql); });
}

Database DBEngine::openDatabase(std::string_view path, std::string_view connect) {
    return withNumbers([&] { return Database(workspace_->open(path, passwordOf(connect))); });
}

} // namespace veldona::dao
