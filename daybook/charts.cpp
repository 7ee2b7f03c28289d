#include "daybook/charts.h"

#include <algorithm>
#include <array>
#include <utility>

#include "core/exportfolders.h"
#include "core/formframe.h"
#include "core/money.h"
#include "core/reporting.h"
#include "core/session.h"
#include "daybook/paperrows.h"
#include "platform/desktop/desktop.h"
#include "platform/report/chart.h"
#include "platform/runtime/format.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

using report::Chart;
using report::DataSet;
using report::Filling;
using namespace columntype;

struct Span {
    const char* name;
    int months;
};
constexpr std::array<Span, 3> kSpans = {{{"Son 12 ay", 12}, {"Son 24 ay", 24}, {"Son 36 ay", 36}}};

constexpr std::array<const char*, 12> kMonthNames = {"Oca", "Şub", "Mar", "Nis", "May", "Haz",
                                                     "Tem", "Ağu", "Eyl", "Eki", "Kas", "Ara"};

std::string monthName(DateTime day) {
    return std::string(kMonthNames[static_cast<std::size_t>(day.month() - 1)]) + " " +
           format(day, "yyyy").substr(2);
}

std::string shown(StoredAmount amount) {
    return format(amount.lira(), kMoneyMask);
}

const Span& chosenSpan(const FrmGrafik& f) {
    return kSpans[static_cast<std::size_t>(std::max(f.cboDonem.listIndex(), 0))];
}

struct Pictures {
    Chart payments, ages, sales;
};

Pictures picturesOf(const FrmGrafik& f) {
    Pictures made;
    made.payments = {"Vadesi gelen ve tahsil edilen (YTL)",
                     {},
                     {{"Vadesi gelen", Filling::Hatched, {}}, {"Tahsil edilen", Filling::Solid, {}}}};
    made.sales = {"Satışlar (YTL)", {}, {{"Satış", Filling::Hatched, {}}}};
    made.ages = {"Günü geçen alacak (YTL)", {}, {{"Günü geçen", Filling::Solid, {}}}};
    for (const MonthFigures& month : f.months) {
        made.payments.categories.push_back(monthName(month.first));
        made.payments.series[0].values.push_back(month.due.lira());
        made.payments.series[1].values.push_back(month.received.lira());
        made.sales.series[0].values.push_back(month.sold.lira());
    }
    made.sales.categories = made.payments.categories;
    for (std::size_t i = 0; i < AgeGroups::kAll.size(); ++i) {
        made.ages.categories.emplace_back(AgeGroups::kAll[i].name);
        made.ages.series[0].values.push_back(f.ages.sums[i].lira());
    }
    return made;
}

// "Vadesi gelen: Eki 26 1.200,00, Kas 26 900,00. Tahsil edilen: …"
std::string wordsOf(const Chart& chart) {
    std::string words;
    for (const report::ChartSeries& series : chart.series) {
        words += (words.empty() ? "" : " ") + series.name + ":";
        for (std::size_t i = 0; i < series.values.size(); ++i)
            words += (i ? ", " : " ") + chart.categories[i] + " " + format(series.values[i], kMoneyMask);
        words += ".";
    }
    return words;
}

void showPictures(FrmGrafik& f, Pictures pictures) {
    const auto show = [](ChartPane& pane, Chart& chart) {
        std::string words = wordsOf(chart);
        pane.show(std::make_shared<const Chart>(std::move(chart)), std::move(words));
    };
    show(f.grfOdeme, pictures.payments);
    show(f.grfGecikme, pictures.ages);
    show(f.grfSatis, pictures.sales);
}

void showTables(FrmGrafik& f) {
    std::vector<std::vector<std::string>> months, ages;
    for (auto month = f.months.rbegin(); month != f.months.rend(); ++month) // the newest is looked at first
        months.push_back({monthName(month->first), shown(month->due), shown(month->received),
                          shown(month->received - month->due), std::to_string(month->sales),
                          shown(month->sold)});
    for (std::size_t i = 0; i < AgeGroups::kAll.size(); ++i)
        ages.push_back({AgeGroups::kAll[i].name, std::to_string(f.ages.counts[i]), shown(f.ages.sums[i])});
    f.monthRows.show({"AY", "VADE", "TAHSILAT", "FARK", "ADET", "SATIS"}, std::move(months));
    f.ageRows.show({"YAS", "TAKSIT", "TUTAR"}, std::move(ages));
    f.grdAylar.refresh();
    f.grdGecikme.refresh();
}

std::string summaryOf(const FrmGrafik& f) {
    StoredAmount due, received;
    for (const MonthFigures& month : f.months) {
        due += month.due;
        received += month.received;
    }
    std::string words = std::string(chosenSpan(f).name) + ": vadesi gelen " + shown(due) +
                        ", tahsil edilen " + shown(received);
    if (due > StoredAmount{}) words += " (% " + format(100 * received.lira() / due.lira(), "0") + ")";
    return words + ". Günü geçen alacak " + shown(f.ages.total()) + ".";
}

