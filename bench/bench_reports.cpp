// What the three reports cost beside the bare engine reading the rows that they are made from.
//
// The program computes, writes its scratch table, lays the pages out and empties the table again; the engine
// scans the same tables and joins them in memory, and writes, reads and empties the same rows of the scratch
// table. Laying out has no counterpart there: its time is shown by itself, and left out of the ratio. Sale
// numbers are counted in 16 bits by two of the reports, so the shop must have fewer than 32,768 sales.
#include <chrono>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <utility>
#include <vector>

#include "bench/headless.h"
#include "bench/overshops.h"
#include "bench/shopcopy.h"
#include "core/session.h"
#include "core/showscreen.h"
#include "platform/controls/forms.h"
#include "platform/controls/userinput.h"
#include "platform/report/compose.h"
#include "platform/report/delivered.h"
#include "platform/report/desk.h"
#include "platform/store/faces/database.h"

namespace veldona::bench {
namespace {

constexpr int kRuns = 5;

using Sums = std::unordered_map<std::string, double>;

// The shortest of some runs: everything else that the machine does only adds.
double secondsOf(const std::function<void()>& work) {
    double best = 0;
    for (int run = 0; run < kRuns; ++run) {
        const auto begun = std::chrono::steady_clock::now();
        work();
        const double taken = std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count();
        if (run == 0 || taken < best) best = taken;
    }
    return best;
}

class Engine {
public:
    explicit Engine(store::Engine& engine) : engine_(engine) {}

    Sums sums(const std::string& table, const std::string& condition) {
        const auto rows =
            engine_.prepare("SELECT MUSTNO, ISLEMNO, sum(ODMIKTAR), max(ODTRH), min(ODTRH) FROM " + table +
                            " WHERE " + condition + " GROUP BY MUSTNO, ISLEMNO");
        Sums sums;
        while (rows->step())
            sums.emplace(std::string(rows->text(0)) + "/" + std::string(rows->text(1)), rows->number(2));
        return sums;
    }
    // Sales on which more is planned than paid.
    int behind(const Sums& planned, const Sums& paid) {
        int count = 0;
        for (const auto& [sale, amount] : planned) {
            const auto found = paid.find(sale);
            if (amount > (found == paid.end() ? 0 : found->second)) ++count;
        }
        return count;
    }
    // So many rows go through the scratch table: written, read with their customers, gone again.
    void scratch(int rows) {
        const auto insert = engine_.prepare(
            "INSERT INTO GUNUGECENODM (MUSTNO, AD_SOYAD, ISLEMNO, ODTRH, KALAN, MIN_ODTRH) VALUES "
            "((SELECT HSTNO FROM MUSTKAYIT WHERE ID = ?1 % 1000 + 1), 'Ad    Soyad', ?1, "
            "'2026-11-22 00:00:00', 1000000, '2026-11-22 00:00:00')");
        for (int row = 0; row < rows; ++row) {
            insert->bind(1, row);
            insert->step();
            insert->reset();
        }
        static_cast<void>(
            count("SELECT c.HSTNO, c.AD, c.SOYAD, c.EVTEL, r.ODTRH, r.MUSTNO, r.ISLEMNO, r.KALAN FROM "
                  "GUNUGECENODM r, MUSTKAYIT c WHERE r.MUSTNO = c.HSTNO ORDER BY r.ODTRH, c.AD"));
        engine_.execute("DELETE FROM GUNUGECENODM");
    }
    int count(const std::string& sql) {
        const auto rows = engine_.prepare(sql);
        int count = 0;
        for (; rows->step(); ++count)
            for (int column = 0; column < rows->columnCount(); ++column)
                bytes_ += rows->text(column).size();
        return count;
    }

private:
    store::Engine& engine_;
    std::size_t bytes_ = 0; // of all cells that were taken out
};

// Lays each report that it gets out once more, by the same layout and from the same rows.
class LayoutClock : public report::ReportDesk {
public:
    explicit LayoutClock(Session& session) : session_(session) {}
    void time(const char* layout) {
        const Paths& paths = session_.desktop.paths;
        layout_ = report::bandedLayout(paths.toNative(paths.appPath() + "\\Rapor"), layout);
        seconds_ = 0;
    }
    // The shortest laying out since time() was called.
    [[nodiscard]] double seconds() const { return seconds_; }
    [[nodiscard]] int rows() const { return rows_; }

    void preview(const report::Document& document) override {
        std::vector<report::DataSet> rows = document.data;
        rows_ = rows.empty() ? 0 : static_cast<int>(rows.front().rowCount());
        const auto begun = std::chrono::steady_clock::now();
        const report::Document again =
            report::compose(layout_, std::move(rows), session_.desktop.clock.now());
        const double taken = std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count();
        if (again.pages.size() != document.pages.size()) throw std::runtime_error("another number of pages");
        if (seconds_ == 0 || taken < seconds_) seconds_ = taken;
    }
    void opened(const report::Document&) override {}
    bool print(const report::Document&) override { return false; }
    void writeFile(const report::Document&, const std::string&) override {}

private:
    Session& session_;
    report::Layout layout_;
    double seconds_ = 0;
    int rows_ = 0;
};

class Screens {
public:
    explicit Screens(Headless& program) : program_(program) {}
    // Opens the screen, puts the two days, presses the button until the time is known, closes it.
    double time(const char* screen, const char* first, const char* last, const char* button,
                const Value& from, const Value& to) {
        Session& session = program_.session();
        showScreen(session, screen, Kip::Modeless);
        Form& form = *session.forms.loaded(screen);
        mustTake(user::pickDate(dynamic_cast<DateBox&>(*form.find(first)), from));
        mustTake(user::pickDate(dynamic_cast<DateBox&>(*form.find(last)), to));
        const double taken = secondsOf([&] { mustTake(user::click(*form.find(button))); });
        session.forms.unload(form);
        program_.expectSaid("");
        return taken;
    }

