// What the operator's steps cost beside the bare engine doing the same work in the same run.
//
// Every step is done twice for each of several hundred sales, by the program and by the engine, in turns;
// pages are in the cache for both. Medians are compared, so that a hiccup of the machine counts for nothing.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/bareengine.h"
#include "bench/headless.h"
#include "bench/overshops.h"
#include "bench/shopcopy.h"
#include "core/delivered.h"
#include "platform/controls/userinput.h"
#include "platform/store/engine/openfile.h"
#include "platform/store/faces/database.h"
#include "schema/tables.h"

namespace veldona::bench {
namespace {

constexpr std::size_t kSales = 400;
constexpr std::size_t kSavedSales = 60;

void mustTake(bool taken) {
    if (!taken) throw std::runtime_error("the screen did not take the operator's act");
}

double millisecondsOf(const std::function<void()>& work) {
    const auto begun = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double, std::milli>(std::chrono::steady_clock::now() - begun).count();
}

double quantile(std::vector<double> times, double share) {
    std::sort(times.begin(), times.end());
    return times[static_cast<std::size_t>(share * static_cast<double>(times.size() - 1))];
}

// One step, taken in turns: now the program goes first, now the engine. The rows that each took from the file
// are counted, so that a step that answers from memory, or reads more than it needs, is seen.
class Race {
public:
    Race(const char* step, Headless& program, BareEngine& engine)
        : step_(step), program_(program), engine_(engine) {}

    void run(const std::function<void()>& byProgram, const std::function<void()>& byEngine) {
        const bool programFirst = programTimes_.size() % 2 == 0;
        if (programFirst) runProgram(byProgram);
        const std::int64_t before = engine_.rowsRead();
        engineTimes_.push_back(millisecondsOf(byEngine));
        engineRows_ += engine_.rowsRead() - before;
        if (!programFirst) runProgram(byProgram);
    }
    void print() const {
        const double program = quantile(programTimes_, 0.5);
        const double engine = quantile(engineTimes_, 0.5);
        const auto times = static_cast<std::int64_t>(programTimes_.size());
        std::printf("  %-28s %9.3f ms %9.3f ms %8.2f   %9.3f ms %9.3f ms %6lld %6lld\n", step_, program,
                    engine, program / engine, quantile(programTimes_, 0.95), quantile(engineTimes_, 0.95),
                    static_cast<long long>(programRows_ / times),
                    static_cast<long long>(engineRows_ / times));
    }

private:
    void runProgram(const std::function<void()>& byProgram) {
        const std::uint64_t before = program_.database().rowsRead();
        programTimes_.push_back(millisecondsOf(byProgram));
        programRows_ += static_cast<std::int64_t>(program_.database().rowsRead() - before);
    }

