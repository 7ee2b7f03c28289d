// What the call list costs, on every sale of the shop, beside the bare engine scanning plan and payments once
// each and joining them in memory.
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

FrmBugun& open(Headless& program) {
    showScreen(program.session(), "frmBugun", Kip::Modeless);
    return dynamic_cast<FrmBugun&>(*program.session().forms.loaded("frmBugun"));
}

void mustTake(bool taken) {
    if (!taken) throw std::runtime_error("the call list did not take the operator's act");
}

void benchShop(const std::string& root, DateTime now) {
    const Copy copy(root);
    Headless program(copy.root(), now);
    Forms& forms = program.session().forms;
    int customers = 0;
    const auto openAndClose = [&] {
        FrmBugun& list = open(program);
        customers = list.rows.rowCount();
        forms.unload(list);
    };
    const double first = secondsOf(openAndClose);
    const auto write = [&] { // one payment, so that nothing known before still holds
        program.database().execute("INSERT INTO TAKSITODENEN (MUSTNO,ISLEMNO,ODTRH,ODMIKTAR) VALUES "
                                   "('0',0,'22/11/2026 10:00:00',0)");
    };
    double behindAWrite = 0;
    for (int run = 0; run < kRuns; ++run) {
        write();
        const double taken = secondsOf(openAndClose);
        if (run == 0 || taken < behindAWrite) behindAWrite = taken;
    }
    const double again = shortestOf(openAndClose);
    const double engine = shortestOf([&] { static_cast<void>(behind(program.database().engine())); });
    FrmBugun& list = open(program);
    const double key = shortestOf([&] {
        mustTake(user::put(list.txtAra, "a"));
        mustTake(user::put(list.txtAra, ""));
    });
    forms.unload(list);
    program.expectSaid("");
    std::printf(
        "%s\n  call list of %d customers: the first time %.3f s, behind a payment %.3f s, again %.3f s\n"
        "  two bare scans %.3f s: ratio %.2f; a key in the search %.1f ms\n",
        root.c_str(), customers, first, behindAWrite, again, engine, behindAWrite / engine, key / 2 * 1e3);
}

} // namespace
} // namespace veldona::bench

int main(int count, char** arguments) {
    return veldona::bench::overShops("bench_daybook", count, arguments, veldona::bench::benchShop);
}
