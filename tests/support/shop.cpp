#include "tests/support/shop.h"

#include "core/delivered.h"
#include "core/session.h"
#include "core/startup.h"
#include "platform/runtime/conversion.h"
#include "platform/store/engine/createdatabase.h"
#include "platform/store/faces/adodb.h"
#include "schema/tables.h"

namespace veldona::test {

Shop::Shop()
    : desktop{clock,
              dialogs,
              pump,
              opener,
              Paths(folder_.path().string()),
              {},
              DataSources(folder_ / "ODBC.INI")},
      forms(host), session(desktop, forms) {
    clock.set(DateTime::of(2026, 11, 22, 10, 30));
    const std::string books = folder_ / "VELDONA/Veldona_Taksit/vorel.mdb";
    std::filesystem::create_directories(std::filesystem::path(books).parent_path());
    store::createDatabase(books, kDeliveredPassword, schema::tables(), schema::savedQueries());
    OturumBaslat(session);
    for (const char* statement : schema::firstRows())
        run(statement);
    session.gParaBirimi = 1;
}

Shop::~Shop() {
    session.gBaglanti.reset();
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
