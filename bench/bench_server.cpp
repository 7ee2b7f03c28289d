// What the operator's steps cost on books of a server, beside libpq fetching and writing the same rows: at
// its socket, and behind a line that makes each trip there and back half a millisecond longer, as a shop's
// network does. Each step is done by both, in turns, and medians are compared.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "bench/bareserver.h"
#include "bench/headless.h"
#include "core/delivered.h"
#include "core/session.h"
#include "core/showscreen.h"
#include "platform/controls/forms.h"
#include "platform/controls/userinput.h"
#include "platform/store/engine/place.h"
#include "tests/support/files.h"
#include "tests/support/wire.h"

namespace veldona::bench {
namespace {

constexpr std::chrono::microseconds kLine(500);
constexpr std::size_t kSales = 200, kSavedSales = 40;
constexpr int kReports = 3;

void mustTake(bool taken) {
    if (!taken) throw std::runtime_error("the screen did not take the operator's act");
}

store::ServerAddress addressOf(const std::string& root) {
    auto address = store::ServerAddress::beside(Paths(root).toNative(kDatabasePath));
    if (!address) throw std::runtime_error("the books of " + root + " are on no server");
    return *std::move(address);
}

// The way to the books of `root`, and a folder for drive C: that says where it begins.
class Line {
public:
    Line(const std::string& root, std::chrono::microseconds roundTrip)
        : wire_(addressOf(root).keywords().at("host"), roundTrip) {
        const std::filesystem::path books(Paths(drive()).toNative(kDatabasePath));
        std::filesystem::create_directories(books.parent_path());
        std::string text = "host=" + wire_.folder();
        const store::ServerAddress address = addressOf(root);
        for (const char* keyword : {"dbname", "user"})
            text += std::string(" ") + keyword + '=' + address.keywords().at(keyword);
        test::writeBytes(store::ServerAddress::fileBeside(books.string()), text);
    }
    [[nodiscard]] std::string drive() const { return drive_.path().string(); }
    [[nodiscard]] int trips() const { return wire_.trips(); }

private:
    test::TemporaryFolder drive_;
    test::Wire wire_;
};

// Both at the same line.
class Race {
public:
    Race(const std::string& root, std::chrono::microseconds roundTrip, DateTime now)
        : line_(root, roundTrip), program(line_.drive(), now),
          bare(addressOf(line_.drive()), store::kBooksSchema, now) {
        std::printf("%s, %lld µs\n  %-28s %12s %12s %8s %15s\n", root.c_str(),
                    static_cast<long long>(roundTrip.count()), "medians", "program", "libpq", "ratio",
                    "trips of both");
    }
    void run(const std::function<void()>& byProgram, const std::function<void()>& byBare) {
        for (int turn = 0; turn < 2; ++turn) {
            const bool isProgram = (times_[0].size() + times_[1].size()) % 4 % 3 == 0;
            const int before = line_.trips();
            const auto begun = std::chrono::steady_clock::now();
            isProgram ? byProgram() : byBare();
            const auto taken = std::chrono::steady_clock::now() - begun;
            times_[isProgram ? 0 : 1].push_back(std::chrono::duration<double, std::milli>(taken).count());
            trips_[isProgram ? 0 : 1].push_back(line_.trips() - before);
        }
    }
    // Of what was run since the last call.
    void print(const char* step) {
        const auto median = [](auto& values) {
            std::sort(values.begin(), values.end());
            const auto middle = values[values.size() / 2];
            values.clear();
            return middle;
        };
        const double ours = median(times_[0]), theirs = median(times_[1]);
        const int trips = median(trips_[0]), itsTrips = median(trips_[1]);
        std::printf("  %-28s %9.3f ms %9.3f ms %8.2f %7d %7d\n", step, ours, theirs, ours / theirs, trips,
                    itsTrips);
    }
    void load(const ServerSale& key) {
        program.type(key.account);
        program.select(key.sale);
        program.pressEnter();
    }

private:
    Line line_;
    std::vector<double> times_[2];
    std::vector<int> trips_[2];

public:
    Headless program;
    BareServer bare;
};

void benchShop(const std::string& root, std::chrono::microseconds roundTrip, DateTime now) {
    Race race(root, roundTrip, now);
    Headless& program = race.program;
    const std::vector<ServerSale> sales = race.bare.sales(kSales);
    for (const ServerSale& key : sales) {
        program.type(key.account); // brings the pages into the cache
        race.run([&] { program.type(key.account); }, [&] { race.bare.load(key.account); });
    }
    race.print("keystroke in Text1");
    for (const ServerSale& key : sales) {
        race.load(key);
        program.select(key.sale);
        race.run([&] { program.pressEnter(); }, [&] { race.bare.open(key); });
    }
    race.print("opening a sale, Enter in L3");
    for (const ServerSale& key : sales) {
        race.load(key);
        mustTake(user::put(program.screen().mskOdenenPara, "1"));
        race.run([&] { program.collect(); }, [&] { race.bare.pay(key); });
        program.expectSaid("KAYIT İŞLEMİ TAMAMLANDI");
    }
    race.print("posting a payment, Command1");
    for (const ServerSale& key : race.bare.sales(kSavedSales)) {
        program.type(key.account);
        program.inSaleScreen([&](FrmSatis& sale) {
            mustTake(user::put(sale.MskToplamUcret, "1200"));
            mustTake(user::put(sale.MskTaksitAdedi, "12"));
            race.run([&] { mustTake(user::click(sale.cmdKaydet)); }, [&] { race.bare.save(key.account); });
        });
        program.expectSaid("İşlem Tamamlandı");
    }
    race.print("saving a sale of 12");
}

void benchOverdue(const std::string& root, std::chrono::microseconds roundTrip, DateTime now) {
    Race race(root, roundTrip, now);
    Session& session = race.program.session();
    showScreen(session, "rprodemesigecen", Kip::Modeless);
    Form& form = *session.forms.loaded("rprodemesigecen");
    mustTake(user::pickDate(dynamic_cast<DateBox&>(*form.find("dtRaporTarihi")), Value()));
    mustTake(user::pickDate(dynamic_cast<DateBox&>(*form.find("dtRaporTarihiSon")), now.date()));
    int rows = 0;
    for (int i = 0; i < kReports; ++i)
        race.run([&] { mustTake(user::click(*form.find("cmdRapor"))); }, [&] { rows = race.bare.overdue(); });
    race.program.expectSaid("");
    race.print("overdue, all years");
    std::printf("  %d sales on it\n", rows);
}

int run(int count, char** arguments) {
    const DateTime now = DateTime::of(2026, 11, 22, 10, 30);
    if (count != 3) {
        std::fprintf(stderr, "usage: bench_server FOLDER FOLDER   the shop of the steps, that of the report; "
                             "their books are on a server\n");
        return 2;
    }
    for (const auto line : {std::chrono::microseconds(0), kLine}) {
        benchShop(arguments[1], line, now);
        benchOverdue(arguments[2], line, now);
    }
    return 0;
}

} // namespace
} // namespace veldona::bench

int main(int count, char** arguments) {
    try {
        return veldona::bench::run(count, arguments);
    } catch (const std::exception& failure) {
        std::fprintf(stderr, "bench_server: %s\n", failure.what());
        return 1;
    }
}
