// What the call list, the charts and the search cost, on every sale of the shop, beside the bare engine
// scanning plan and payments once each and joining them in memory.
#include <malloc.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <string>
#include <unordered_map>

#include "bench/headless.h"
#include "bench/overshops.h"
#include "bench/shopcopy.h"
#include "core/session.h"
#include "core/showscreen.h"
#include "daybook/bugun.h"
#include "daybook/charts.h"
#include "daybook/search.h"
#include "platform/controls/forms.h"
#include "platform/controls/userinput.h"
#include "platform/store/faces/database.h"

namespace veldona::bench {
namespace {

constexpr int kRuns = 5;

double secondsOf(const std::function<void()>& work) {
    const auto begun = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count();
}

// Everything else that the machine does only adds.
double shortestOf(const std::function<void()>& work) {
    double best = secondsOf(work);
    for (int run = 1; run < kRuns; ++run)
        best = std::min(best, secondsOf(work));
    return best;
}

using Sums = std::unordered_map<std::string, double>;

Sums sums(store::Engine& engine, const std::string& table) {
    const auto rows = engine.prepare("SELECT MUSTNO, ISLEMNO, sum(ODMIKTAR), max(ODTRH), min(ODTRH) FROM " +
                                     table + " GROUP BY MUSTNO, ISLEMNO");
    Sums all;
    while (rows->step())
        all.emplace(std::string(rows->text(0)) + "/" + std::string(rows->text(1)), rows->number(2));
    return all;
}

int behind(store::Engine& engine) {
    const Sums planned = sums(engine, "URUNSAT"), paid = sums(engine, "TAKSITODENEN");
    int count = 0;
    for (const auto& [sale, amount] : planned) {
        const auto found = paid.find(sale);
        if (amount > (found == paid.end() ? 0 : found->second)) ++count;
    }
    return count;
}

template <class Screen> Screen& open(Headless& program, const char* name) {
    showScreen(program.session(), name, Kip::Modeless);
    return dynamic_cast<Screen&>(*program.session().forms.loaded(name));
}

template <class Screen> double secondsToOpen(Headless& program, const char* name) {
    return secondsOf([&] { program.session().forms.unload(open<Screen>(program, name)); });
}

void mustTake(bool taken) {
    if (!taken) throw std::runtime_error("a screen did not take the operator's act");
}

double megabytesInUse() {
    return static_cast<double>(mallinfo2().uordblks) / (1024 * 1024);
}

// Each time behind `write`, so that something known before no longer holds.
template <class Screen>
double shortestBehind(Headless& program, const char* name, const std::function<void()>& write) {
    double best = 0;
    for (int run = 0; run < kRuns; ++run) {
        write();
        const double taken = secondsToOpen<Screen>(program, name);
        if (run == 0 || taken < best) best = taken;
    }
    return best;
}

// Nobody has looked yet: the program reads ahead while it rests, slice by slice, and then the list is opened.
void benchReadAhead(const std::string& root, DateTime now) {
    Headless program(root, now);
    static_cast<void>(behind(program.database().engine())); // the engine has all the pages that it keeps
    const double before = megabytesInUse();
    double all = 0, longest = 0;
    int slices = 0;
    for (bool isMore = true; isMore; ++slices) {
        const double taken = secondsOf(
            [&] { isMore = program.shop().readAhead(*program.session().gBaglanti, [] { return false; }); });
        all += taken;
        longest = std::max(longest, taken);
    }
    const double kept = megabytesInUse() - before;
    const double list = secondsToOpen<FrmBugun>(program, "frmBugun");
    const double charts = secondsToOpen<FrmGrafik>(program, "frmGrafik");
    std::printf("  read ahead %.3f s in %d slices, the longest %.1f ms; %.1f MB in memory\n"
                "  then for the first time: call list %.3f s, charts %.3f s\n",
                all, slices, longest * 1e3, kept, list, charts);
}

void benchSearch(Headless& program, const std::function<void()>& writeLine) {
    const double first = secondsToOpen<FrmArama>(program, "frmArama");
    const double again = secondsToOpen<FrmArama>(program, "frmArama");
    const double behind = shortestBehind<FrmArama>(program, "frmArama", writeLine);
    auto& search = open<FrmArama>(program, "frmArama");
    double longest = 0;
    for (const char* typed : {"a", "ay", "ayşe", "ayşe yılmaz", "5", "53", "532", "buz", "buzdolabı 2", "x"})
        longest = std::max(longest, shortestOf([&] {
                               mustTake(user::put(search.txtAra, typed));
                               mustTake(user::put(search.txtAra, ""));
                           }));
    program.session().forms.unload(search);
    std::printf(
        "  search: opened the first time %.3f s, again %.3f s, behind a sale line %.3f s; the slowest key "
        "%.1f ms\n",
        first, again, behind, longest * 1e3);
}

void benchShop(const std::string& root, DateTime now) {
    const Copy copy(root);
    std::printf("%s\n", root.c_str());
    benchReadAhead(copy.root(), now);
    Headless program(copy.root(), now);
    // As at the start.
    const double first = shortestBehind<FrmBugun>(program, "frmBugun", [&] { program.shop().forget(); });
    const auto pay = [&] {
        program.database().execute("INSERT INTO TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES "
                                   "('1',1,'22/11/2026 10:00:00',0)");
    };
    const auto sell = [&] {
        program.database().execute(
            "INSERT INTO URUNAL (MUSTNO,ISLEMNO,TRH,ADET,FIYAT) VALUES ('1',1,'22/11/2026',1,0)");
    };
    const double behindAPayment = shortestBehind<FrmBugun>(program, "frmBugun", pay);
    const double again = shortestOf([&] { secondsToOpen<FrmBugun>(program, "frmBugun"); });
    const double charts = shortestBehind<FrmGrafik>(program, "frmGrafik", pay);
    const double engine = shortestOf([&] { static_cast<void>(behind(program.database().engine())); });
    auto& list = open<FrmBugun>(program, "frmBugun");
    const int customers = list.rows.rowCount();
    const double key = shortestOf([&] {
        mustTake(user::put(list.txtAra, "a"));
        mustTake(user::put(list.txtAra, ""));
    });
    program.session().forms.unload(list);
    std::printf(
        "  call list of %d customers: nothing read ahead %.3f s, behind a payment %.3f s, again %.3f s; a "
        "key in its search %.1f ms\n"
        "  charts behind a payment %.3f s\n"
        "  two bare scans %.3f s: the list with nothing read ahead %.2f times as long\n",
        customers, first, behindAPayment, again, key / 2 * 1e3, charts, engine, first / engine);
    benchSearch(program, sell);
    program.expectSaid("");
}

} // namespace
} // namespace veldona::bench

int main(int count, char** arguments) {
    return veldona::bench::overShops("bench_daybook", count, arguments, veldona::bench::benchShop);
}
