#include "core/reporting.h"

#include <algorithm>
#include <set>
#include <utility>

#include "platform/controls/reportview.h"
#include "platform/report/compose.h"
#include "platform/report/delivered.h"
#include "platform/report/desk.h"
#include "platform/report/layoutreader.h"
#include "platform/report/pagetext.h"
#include "platform/report/reporterror.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"

namespace veldona {

namespace {

constexpr const char* kGosterici = "frmCrNesne";

std::string raporKlasoru(const Paths& paths) {
    return paths.toNative(paths.appPath() + "\\Rapor");
}

// The pages of the session's report, as the viewer wants them.
class RaporSayfalari : public PageSource {
public:
    RaporSayfalari(const report::Document& document, bool hasData) : document_(document), hasData_(hasData) {}

    [[nodiscard]] int pageCount() const override { return static_cast<int>(document_.pages.size()); }
    [[nodiscard]] bool hasData() const override { return hasData_; }
    [[nodiscard]] const report::Document& document() const override { return document_; }
    [[nodiscard]] std::optional<PageHit> find(std::string_view text, int page,
                                              std::optional<PageHit> after) const override {
        const auto found = report::findText(document_, text, after ? placeOf(*after) : before(page));
        if (!found) return std::nullopt;
        return PageHit{static_cast<int>(found->page) + 1, found->item};
    }

private:
    [[nodiscard]] static report::Found placeOf(const PageHit& hit) {
        return {static_cast<std::size_t>(hit.page - 1), hit.item};
    }
    // The end of the page before; nothing before the first.
    [[nodiscard]] static std::optional<report::Found> before(int page) {
        if (page < 2) return std::nullopt;
        return report::Found{static_cast<std::size_t>(page - 2), std::string::npos};
    }