    // The list of what is unpaid of every sale, as a spreadsheet; once, for it takes seconds.
    double timeSpreadsheet(DateTime from, DateTime to) {
        Session& session = program_.session();
        showScreen(session, "rprodemesigecen", Kip::Modeless);
        Form& form = *session.forms.loaded("rprodemesigecen");
        mustTake(user::pickDate(dynamic_cast<DateBox&>(*form.find("DTPicker1")), from));
        mustTake(user::pickDate(dynamic_cast<DateBox&>(*form.find("DTPicker2")), to));
        for (const char* filter : {"Text1", "Text2"})
            mustTake(user::put(*form.find(filter), ""));
        const auto begun = std::chrono::steady_clock::now();
        mustTake(user::click(*form.find("cmdExcel")));
        const double taken = std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count();
        session.forms.unload(form);
        program_.expectBlankBoxes(); // one sale's number has such a box of its own
        return taken;
    }

private:
    static void mustTake(bool taken) {
        if (!taken) throw std::runtime_error("the report screen did not take the operator's act");
    }
    Headless& program_;
};

// `twice`: the program's time with its report laid out twice.
void print(const char* report, double twice, const LayoutClock& layout, double engine) {
    const double program = twice - layout.seconds();
    std::printf("  %-22s %8.3f s %8.3f s %8.3f s %8.2f %8d\n", report, program, layout.seconds(), engine,
                (program - layout.seconds()) / engine, layout.rows());
}

void benchShop(const std::string& root, DateTime now) {
    const Copy copy(root);
    Headless program(copy.root(), now);
    LayoutClock layout(program.session());
    program.session().reportDesk = &layout;
    Screens screens(program);
    Engine engine(program.database().engine());
    const Value today = now.date();
    const Value monthEnd = now.date().plusDays(30);
    std::printf("%s\n  %-22s %10s %10s %10s %8s %8s\n", root.c_str(), "", "program", "of it laid", "engine",
                "ratio", "rows");

    layout.time("gungecodmrprYTL");
    double twice =
        screens.time("rprodemesigecen", "dtRaporTarihi", "dtRaporTarihiSon", "cmdRapor", Value(), today);
    print("overdue, all years", twice, layout, secondsOf([&] {
              static_cast<void>(engine.behind(engine.sums("URUNSAT", "ODTRH <= '2026-11-22 00:00:00'"),
                                              engine.sums("TAKSITODENEN", "ODTRH <= '2026-11-22 00:00:00'")));
              engine.scratch(layout.rows());
          }));

    layout.time("gungecodmrprYTL");
    twice =
        screens.time("rprbeklenentahsilat", "dtRaporTarihi", "dtRaporTarihiSon", "cmdRapor", today, monthEnd);
    print("expected, 30 days", twice, layout, secondsOf([&] {
              const Sums planned = engine.sums("URUNSAT", "ODTRH <= '2026-12-22 00:00:00'");
              const Sums paid = engine.sums("TAKSITODENEN", "ODTRH <= '2026-12-22 00:00:00'");
              static_cast<void>(engine.sums(
                  "URUNSAT", "ODTRH >= '2026-11-22 00:00:00' AND ODTRH <= '2026-12-22 00:00:00'"));
              static_cast<void>(engine.behind(planned, paid));
              engine.scratch(layout.rows());
          }));

    layout.time("rprGelirDetay");
    twice = screens.time("rptGelirGider", "dtTarih", "dtSonTarih", "cmdTamam", DateTime::of(now.year(), 1, 1),
                         today);
    print("income, this year", twice, layout, secondsOf([&] {
              static_cast<void>(engine.count(
                  "SELECT DISTINCT substr(p.ODTRH, 6, 2), c.AD || ' ' || c.SOYAD, p.ODTRH, p.ODMIKTAR / "
                  "1000000, "
                  "p.KONTROL_KIM FROM TAKSITODENEN p LEFT JOIN MUSTKAYIT c ON c.HSTNO = p.MUSTNO WHERE "
                  "p.ODTRH >= "
                  "'2026-01-01 00:00:01' AND p.ODTRH <= '2026-11-22 23:59:59' ORDER BY p.ODTRH"));
          }));

    const int sales = engine.count("SELECT ISLEMNO FROM ISLEMNOTABLO");
    const double sheet = screens.timeSpreadsheet(DateTime::of(now.year(), 10, 1), now.date());
    std::printf("  %-22s %8.3f s  (%d sales, %.1f ms a thousand)\n", "spreadsheet", sheet, sales,
                sheet * 1e6 / sales);
}

} // namespace
} // namespace veldona::bench

int main(int count, char** arguments) {
    return veldona::bench::overShops("bench_reports", count, arguments, veldona::bench::benchShop);
}
