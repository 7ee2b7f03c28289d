#include "reports/receivables.h"

#include <limits>
#include <tuple>
#include <utility>

#include "core/database.h"
#include "core/formframe.h"
#include "core/money.h"
#include "core/reporting.h"
#include "core/session.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"
#include "reports/accountnames.h"

namespace veldona {

namespace {

constexpr std::int32_t kExpectedMode = 1;

std::string dayText(const DateBox& box) {
    DateTime gun = toDate(box.value());
    return replaceAll(toText(TarihDuzelt(gun)), ".", "/");
}

DateRange readRange(const ReportScreen& f) {
    DateRange range;
    range.fromChosen = !f.dtRaporTarihi.value().isNull();
    range.toChosen = !f.dtRaporTarihiSon.value().isNull();
    if (range.fromChosen) range.from = dayText(f.dtRaporTarihi);
    if (range.toChosen) range.son = dayText(f.dtRaporTarihiSon);
    if (range.toChosen && !range.fromChosen) range.from = range.son;
    return range;
}

// A run under way; the screen may unload meanwhile.
class RunGuard {
public:
    explicit RunGuard(ReportScreen& f) : hold_(f.forms()), f_(f) { f_.computing = true; }
    ~RunGuard() { f_.computing = false; }
    RunGuard(const RunGuard&) = delete;
    RunGuard& operator=(const RunGuard&) = delete;

private:
    Forms::Hold hold_;
    ReportScreen& f_;
};

// As the paper would show it: what reads 0,00 there is no claim.
bool owesStill(const Session& session, const GecikmeKaydi& record) {
    return toDouble(ParaGoster(session, record.KALAN)) > 0;
}

void setName(GecikmeKaydi& record, AccountName name) {
    record.AD = std::move(name.AD);
    record.SOYAD = std::move(name.SOYAD);
}

bool writeRow(Session& session, KayitYapisi& rec, const GecikmeKaydi& record) {
    rec.Deger[0] = record.MUSTNO;
    rec.Deger[1] = record.AD + "    " + record.SOYAD;
    rec.Deger[2] = std::to_string(record.ISLEMNO);
    rec.Deger[3] = toText(record.ODTRH);
    rec.Deger[4] = toText(record.KALAN.column());
    rec.Deger[5] = toText(record.MIN_ODTRH);
    return KayitYaz(session, rec);
}

bool writeEntries(Session& session, std::vector<GecikmeKaydi>& entries) {
    KayitYapisi rec;
    rec.Islem = KayitYapisi::Add;
    rec.Tablo = "GUNUGECENODM";
    for (const char* alan : {"MUSTNO", "AD_SOYAD", "ISLEMNO", "ODTRH", "KALAN", "MIN_ODTRH"})
        rec.add(alan, "");
    AccountNames names(session, entries.size());
    const GecikmeKaydi* previous = nullptr;
    for (GecikmeKaydi& record : entries) {
        if (!owesStill(session, record)) continue;
        if (previous && previous->MUSTNO == record.MUSTNO)
            std::tie(record.AD, record.SOYAD) = std::tie(previous->AD, previous->SOYAD);
        else
            setName(record, names.of(record.MUSTNO));
        previous = &record;
        if (!writeRow(session, rec, record)) return false;
    }
    return true;
}

// The paper has gone. Nobody sees the rows go one by one, and on a server each would be a trip.
void DataReport_Terminate(Session& session) {
    dao::Database books = session.dbEngine.openDatabase(session.gVeritabaniYolu, session.connectText());
    books.execute("DELETE FROM GUNUGECENODM");
}

void showReport(ReportScreen& f, const std::string& query) {
    RecordsetPtr rs;
    std::string hata;
    if (!KayitSetiAcKontrollu(f.session, rs, query, hata)) return;
    if (rs->eof()) f.session.desktop.dialogs.tell("Kriterlere Uygun Kayıt Bulunamadı", Icon::Information);
    const char* baslik =
        f.reportMode == kExpectedMode ? "Beklenen Tahsilatlar Raporu" : "Günü Geçen Ödemeler Raporu";
    showBandedReport(
        f.session, "gungecodmrprYTL", rs.get(),
        [&](report::Layout& layout) {
            layout.setText("Section2", "Label1", baslik);
            layout.title = baslik;
        },
        [&] { DataReport_Terminate(f.session); });
}

// True where the rows stand in the scratch table and the screen is still there to report on them: closing it
// while the windows were let in gives the run up.
bool fillTable(ReportScreen& f, const ReportRules& rules, const DateRange& range) {
    const BusyGuard busy(f);
    OverdueArray array;
    if (!rules.compute(f, range, array)) return false;
    f.session.desktop.events.doEvents();
    if (f.isUnloaded()) return false;
    if (!writeEntries(f.session, array.entries())) return false;
    f.session.desktop.events.doEvents();
    if (f.isUnloaded()) clearOverdue(f.session);
    return !f.isUnloaded();
}

void run(ReportScreen& f, const ReportRules& rules) {
    if (!clearOverdue(f.session)) return;
    const DateRange range = readRange(f);
    if (!range.fromChosen && !range.toChosen)
        return f.session.desktop.dialogs.tell(" Tarih Aralığı Seçmelisiniz ");
    if (!fillTable(f, rules, range)) return;
    if (f.cboRapor.text() != "Basit Rapor") return rules.clearDetail(f, range);
    if (f.session.gParaBirimi == 1) showReport(f, rules.reportQuery(f, range));
}

} // namespace

void OverdueArray::advance() {
    if (index_ == std::numeric_limits<std::int16_t>::max()) raise(ErrorNumber::Overflow);
    ++index_;
}

GecikmeKaydi& OverdueArray::extend() {
    entries_.resize(static_cast<std::size_t>(index_) + 1);
    return entries_.back();
}

void runReport(ReportScreen& f, const ReportRules& rules) {
    if (f.computing) return;
    const RunGuard guard(f);
    run(f, rules);
}

bool clearOverdue(Session& session) {
    return SqlCalistir(session, *session.gBaglanti, "Delete from GUNUGECENODM ");
}

std::string installmentGroups(const std::string& kosul) {
    return "SELECT  MUSTNO,ISLEMNO,SUM(ODMIKTAR) as OdenmesiGerekenPara ,MAX(ODTRH) As ODEME_TARIHI   "
           ",MIN(ODTRH) As MIN_ODEME_TARIHI FROM URUNSAT " +
           kosul + " GROUP BY MUSTNO,ISLEMNO";
}

void takeGroup(const adodb::Recordset& rs, GecikmeKaydi& record) {
    record.MUSTNO = toText(rs.value(0));
    record.ISLEMNO = toInteger(rs.value(1));
    record.ODTRH = toDate(rs.value(3));
    record.MIN_ODTRH = toDate(rs.value(4));
}

std::string reportColumns(const std::string& ara) {
    return "SELECT  MUSTKAYIT.HSTNO,  MUSTKAYIT.AD,MUSTKAYIT.SOYAD,(MUSTKAYIT.EVTEL+'" + ara +
           "'+MUSTKAYIT.GSM) AS TELEFON,GUNUGECENODM.ODTRH,  GUNUGECENODM.MUSTNO,GUNUGECENODM.ISLEMNO, "
           "GUNUGECENODM.KALAN /1000000 AS KALAN  From GUNUGECENODM, MUSTKAYIT WHERE GUNUGECENODM.MUSTNO = "
           "MUSTKAYIT.HSTNO ";
}

} // namespace veldona
