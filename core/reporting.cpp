#include "core/reporting.h"

#include <algorithm>
#include <set>
#include <utility>

#include "core/session.h"
#include "core/showscreen.h"
#include "platform/controls/forms.h"
#include "platform/controls/reportview.h"
#include "platform/desktop/desktop.h"
#include "platform/report/compose.h"
#include "platform/report/delivered.h"
#include "platform/report/desk.h"
#include "platform/report/layoutreader.h"
#include "platform/report/page.h"
#include "platform/report/pagetext.h"
#include "platform/report/reporterror.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

constexpr const char* kViewer = "frmCrNesne";

std::string reportFolder(const Paths& paths) {
    return paths.toNative(paths.appPath() + "\\Rapor");
}

// The pages of the session's report, as the viewer wants them.
class ReportPages : public PageSource {
public:
    ReportPages(const report::Document& document, bool hasData) : document_(document), hasData_(hasData) {}

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
std::set<std::string> bodyQueries(const report::Layout& layout) {
    std::set<std::string> names;
    report::eachPart(
        layout.body, [&](const report::Section& band) { names.insert(band.query); },
        [&](const report::Table& table) { names.insert(table.query); });
    names.erase("");
    return names;
}

bool hasData(const report::Layout& layout, const report::Document& document) {
    const std::set<std::string> names = bodyQueries(layout);
    return names.empty() || std::ranges::any_of(document.data, [&](const report::DataSet& data) {
               return names.contains(data.name) && data.rowCount() > 0;
           });
}

// A file of it says what it is, whose, and of which day.
void completeName(report::Layout& layout, DateTime now) {
    if (layout.fileName.empty()) layout.fileName = layout.title;
    layout.fileName += " " + format(now, "yyyy-mm-dd");
}

report::Layout readTemplate(const Session& session, const std::string& templateName,
                            const TemplateSettings& settings) {
    const Paths& paths = session.desktop.paths;
    report::Layout layout = report::readLayout(paths.toNative(paths.appPath() + templateName));
    if (!settings.query.empty() && !layout.setQuery("liste", settings.query))
        throw report::ReportError(layout.file, 0, "\"liste\" adlı sorgu yok.");
    layout.fileName = settings.fileName;
    completeName(layout, session.desktop.clock.now());
    return layout;
}

// Makes a report under the eyes of the operator; nothing where he gave it up.
std::optional<report::Document>
unlessGivenUp(Session& session, const std::function<report::Document(const report::GoOn&)>& yap) {
    LongWork work(session.desktop.waitNote, "Rapor hazırlanıyor…");
    try {
        return yap([&](const std::string& howFar) { return work.goOn(howFar); });
    } catch (const RuntimeError& error) {
        if (error.number() != static_cast<std::int32_t>(ErrorNumber::UserInterrupt)) throw;
        return std::nullopt;
    }
}

// Nothing where the operator gave it up.
std::optional<report::Document> reportWithData(Session& session, std::string_view layoutName,
                                               std::vector<report::DataSet> reportData,
                                               const std::function<void(report::Layout&)>& hazirla) {
    report::Layout layout =
        report::bandedLayout(reportFolder(session.desktop.paths), std::string(layoutName));
    if (hazirla) hazirla(layout);
    const DateTime now = session.desktop.clock.now();
    completeName(layout, now);
    return unlessGivenUp(session, [&](const report::GoOn& mayGoOn) {
        return report::compose(layout, std::move(reportData), now, mayGoOn);
    });
}

// Whoever opens a report waits with the cursor of the whole screen.
void releaseCursors(Session& session) {
    for (Form* each : session.forms.loadedForms())
        each->setPointer(MousePointer::Default);
}

void bekle(EventPump& events, const ReportView& viewer) {
    while (viewer.isBusy())
        events.doEvents();
}

// The column that a text's name means behind `onek`; nothing where the rows have none such.
std::optional<std::string> namedColumn(const std::string& ad, std::string_view prefix,
                                       const adodb::Recordset& rows) {
    if (!ad.starts_with(prefix)) return std::nullopt;
    const std::string column = ad.substr(prefix.size());
    for (int i = 0; i < rows.fieldCount(); ++i) {
        const std::string& name = rows.fieldName(i);
        if (column == std::to_string(i + 1) || upperTurkish(column) == upperTurkish(name)) return name;
    }
    return std::nullopt;
}

} // namespace

