#include "tests/support/shop.h"

#include <stdlib.h>

#include "platform/runtime/conversion.h"
#include "platform/store/engine/createdatabase.h"
#include "schema/tables.h"

namespace veldona::test {

namespace {

std::filesystem::path freshFolder() {
    std::string name = (std::filesystem::temp_directory_path() / "veldona-test-XXXXXX").string();
    if (!mkdtemp(name.data())) throw std::runtime_error("no temporary folder");
    std::filesystem::create_directories(name + "/VELDONA/Veldona_Taksit");
    return name;
}

} // namespace

Shop::Shop()
    : folder_(freshFolder()), desktop{clock,
                                      dialogs,
                                      pump,
                                      opener,
                                      Paths(folder_.string()),
                                      {},
                                      DataSources((folder_ / "ODBC.INI").string())},
      forms(host), session(desktop, forms) {
    clock.set(DateTime::of(2026, 11, 22, 10, 30));
    store::createDatabase((folder_ / "VELDONA/Veldona_Taksit/vorel.mdb").string(), kDeliveredPassword,
                          schema::tables(), schema::savedQueries());
    OturumBaslat(session);
    for (const char* statement : schema::firstRows())
        run(statement);
    session.gParaBirimi = 1;
}

Shop::~Shop() {
    session.gBaglanti.reset();
    std::filesystem::remove_all(folder_);
}

std::vector<std::string> Shop::rows(const std::string& sql) {
    adodb::Recordset rs;
    rs.open(sql, *session.gBaglanti);
    std::vector<std::string> lines;
    for (; !rs.eof(); rs.moveNext()) {
        std::string line;
        for (int i = 0; i < rs.fieldCount(); ++i)
            line += (i ? "|" : "") + (rs.value(i).isNull() ? "NULL" : toText(rs.value(i)));
        lines.push_back(line);
    }
    return lines;
}

void Shop::run(const std::string& sql) {
    session.gBaglanti->execute(sql);
}

std::vector<std::string> Shop::said() {
    std::vector<std::string> texts;
    for (const auto& message : dialogs.said)
        texts.push_back(message.text);
    dialogs.said.clear();
    return texts;
}

} // namespace veldona::test