void showSpan(FrmGrafik& f) {
    f.months = f.shop->months(f.session.desktop.clock.today(), chosenSpan(f).months);
    showPictures(f, picturesOf(f));
    showTables(f);
    f.lblOzet.setCaption(summaryOf(f));
}

void Form_Load(FrmGrafik& f) {
    const BusyGuard busy(f);
    f.shop->bringUpToDate(*f.session.gBaglanti);
    f.ages = f.shop->ages(f.session.desktop.clock.today());
    showSpan(f);
}

std::vector<DataSet> paperRows(FrmGrafik& f) {
    DataSet months{"aylar",
                   {{"AY"},
                    {"VADE", kMoney},
                    {"TAHSILAT", kMoney},
                    {"FARK", kMoney},
                    {"SATIS_SAYISI", kWhole},
                    {"SATIS", kMoney}}};
    for (const MonthFigures& month : f.months)
        months.addRow({monthName(month.first), month.due.working(), month.received.working(),
                       (month.received - month.due).working(), month.sales, month.sold.working()});
    DataSet ages{"gecikme", {{"YAS"}, {"TAKSIT", kWhole}, {"TUTAR", kMoney}}};
    for (std::size_t i = 0; i < AgeGroups::kAll.size(); ++i)
        ages.addRow({AgeGroups::kAll[i].name, f.ages.counts[i], f.ages.sums[i].working()});
    DataSet summary{"ozet", {{"OZET"}}};
    summary.addRow({f.lblOzet.caption()});
    return {letterhead(f.session), std::move(summary), std::move(months), std::move(ages)};
}

void setCharts(const FrmGrafik& f, report::Layout& layout) {
    Pictures pictures = picturesOf(f);
    layout.setChart("odeme", pictures.payments);
    layout.setChart("gecikme", pictures.ages);
    layout.setChart("satis", pictures.sales);
}

void cmdYazdir_Click(FrmGrafik& f) {
    showReportWithData(f.session, "Grafik", paperRows(f),
                       [&f](report::Layout& layout) { setCharts(f, layout); });
}

void cmdResim_Click(FrmGrafik& f) {
    const std::string name = "Grafik " + format(f.session.desktop.clock.now(), "yyyy-mm-dd hh.mm.ss");
    const std::string file = exportFile(f.session, "Resim", name, ".png");
    writeReportWithData(f.session, "Grafik", paperRows(f), file,
                        [&f](report::Layout& layout) { setCharts(f, layout); });
    if (!f.session.desktop.opener.open(file))
        f.session.desktop.dialogs.tell("Resim kaydedildi: " + file, Icon::Information);
}

void Form_KeyDown(FrmGrafik& f, KeyEvent& event) {
    if (event.key != Key::F9 && event.key != Key::Escape) return;
    event.swallowed = true;
    if (event.key == Key::F9) return cmdYazdir_Click(f);
    f.forms().unload(f);
}

void bindGrids(FrmGrafik& f) {
    f.grdAylar.setColumns({{"Ay", "AY", 60},
                           {"Vadesi Gelen", "VADE", 84, true},
                           {"Tahsilat", "TAHSILAT", 84, true},
                           {"Fark", "FARK", 84, true},
                           {"Satış", "ADET", 44, true},
                           {"Satış Tutarı", "SATIS", 84, true}});
    f.grdGecikme.setColumns(
        {{"Gecikme", "YAS", 120}, {"Taksit", "TAKSIT", 60, true}, {"Tutar", "TUTAR", 110, true}});
    f.grdAylar.bind(&f.monthRows);
    f.grdGecikme.bind(&f.ageRows);
}

} // namespace

void FigureRows::show(std::vector<std::string> fields, std::vector<std::vector<std::string>> rows) {
    fields_ = std::move(fields);
    rows_ = std::move(rows);
    row_ = -1;
}

std::string FigureRows::cell(int row, std::string_view field) const {
    const auto column = std::ranges::find(fields_, field) - fields_.begin();
    return rows_.at(static_cast<std::size_t>(row)).at(static_cast<std::size_t>(column));
}

FrmGrafik::FrmGrafik(Forms& forms, Session& itsSession, std::shared_ptr<ShopReckoning> itsShop)
    : Form(forms, "frmGrafik", "Grafikler"), session(itsSession), shop(std::move(itsShop)) {
    for (const Span& span : kSpans)
        cboDonem.add(span.name);
    cboDonem.setListIndex(0);
    bindGrids(*this);
    cboDonem.onClick = [this] { showSpan(*this); };
    cmdYazdir.onClick = [this] { cmdYazdir_Click(*this); };
    cmdResim.onClick = [this] { cmdResim_Click(*this); };
    cmdKapat.onClick = [this] { this->forms().unload(*this); };
    onKeyDown = [this](KeyEvent& event) { Form_KeyDown(*this, event); };
    onLoad = [this] { Form_Load(*this); };
}

std::unique_ptr<Form> makeFrmGrafik(Forms& forms, Session& session, std::shared_ptr<ShopReckoning> shop) {
    return std::make_unique<FrmGrafik>(forms, session, std::move(shop));
}

} // namespace veldona