    const char* step_;
    Headless& program_;
    BareEngine& engine_;
    std::vector<double> programTimes_, engineTimes_;
    std::int64_t programRows_ = 0;
    std::int64_t engineRows_ = 0;
};

void raceKeystroke(Headless& program, BareEngine& engine) {
    Race race("keystroke in Text1", program, engine);
    for (const SaleKey& key : engine.sales(kSales, false)) {
        program.type(key.account); // brings the pages into the cache
        race.run([&] { program.type(key.account); }, [&] { engine.load(key.account); });
        program.expectSaid("");
    }
    race.print();
}

void raceOpening(Headless& program, BareEngine& engine) {
    Race race("opening a sale, Enter in L3", program, engine);
    for (const SaleKey& key : engine.sales(kSales, false)) {
        program.type(key.account);
        program.select(std::to_string(key.sale));
        program.pressEnter();
        program.select(std::to_string(key.sale));
        race.run([&] { program.pressEnter(); }, [&] { engine.open(key); });
        program.expectSaid("");
    }
    race.print();
}

void racePosting(Headless& program, BareEngine& engine) {
    Race race("posting a payment, Command1", program, engine);
    const std::vector<SaleKey> sales = engine.sales(kSales, true);
    const std::int64_t before = engine.payments();
    for (const SaleKey& key : sales) {
        program.type(key.account);
        program.select(std::to_string(key.sale));
        program.pressEnter();
        static_cast<void>(user::put(program.screen().mskOdenenPara, "1"));
        engine.open(key); // its own pages into its own cache
        race.run([&] { program.collect(); }, [&] { engine.pay(key); });
        program.expectSaid("KAYIT İŞLEMİ TAMAMLANDI");
    }
    if (engine.payments() != before + static_cast<std::int64_t>(sales.size()))
        throw std::runtime_error("a payment was acknowledged and not written");
    race.print();
}

void raceCorrectingPayment(Headless& program, BareEngine& engine) {
    Race race("correcting a payment", program, engine);
    for (const SaleKey& key : engine.sales(kSales, true)) {
        program.type(key.account);
        program.select(std::to_string(key.sale));
        program.pressEnter();
        if (program.screen().L1.count() == 0) continue;
        program.inPaymentCorrection([&](Form& dialog) {
            mustTake(user::put(dynamic_cast<TextBox&>(*dialog.find("Text1")), program.screen().L2.list(0)));
            engine.open(key);
            race.run([&] { mustTake(user::click(*dialog.find("Command1"))); },
                     [&] { engine.correctPayment(key); });
        });
        program.expectSaid("DÜZELTME İŞLEMİ GERÇEKLEŞTİ");
    }
    race.print();
}

// Last of all: the engine's sales are none of the program's making.
void raceSaving(Headless& program, BareEngine& engine) {
    Race race("saving a sale of 12", program, engine);
    for (const SaleKey& key : engine.sales(kSavedSales, false)) {
        program.type(key.account);
        program.inSaleScreen([&](FrmSatis& sale) {
            mustTake(user::put(sale.MskToplamUcret, "1200"));
            mustTake(user::put(sale.MskTaksitAdedi, "12"));
            engine.load(key.account);
            race.run([&] { mustTake(user::click(sale.cmdKaydet)); }, [&] { engine.save(key.account); });
        });
        program.expectSaid("İşlem Tamamlandı");
    }
    race.print();
}

void raceCorrecting(Headless& program, BareEngine& engine) {
    Race race("correcting a schedule row", program, engine);
    for (const SaleKey& key : engine.sales(kSales, true)) {
        program.type(key.account);
        program.select(std::to_string(key.sale));
        program.pressEnter();
        program.openCorrection();
        engine.open(key);
        race.run([&] { program.pressEnter(); }, [&] { engine.correct(key); });
        program.expectSaid("");
    }
    race.print();
}

// Books that keep no journal: what a write costs with it stands beside what it would cost without.
std::unique_ptr<store::Engine> openWithoutJournal(const std::string& root) {
    const std::string books = Paths(root).toNative(kDatabasePath);
    auto engine = store::openFileToWork(books, kDeliveredPassword, {std::chrono::seconds(5), {}, {}},
                                        schema::delivered());
    std::vector<std::string> names;
    for (const auto triggers = engine->prepare("SELECT name FROM sqlite_master WHERE type = 'trigger'");
         triggers->step();)
        names.emplace_back(triggers->text(0));
    for (const std::string& name : names)
        engine->execute("DROP TRIGGER \"" + name + '"');
    return engine;
}

// As many rows as the journal of these writes takes.
void printJournal(Headless& program) {
    const auto size =
        program.database().engine().prepare("SELECT TABLO, TUR, count(*), avg(length(CAST(ISLEM || AN || "
                                            "TABLO || TUR || ifnull(ESKI, '') || ifnull(YENI, "
                                            "'') || OZET || ifnull(PROGRAM || MAKINE || KULLANICI || EKRAN "
                                            "|| ADIM, '') AS BLOB))) FROM GUNLUK GROUP BY "
                                            "TABLO, TUR");
    while (size->step())
        std::printf("  journal: %-16s %s %8lld entries of %4.0f bytes\n", std::string(size->text(0)).c_str(),
                    std::string(size->text(1)).c_str(), static_cast<long long>(size->whole(2)),
                    size->number(3));
}

void benchShop(const std::string& root, DateTime now) {
    const Copy copy(root), bareCopy(root);
    Headless program(copy.root(), now);
    BareEngine engine(program.database().engine(), now);
    const auto bareBooks = openWithoutJournal(bareCopy.root());
    BareEngine bare(*bareBooks, now);
    std::printf("%s: %lld payments\n", root.c_str(), static_cast<long long>(engine.payments()));
    std::printf("  %-28s %12s %12s %8s   %12s %12s %13s\n", "medians", "program", "engine", "ratio",
                "program 95%", "engine 95%", "rows, both");
    raceKeystroke(program, engine);
    raceOpening(program, engine);
    racePosting(program, bare);
    raceCorrecting(program, bare);
    raceCorrectingPayment(program, bare);
    raceSaving(program, bare);
    printJournal(program);
}

} // namespace
} // namespace veldona::bench

int main(int count, char** arguments) {
    return veldona::bench::overShops("bench_operator", count, arguments, veldona::bench::benchShop);
}
