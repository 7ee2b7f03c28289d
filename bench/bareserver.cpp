#include "bench/bareserver.h"

#include <libpq-fe.h>

#include <unordered_map>
#include <utility>

#include "platform/store/dialect/literal.h"

namespace veldona::bench {
namespace {

using store::Command;

constexpr std::pair<const char*, const char*> kStatements[] = {
    {"customer", R"(SELECT * FROM "MUSTKAYIT" WHERE "HSTNO" = $1)"},
    {"warning", R"(SELECT "ID", "UYARI" FROM "MUSTKAYIT" WHERE "HSTNO" = $1)"},
    {"sales", R"(SELECT DISTINCT "ISLEMNO" FROM "URUNAL" WHERE "MUSTNO" = $1 ORDER BY "ISLEMNO" DESC)"},
    {"due", R"(SELECT "MUSTNO", "ISLEMNO", sum("ODMIKTAR"), max("ODTRH"), min("ODTRH") FROM "URUNSAT"
               WHERE "MUSTNO" = $1 AND "ODTRH" >= $2 AND "ODTRH" < $3 GROUP BY "MUSTNO", "ISLEMNO")"},
    {"paid", R"(SELECT sum("ODMIKTAR") FROM "TAKSITODENEN" WHERE "MUSTNO" = $1 AND "ISLEMNO" = $2::bigint)"},
    {"name", R"(SELECT "AD", "SOYAD" FROM "MUSTKAYIT" WHERE "HSTNO" = $1)"},
    {"lines",
     R"(SELECT "URKOD", * FROM "URUNAL" WHERE "MUSTNO" = $1 AND "ISLEMNO" = $2::bigint ORDER BY "ID")"},
    {"product", R"(SELECT * FROM "URUNTANITIM" WHERE "URKOD" = $1)"},
    {"schedule",
     R"(SELECT * FROM "URUNSAT" WHERE "MUSTNO" = $1 AND "ISLEMNO" = $2::bigint ORDER BY "ODTRH", "ID")"},
    {"received",
     R"(SELECT * FROM "TAKSITODENEN" WHERE "MUSTNO" = $1 AND "ISLEMNO" = $2::bigint ORDER BY "ODTRH", "ID")"},
    {"header", R"(SELECT * FROM "ISLEMNOTABLO" WHERE "ISLEMNO" = $1::bigint)"},
    {"down", R"(SELECT * FROM "URUNSAT" WHERE "ISLEMNO" = $1::bigint AND "PESINAT" = 1)"},
    {"pay",
     R"(INSERT INTO "TAKSITODENEN" ("MUSTNO", "ISLEMNO", "ODTRH", "ODMIKTAR", "KONTROL_KIM",
               "KONTROL_NE_ZAMAN") VALUES ($1, $2::bigint, $3, 1000000, '', $3))"},
    {"put_header", R"(INSERT INTO "ISLEMNOTABLO" ("MUSTNO", "ISLEMNO", "TOPBORC", "TRH", "KONTROL_KIM",
                      "KONTROL_NE_ZAMAN") VALUES ($1, $2::bigint, 1200000000, $3, '', $3))"},
    {"put_line", R"(INSERT INTO "URUNAL" ("MUSTNO", "ISLEMNO", "URKOD", "ADET", "FIYAT", "TRH")
                    VALUES ($1, $2::bigint, '1', 1, 1200000000, $3))"},
    {"put_row", R"(INSERT INTO "URUNSAT" ("MUSTNO", "ISLEMNO", "ODTRH", "ODMIKTAR", "PESINAT")
                   VALUES ($1, $2::bigint, $3, 100000000, 0))"},
    {"stock", R"(UPDATE "URUNTANITIM" SET "TOPLAM_SATILAN" = "TOPLAM_SATILAN" + 1, "KALAN" = "KALAN" - 1
                 WHERE "URKOD" = '1')"},
    {"planned_all", R"(SELECT "MUSTNO", "ISLEMNO", sum("ODMIKTAR"), max("ODTRH"), min("ODTRH") FROM "URUNSAT"
                       WHERE "ODTRH" <= $1 GROUP BY "MUSTNO", "ISLEMNO")"},
    {"paid_all", R"(SELECT "MUSTNO", "ISLEMNO", sum("ODMIKTAR") FROM "TAKSITODENEN"
                    WHERE "ODTRH" <= $1 GROUP BY "MUSTNO", "ISLEMNO")"},
    {"names", R"(SELECT "HSTNO", "AD", "SOYAD" FROM "MUSTKAYIT")"},
    {"paper", R"(SELECT c."HSTNO", c."AD", c."SOYAD", c."EVTEL", r."ODTRH", r."MUSTNO", r."ISLEMNO", r."KALAN"
                 FROM bare_rows r, "MUSTKAYIT" c WHERE r."MUSTNO" = c."HSTNO" ORDER BY r."ODTRH", c."AD")"}};

Command plain(const char* sql) {
    return {Command::Kind::Run, sql, {}, {}};
}

std::string keyOf(const store::ServerAnswer& rows, int row) {
    return std::string(PQgetvalue(rows.get(), row, 0)) + '/' + PQgetvalue(rows.get(), row, 1);
}

} // namespace

