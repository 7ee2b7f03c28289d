// What the three reports cost beside the bare engine reading the rows that they are made from.
//
// The program computes, writes its scratch table, lays the pages out and empties the table again; the engine
// scans the same tables and joins them in memory. Sale numbers are counted in 16 bits by two of the reports,
// so the shop must have fewer than 32,768 sales.
#include <chrono>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <string>
#include <unordered_map>

#include "bench/headless.h"
#include "bench/overshops.h"
#include "bench/shopcopy.h"
#include "platform/controls/userinput.h"
#include "platform/store/database.h"
#include "reports/income.h"
#include "reports/receivablesscreen.h"

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
    int count(const std::string& sql) {
        const auto rows = engine_.prepare(sql);
        int count = 0;
        while (rows->step())
            ++count;
        return count;
    }

private:
    store::Engine& engine_;
};

class Screens {
public:
    explicit Screens(Headless& program) : program_(program) {
        Session& session = program_.session();
        session.forms.add("rprodemesigecen",
                          [&session](Forms& f) { return makeRprOdemesiGecen(f, session); });
        session.forms.add("rprbeklenentahsilat",
                          [&session](Forms& f) { return makeRprBeklenenTahsilat(f, session); });
        session.forms.add("rptGelirGider", [&session](Forms& f) { return makeRptGelirGider(f, session); });
    }
    // Opens the screen, puts the two days, presses the button until the time is known, closes it.
    double time(const char* screen, const char* first, const char* last, const char* button,
                const Value& from, const Value& to) {
        Session& session = program_.session();
        EkranGoster(session, screen, Kip::Modeless);
        Form& form = *session.forms.loaded(screen);
        mustTake(user::pickDate(dynamic_cast<DateBox&>(*form.find(first)), from));
        mustTake(user::pickDate(dynamic_cast<DateBox&>(*form.find(last)), to));
        const double taken = secondsOf([&] { mustTake(user::click(*form.find(button))); });
        session.forms.unload(form);
        program_.expectSaid("");
        return taken;
    }

private:
    static void mustTake(bool taken) {
        if (!taken) throw std::runtime_error("the report screen did not take the operator's act");
    }
    Headless& program_;
};

void print(const char* report, double program, double engine, int rows) {
    std::printf("  %-34s %8.3f s %8.3f s %8.2f %8d\n", report, program, engine, program / engine, rows);
}

void benchShop(const std::string& root, DateTime now) {
    const Copy copy(root);
    Headless program(copy.root(), now);
    Screens screens(program);
    Engine engine(program.database().engine());
    const Value today = now.date();
    const Value monthEnd = now.date().plusDays(30);
    std::printf("%s\n  %-34s %10s %10s %8s %8s\n", root.c_str(), "", "program", "engine", "ratio", "rows");

    int rows = 0;
    double bare = secondsOf([&] {
        rows = engine.behind(engine.sums("URUNSAT", "ODTRH <= '2026-11-22 00:00:00'"),
                             engine.sums("TAKSITODENEN", "ODTRH <= '2026-11-22 00:00:00'"));
    });
    print("overdue, all years",
          screens.time("rprodemesigecen", "dtRaporTarihi", "dtRaporTarihiSon", "cmdRapor", Value(), today),
          bare, rows);

    bare = secondsOf([&] {
        const Sums planned = engine.sums("URUNSAT", "ODTRH <= '2026-12-22 00:00:00'");
        const Sums paid = engine.sums("TAKSITODENEN", "ODTRH <= '2026-12-22 00:00:00'");
        rows = static_cast<int>(
            engine.sums("URUNSAT", "ODTRH >= '2026-11-22 00:00:00' AND ODTRH <= '2026-12-22 00:00:00'")
                .size());
        static_cast<void>(engine.behind(planned, paid));
    });
    print(
        "expected, 30 days",
        screens.time("rprbeklenentahsilat", "dtRaporTarihi", "dtRaporTarihiSon", "cmdRapor", today, monthEnd),
        bare, rows);

    bare = secondsOf([&] {
        rows = engine.count(
            "SELECT p.ODTRH, c.AD, c.SOYAD, p.ODMIKTAR FROM TAKSITODENEN p LEFT JOIN MUSTKAYIT c "
            "ON c.HSTNO = p.MUSTNO WHERE p.ODTRH >= '2026-01-01 00:00:01' AND p.ODTRH <= "
            "'2026-11-22 23:59:59' ORDER BY p.ODTRH");
    });
    print("income, this year",
          screens.time("rptGelirGider", "dtTarih", "dtSonTarih", "cmdTamam", DateTime::of(now.year(), 1, 1),
                       today),
          bare, rows);
}

} // namespace
} // namespace veldona::bench

int main(int count, char** arguments) {
    return veldona::bench::overShops("bench_reports", count, arguments, veldona::bench::benchShop);
}