void RaporAlanBagla(report::Layout& layout, const adodb::Recordset& rows) {
    using report::Piece;
    for (report::TextElement* text : layout.texts()) {
        const std::string mask = text->pieces.empty() ? std::string() : text->pieces.front().mask;
        if (const auto column = namedColumn(text->name, "vAlan", rows))
            text->pieces.assign(1, Piece{Piece::Kind::Column, {}, {"", *column}, mask});
        else if (const auto baslik = namedColumn(text->name, "sBaslik", rows))
            text->pieces.assign(1, Piece{Piece::Kind::Words, *baslik, {}, {}});
    }
}

void showBandedReport(Session& session, std::string_view layoutName, const adodb::Recordset* rows,
                      const std::function<void(report::Layout&)>& hazirla,
                      const std::function<void()>& atEnd) {
    std::vector<report::DataSet> reportData;
    if (rows) reportData.push_back(report::rowsOf(*rows));
    showReportWithData(session, layoutName, std::move(reportData), [&](report::Layout& layout) {
        if (rows) RaporAlanBagla(layout, *rows);
        if (hazirla) hazirla(layout);
    });
    if (atEnd) atEnd();
}

void showReportWithData(Session& session, std::string_view layoutName,
                        std::vector<report::DataSet> reportData,
                        const std::function<void(report::Layout&)>& hazirla) {
    const auto document = reportWithData(session, layoutName, std::move(reportData), hazirla);
    if (document && session.reportDesk) session.reportDesk->preview(*document);
}

void writeReportWithData(Session& session, std::string_view layoutName,
                         std::vector<report::DataSet> reportData, const std::string& file,
                         const std::function<void(report::Layout&)>& hazirla) {
    const auto document = reportWithData(session, layoutName, std::move(reportData), hazirla);
    if (document && session.reportDesk) session.reportDesk->writeFile(*document, file);
}

std::vector<std::string> textsWithData(Session& session, std::string_view layoutName,
                                       const std::vector<report::DataSet>& reportData, std::string_view ad) {
    const report::Layout layout =
        report::bandedLayout(reportFolder(session.desktop.paths), std::string(layoutName));
    return report::composeTexts(layout, reportData, ad, session.desktop.clock.now());
}

void showTemplateReport(Session& session, const std::string& templateName, const TemplateSettings& settings) {
    const report::Layout layout = readTemplate(session, templateName, settings);
    auto document = unlessGivenUp(session, [&](const report::GoOn& mayGoOn) {
        report::ConnectionQueries queries(*session.gBaglanti, [&] { return mayGoOn({}); });
        return report::composeTemplate(layout, queries, session.desktop.clock.now(), mayGoOn);
    });
    if (!document) return releaseCursors(session);

    const Forms::Hold hold(session.forms);
    Form& form = session.forms.load(kViewer);
    auto& viewer = dynamic_cast<ReportView&>(*form.find("CRViewer1"));
    viewer.setSource(nullptr); // before the report that it may still show goes
    session.rapor = std::make_unique<report::Document>(*std::move(document));
    if (session.reportDesk) session.reportDesk->opened(*session.rapor);
    viewer.setSource(std::make_unique<ReportPages>(*session.rapor, hasData(layout, *session.rapor)));
    viewer.viewReport();
    viewer.zoom(ReportView::kPageWidth);
    releaseCursors(session);
    EventPump& events = session.desktop.events;
    bekle(events, viewer);
    events.doEvents();
    viewer.refresh();
    events.doEvents();
    if (!form.isUnloaded()) showScreen(session, kViewer, Kip::Modal);
}

void installLayouts(const Paths& paths) {
    report::writeMissingLayouts(reportFolder(paths));
}

} // namespace veldona