    const report::Document& document_;
    bool hasData_;
};

// The queries that the layout's body is made from; what only its head and foot read is no data of the report.
std::set<std::string> govdeSorgulari(const report::Layout& layout) {
    std::set<std::string> names;
    report::eachPart(
        layout.body, [&](const report::Section& band) { names.insert(band.query); },
        [&](const report::Table& table) { names.insert(table.query); });
    names.erase("");
    return names;
}

bool verisiVar(const report::Layout& layout, const report::Document& document) {
    const std::set<std::string> names = govdeSorgulari(layout);
    return names.empty() || std::ranges::any_of(document.data, [&](const report::DataSet& data) {
               return names.contains(data.name) && data.rowCount() > 0;
           });
}

// A file of it says what it is, whose, and of which day.
void adiTamamla(report::Layout& layout, DateTime now) {
    if (layout.fileName.empty()) layout.fileName = layout.title;
    layout.fileName += " " + format(now, "yyyy-mm-dd");
}

report::Layout sablonOku(const Session& session, const std::string& sablon, const SablonAyari& ayar) {
    const Paths& paths = session.desktop.paths;
    report::Layout layout = report::readLayout(paths.toNative(paths.appPath() + sablon));
    if (!ayar.sorgu.empty() && !layout.setQuery("liste", ayar.sorgu))
        throw report::ReportError(layout.file, 0, "\"liste\" adlı sorgu yok.");
    layout.fileName = ayar.dosyaAdi;
    adiTamamla(layout, session.desktop.clock.now());
    return layout;
}

// Makes a report under the eyes of the operator; nothing where he gave it up.
std::optional<report::Document>
vazgecilmezse(Session& session, const std::function<report::Document(const report::GoOn&)>& yap) {
    LongWork work(session.desktop.waitNote, "Rapor hazırlanıyor…");
    try {
        return yap([&](const std::string& howFar) { return work.goOn(howFar); });
    } catch (const RuntimeError& error) {
        if (error.number() != static_cast<std::int32_t>(ErrorNumber::UserInterrupt)) throw;
        return std::nullopt;
    }
}

// Nothing where the operator gave it up.
std::optional<report::Document> veriliRapor(Session& session, std::string_view duzen,
                                            std::vector<report::DataSet> veri,
                                            const std::function<void(report::Layout&)>& hazirla) {
    report::Layout layout = report::bandedLayout(raporKlasoru(session.desktop.paths), std::string(duzen));
    if (hazirla) hazirla(layout);
    const DateTime now = session.desktop.clock.now();
    adiTamamla(layout, now);
    return vazgecilmezse(session, [&](const report::GoOn& surdur) {
        return report::compose(layout, std::move(veri), now, surdur);
    });
}

// Whoever opens a report waits with the cursor of the whole screen.
void imlecleriBirak(Session& session) {
    for (Form* each : session.forms.loadedForms())
        each->setPointer(MousePointer::Default);
}

void bekle(EventPump& events, const ReportView& viewer) {
    while (viewer.isBusy())
        events.doEvents();
}

// The column that a text's name means behind `onek`; nothing where the rows have none such.
std::optional<std::string> adlandirilanSutun(const std::string& ad, std::string_view onek,
                                             const adodb::Recordset& rows) {
    if (!ad.starts_with(onek)) return std::nullopt;
    const std::string sutun = ad.substr(onek.size());
    for (int i = 0; i < rows.fieldCount(); ++i) {
        const std::string& name = rows.fieldName(i);
        if (sutun == std::to_string(i + 1) || upperTurkish(sutun) == upperTurkish(name)) return name;
    }
    return std::nullopt;
}

} // namespace

void RaporAlanBagla(report::Layout& layout, const adodb::Recordset& rows) {
    using report::Piece;
    for (report::TextElement* text : layout.texts()) {
        const std::string mask = text->pieces.empty() ? std::string() : text->pieces.front().mask;
        if (const auto sutun = adlandirilanSutun(text->name, "vAlan", rows))
            text->pieces.assign(1, Piece{Piece::Kind::Column, {}, {"", *sutun}, mask});
        else if (const auto baslik = adlandirilanSutun(text->name, "sBaslik", rows))
            text->pieces.assign(1, Piece{Piece::Kind::Words, *baslik, {}, {}});
    }
}

void BantliRaporGoster(Session& session, std::string_view duzen, const adodb::Recordset* rows,
                       const std::function<void(report::Layout&)>& hazirla,
                       const std::function<void()>& bitince) {
    std::vector<report::DataSet> veri;
    if (rows) veri.push_back(report::rowsOf(*rows));
    VeriliRaporGoster(session, duzen, std::move(veri), [&](report::Layout& layout) {
        if (rows) RaporAlanBagla(layout, *rows);
        if (hazirla) hazirla(layout);
    });
    if (bitince) bitince();
}

void VeriliRaporGoster(Session& session, std::string_view duzen, std::vector<report::DataSet> veri,
                       const std::function<void(report::Layout&)>& hazirla) {
    const auto document = veriliRapor(session, duzen, std::move(veri), hazirla);
    if (document && session.reportDesk) session.reportDesk->preview(*document);
}

void VeriliRaporYaz(Session& session, std::string_view duzen, std::vector<report::DataSet> veri,
                    const std::string& dosya, const std::function<void(report::Layout&)>& hazirla) {
    const auto document = veriliRapor(session, duzen, std::move(veri), hazirla);
    if (document && session.reportDesk) session.reportDesk->writeFile(*document, dosya);
}

std::vector<std::string> VeriliMetinler(Session& session, std::string_view duzen,
                                        const std::vector<report::DataSet>& veri, std::string_view ad) {
    const report::Layout layout =
        report::bandedLayout(raporKlasoru(session.desktop.paths), std::string(duzen));
    return report::composeTexts(layout, veri, ad, session.desktop.clock.now());
}

void SablonRaporGoster(Session& session, const std::string& sablon, const SablonAyari& ayar) {
    const report::Layout layout = sablonOku(session, sablon, ayar);
    auto document = vazgecilmezse(session, [&](const report::GoOn& surdur) {
        report::ConnectionQueries queries(*session.gBaglanti, [&] { return surdur({}); });
        return report::composeTemplate(layout, queries, session.desktop.clock.now(), surdur);
    });
    if (!document) return imlecleriBirak(session);

    const Forms::Hold hold(session.forms);
    Form& form = session.forms.load(kGosterici);
    auto& viewer = dynamic_cast<ReportView&>(*form.find("CRViewer1"));
    viewer.setSource(nullptr); // before the report that it may still show goes
    session.rapor = *std::move(document);
    if (session.reportDesk) session.reportDesk->opened(*session.rapor);
    viewer.setSource(std::make_unique<RaporSayfalari>(*session.rapor, verisiVar(layout, *session.rapor)));
    viewer.viewReport();
    viewer.zoom(ReportView::kPageWidth);
    imlecleriBirak(session);
    EventPump& events = session.desktop.events;
    bekle(events, viewer);
    events.doEvents();
    viewer.refresh();
    events.doEvents();
    if (!form.isUnloaded()) EkranGoster(session, kGosterici, Kip::Modal);
}

void sablonlariKur(const Paths& paths) {
    report::writeMissingLayouts(raporKlasoru(paths));
}

} // namespace veldona
