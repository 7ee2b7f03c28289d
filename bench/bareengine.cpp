#include "bench/bareengine.h"

#include "platform/store/dialect/literal.h"

namespace veldona::bench {

BareEngine::BareEngine(store::Engine& engine, DateTime now)
    : engine_(engine), now_(store::storedDate(now)),
      firstOfMonth_(store::storedDate(DateTime::of(now.year(), now.month(), 1).plusSeconds(1))),
      endOfToday_(store::storedDate(now.date().plusSeconds(86399))),
      customer_(engine.prepare("SELECT * FROM MUSTKAYIT WHERE HSTNO = ?1")),
      warning_(engine.prepare("SELECT ID, UYARI FROM MUSTKAYIT WHERE HSTNO = ?1")),
      customerSales_(
          engine.prepare("SELECT DISTINCT ISLEMNO FROM URUNAL WHERE MUSTNO = ?1 ORDER BY ISLEMNO DESC")),
      fallenDue_(engine.prepare("SELECT MUSTNO, ISLEMNO, sum(ODMIKTAR), max(ODTRH), min(ODTRH) FROM URUNSAT "
                                "WHERE MUSTNO = ?1 AND ODTRH >= ?2 AND ODTRH < ?3 GROUP BY ISLEMNO")),
      paid_(engine.prepare("SELECT sum(ODMIKTAR) FROM TAKSITODENEN WHERE MUSTNO = ?1 AND ISLEMNO = ?2")),
      name_(engine.prepare("SELECT AD, SOYAD FROM MUSTKAYIT WHERE HSTNO = ?1")),
      lines_(engine.prepare("SELECT URKOD, * FROM URUNAL WHERE MUSTNO = ?1 AND ISLEMNO = ?2 ORDER BY ID")),
      product_(engine.prepare("SELECT * FROM URUNTANITIM WHERE URKOD = ?1")),
      schedule_(
          engine.prepare("SELECT * FROM URUNSAT WHERE MUSTNO = ?1 AND ISLEMNO = ?2 ORDER BY ODTRH, ID")),
      received_(
          engine.prepare("SELECT * FROM TAKSITODENEN WHERE MUSTNO = ?1 AND ISLEMNO = ?2 ORDER BY ODTRH, ID")),
      header_(engine.prepare("SELECT * FROM ISLEMNOTABLO WHERE ISLEMNO = ?1")),
      downPayment_(engine.prepare("SELECT * FROM URUNSAT WHERE ISLEMNO = ?1 AND PESINAT = 1")),
      insert_(engine.prepare("INSERT INTO TAKSITODENEN (MUSTNO, ISLEMNO, ODTRH, ODMIKTAR, KONTROL_KIM, "
                             "KONTROL_NE_ZAMAN) VALUES (?1, ?2, ?3, 1000000, '', ?3)")),
      update_(engine.prepare("UPDATE URUNSAT SET ODTRH = ODTRH, ODMIKTAR = ODMIKTAR, KONTROL_KIM = '', "
                             "KONTROL_NE_ZAMAN = ?2 WHERE ID = ?1")),
      updatePayment_(
          // On its day, at this hour, as the rule says: the row moves in its indexes.
          engine.prepare("UPDATE TAKSITODENEN SET ODTRH = substr(ODTRH, 1, 11) || substr(?2, 12), ODMIKTAR = "
                         "ODMIKTAR, KONTROL_KIM = '', KONTROL_NE_ZAMAN = ?2 WHERE ID = ?1")),
      insertHeader_(engine.prepare("INSERT INTO ISLEMNOTABLO (MUSTNO, ISLEMNO, TOPBORC, TRH, KONTROL_KIM, "
                                   "KONTROL_NE_ZAMAN) VALUES (?1, ?2, 1200000000, ?3, '', ?3)")),
      insertLine_(engine.prepare("INSERT INTO URUNAL (MUSTNO, ISLEMNO, URKOD, ADET, FIYAT, TRH) VALUES "
                                 "(?1, ?2, '1', 1, 1200000000, ?3)")),
      insertInstallment_(
          engine.prepare("INSERT INTO URUNSAT (MUSTNO, ISLEMNO, ODTRH, ODMIKTAR, PESINAT) VALUES "
                         "(?1, ?2, ?3, 100000000, 0)")),
      updateStock_(engine.prepare("UPDATE URUNTANITIM SET TOPLAM_SATILAN = TOPLAM_SATILAN + 1, "
                                  "KALAN = KALAN - 1 WHERE URKOD = '1'")) {
    for (int month = 0; month < 12; ++month)
        dueDays_.push_back(store::storedDate(addMonths(now, month)));
}

// Every cell is taken out as text: a screen shows nothing else.
void BareEngine::fetch(const Statement& statement, const std::vector<Value>& values) {
    int index = 0;
    for (const Value& value : values)
        statement->bind(++index, value);
    firstCells_.clear();
    secondCells_.clear();
    while (statement->step()) {
        row_.clear();
        for (int column = 0; column < statement->columnCount(); ++column)
            row_.emplace_back(statement->text(column));
        firstCells_.push_back(row_[0]);
        if (row_.size() > 1) secondCells_.push_back(row_[1]);
        ++rowsRead_;
    }
    statement->reset();
}

void BareEngine::fetchOverdue(const std::string& account) {
    fetch(fallenDue_, {account, firstOfMonth_, endOfToday_});
    const std::vector<std::string> sales = secondCells_;
    if (!sales.empty()) fetch(name_, {account});
    for (const std::string& sale : sales)
        fetch(paid_, {account, static_cast<std::int64_t>(std::stoll(sale))});
}

void BareEngine::load(const std::string& account) {
    fetch(customer_, {account});
    fetch(customerSales_, {account});
    fetch(warning_, {account});
    fetchOverdue(account);
}

void BareEngine::open(const SaleKey& key) {
    fetch(lines_, {key.account, key.sale});
    const std::vector<std::string> codes = firstCells_;
    for (const std::string& code : codes)
        fetch(product_, {code});
    fetch(schedule_, {key.account, key.sale});
    fetch(received_, {key.account, key.sale});
    fetch(header_, {key.sale});
    fetch(downPayment_, {key.sale});
    fetchOverdue(key.account);
}

void BareEngine::pay(const SaleKey& key) {
    fetch(insert_, {key.account, key.sale, now_});
}

void BareEngine::correct(const SaleKey& key) {
    fetch(schedule_, {key.account, key.sale});
    const std::string last = firstCells_.at(firstCells_.size() - 1);
    fetch(update_, {static_cast<std::int64_t>(std::stoll(last)), now_});
}

void BareEngine::correctPayment(const SaleKey& key) {
    fetch(received_, {key.account, key.sale});
    fetch(updatePayment_, {static_cast<std::int64_t>(std::stoll(firstCells_.at(0))), now_});
    fetch(customerSales_, {key.account});
    fetchOverdue(key.account);
}

void BareEngine::save(const std::string& account) {
    --lastSale_;
    engine_.begin();
    for (const auto* statement : {&insertHeader_, &insertLine_})
        fetch(*statement, {account, lastSale_, now_});
    fetch(updateStock_, {});
    for (const std::string& day : dueDays_)
        fetch(insertInstallment_, {account, lastSale_, day});
    engine_.commit();
}

std::vector<SaleKey> BareEngine::sales(std::size_t count, bool owing) {
    const auto all = engine_.prepare(std::string("SELECT MUSTNO, ISLEMNO FROM ISLEMNOTABLO i ") +
                                     (owing ? "WHERE TOPBORC > 100000000 + (SELECT total(ODMIKTAR) FROM "
                                              "TAKSITODENEN t WHERE t.MUSTNO = i.MUSTNO "
                                              "AND t.ISLEMNO = i.ISLEMNO) "
                                            : "") +
                                     "ORDER BY ISLEMNO");
    std::vector<SaleKey> found;
    while (all->step())
        found.push_back({std::string(all->text(0)), all->whole(1)});
    std::vector<SaleKey> spread;
    for (std::size_t i = 0; i < count && !found.empty(); ++i)
        spread.push_back(found[i * found.size() / count]);
    return spread;
}

std::int64_t BareEngine::payments() {
    const auto counted = engine_.prepare("SELECT count(*) FROM TAKSITODENEN");
    counted->step();
    return counted->whole(0);
}

} // namespace veldona::bench