BareServer::BareServer(const store::ServerAddress& address, const std::string& schema, DateTime now)
    : wire_(store::connectTo(address, std::chrono::seconds(10))), now_(store::storedDate(now)),
      firstOfMonth_(store::storedDate(DateTime::of(now.year(), now.month(), 1).plusSeconds(1))),
      endOfToday_(store::storedDate(now.date().plusSeconds(86399))) {
    for (int month = 0; month < 12; ++month)
        dueDays_.push_back(store::storedDate(addMonths(now, month)));
    wire_.script("SET search_path = " + schema +
                 "; CREATE TEMPORARY TABLE bare_rows (\"MUSTNO\" text_column, \"AD_SOYAD\" text_column, "
                 "\"ISLEMNO\" bigint, \"ODTRH\" date_column, \"KALAN\" float8, \"MIN_ODTRH\" date_column)");
    for (const auto& [name, sql] : kStatements)
        wire_.run({{Command::Kind::Prepare, sql, name, {}}});
    const Answers lowest = run({plain(R"(SELECT least(0, min("ISLEMNO")) FROM "ISLEMNOTABLO")")});
    lastSale_ = std::stoll(PQgetvalue(lowest[0].get(), 0, 0));
}

Command BareServer::known(const std::string& name, const std::vector<std::string>& values) const {
    Command command{Command::Kind::RunPrepared, {}, name, {}};
    for (const std::string& value : values)
        command.values.push_back({false, 0, value});
    return command;
}

// Every cell is taken out as text: a screen shows nothing else.
BareServer::Answers BareServer::run(const std::vector<Command>& commands) {
    Answers answers = wire_.run(commands);
    for (const store::ServerAnswer& answer : answers)
        for (int row = 0; row < PQntuples(answer.get()); ++row)
            for (int column = 0; column < PQnfields(answer.get()); ++column)
                bytes_ += std::string(PQgetvalue(answer.get(), row, column)).size();
    return answers;
}

void BareServer::addFallenDue(std::vector<Command>& commands, const std::string& account) const {
    commands.push_back(known("name", {account}));
    commands.push_back(known("due", {account, firstOfMonth_, endOfToday_}));
}

void BareServer::addPaid(std::vector<Command>& commands, const std::string& account,
                         const store::ServerAnswer& fallenDue) const {
    for (int row = 0; row < PQntuples(fallenDue.get()); ++row)
        commands.push_back(known("paid", {account, PQgetvalue(fallenDue.get(), row, 1)}));
}

void BareServer::load(const std::string& account) {
    std::vector<Command> first, second;
    for (const char* name : {"customer", "sales", "warning"})
        first.push_back(known(name, {account}));
    addFallenDue(first, account);
    const Answers answers = run(first);
    addPaid(second, account, answers.back());
    if (!second.empty()) run(second);
}

void BareServer::open(const ServerSale& key) {
    std::vector<Command> first, second;
    for (const char* name : {"lines", "schedule", "received"})
        first.push_back(known(name, {key.account, key.sale}));
    for (const char* name : {"header", "down"})
        first.push_back(known(name, {key.sale}));
    addFallenDue(first, key.account);
    const Answers answers = run(first);
    for (int row = 0; row < PQntuples(answers[0].get()); ++row)
        second.push_back(known("product", {PQgetvalue(answers[0].get(), row, 0)}));
    addPaid(second, key.account, answers.back());
    if (!second.empty()) run(second);
}

void BareServer::pay(const ServerSale& key) {
    run({known("pay", {key.account, key.sale, now_})});
}

void BareServer::save(const std::string& account) {
    const std::string sale = std::to_string(--lastSale_);
    std::vector<Command> all = {plain("BEGIN")};
    for (const char* name : {"put_header", "put_line"})
        all.push_back(known(name, {account, sale, now_}));
    all.push_back(known("stock", {}));
    for (const std::string& day : dueDays_)
        all.push_back(known("put_row", {account, sale, day}));
    all.push_back(plain("COMMIT"));
    run(all);
}

int BareServer::overdue() {
    const Answers read = run({known("planned_all", {now_}), known("paid_all", {now_}), known("names", {})});
    std::unordered_map<std::string, double> paid;
    for (int row = 0; row < PQntuples(read[1].get()); ++row)
        paid.emplace(keyOf(read[1], row), std::stod(PQgetvalue(read[1].get(), row, 2)));
    std::string lines;
    int rows = 0;
    for (int row = 0; row < PQntuples(read[0].get()); ++row) {
        const auto known = paid.find(keyOf(read[0], row));
        const double open =
            std::stod(PQgetvalue(read[0].get(), row, 2)) - (known == paid.end() ? 0 : known->second);
        if (open < 10'000) continue; // less than a kuruş
        ++rows;
        lines += std::string(PQgetvalue(read[0].get(), row, 0)) + "\tAd    Soyad\t" +
                 PQgetvalue(read[0].get(), row, 1) + '\t' + PQgetvalue(read[0].get(), row, 3) + '\t' +
                 std::to_string(open) + '\t' + PQgetvalue(read[0].get(), row, 4) + '\n';
    }
    wire_.copyIn("COPY bare_rows FROM STDIN", lines);
    run({known("paper", {}), plain("DELETE FROM bare_rows")});
    return rows;
}

std::vector<ServerSale> BareServer::sales(std::size_t count) {
    const Answers found = run({plain(
        R"(SELECT i."MUSTNO", i."ISLEMNO" FROM "ISLEMNOTABLO" i LEFT JOIN (SELECT "ISLEMNO",
           sum("ODMIKTAR") AS paid FROM "TAKSITODENEN" GROUP BY "ISLEMNO") p ON p."ISLEMNO" = i."ISLEMNO"
           WHERE "TOPBORC" > 100000000 + coalesce(paid, 0) AND i."ISLEMNO" > 0 ORDER BY i."ISLEMNO")")});
    const auto all = static_cast<std::size_t>(PQntuples(found[0].get()));
    std::vector<ServerSale> spread;
    for (std::size_t i = 0; i < count && all > 0; ++i) {
        const auto row = static_cast<int>(i * all / count);
        spread.push_back({PQgetvalue(found[0].get(), row, 0), PQgetvalue(found[0].get(), row, 1)});
    }
    return spread;
}

} // namespace veldona::bench
