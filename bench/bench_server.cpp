// What the operator's steps cost on books of a server: at its socket, and behind a line that makes each trip
// there and back half a millisecond longer, as a shop's network does.
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <exception>
#include <functional>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

#include "bench/headless.h"
#include "core/delivered.h"
#include "core/session.h"
#include "core/showscreen.h"
#include "platform/controls/forms.h"
#include "platform/controls/userinput.h"
#include "platform/store/engine/inquiry.h"
#include "platform/store/engine/place.h"
#include "platform/store/faces/database.h"
#include "tests/support/files.h"
#include "tests/support/wire.h"

namespace veldona::bench {
namespace {

constexpr std::chrono::microseconds kLine(500);
constexpr double kOwed = 100'000'000; // as it is stored
constexpr std::size_t kSales = 200, kSavedSales = 40;

void mustTake(bool taken) {
    if (!taken) throw std::runtime_error("the screen did not take the operator's act");
}

struct SaleKey {
    std::string account, sale;
};

// A program whose books are those of `root`, behind a wire of that length.
class Till {
public:
    Till(const std::string& root, std::chrono::microseconds line, DateTime now)
        : address_(addressOf(root)), wire_(address_.keywords().at("host"), line), program_(drive(), now) {}

    [[nodiscard]] Headless& program() { return program_; }

    // Sales that owe, evenly over all of them.
    [[nodiscard]] std::vector<SaleKey> sales(std::size_t count) {
        const store::Inquiry books(program_.database().engine());
        std::unordered_map<std::int64_t, double> paid;
        const auto sums = books.prepare("SELECT ISLEMNO, SUM(ODMIKTAR) FROM TAKSITODENEN GROUP BY ISLEMNO");
        while (sums->step())
            paid[sums->whole(0)] = sums->number(1);
        const auto rows = books.prepare("SELECT MUSTNO, ISLEMNO, TOPBORC FROM ISLEMNOTABLO ORDER BY ISLEMNO");
        std::vector<SaleKey> all, spread;
        while (rows->step())
            if (rows->number(2) > paid[rows->whole(1)] + kOwed)
                all.push_back({std::string(rows->text(0)), std::string(rows->text(1))});
        for (std::size_t i = 0; i < count; ++i)
            spread.push_back(all[i * all.size() / count]);
        return spread;
    }
    void load(const SaleKey& key) {
        program_.type(key.account);
        program_.select(key.sale);
        program_.pressEnter();
    }
    void time(const std::function<void()>& step) {
        const int before = wire_.trips();
        const auto begun = std::chrono::steady_clock::now();
        step();
        const auto taken = std::chrono::steady_clock::now() - begun;
        times_.push_back(std::chrono::duration<double, std::milli>(taken).count());
        trips_.push_back(wire_.trips() - before);
    }
    // Of what was timed since the last call: the medians.
    void print(const char* step) {
        const auto median = [](auto& values) {
            std::sort(values.begin(), values.end());
            return values[values.size() / 2];
        };
        std::printf("  %-28s %9.3f ms %6d trips\n", step, median(times_), median(trips_));
        times_.clear();
        trips_.clear();
    }

private:
    static store::ServerAddress addressOf(const std::string& root) {
        auto address = store::ServerAddress::beside(Paths(root).toNative(kDatabasePath));
        if (!address) throw std::runtime_error("the books of " + root + " are on no server");
        return *std::move(address);
    }
    // A folder for drive C: that says where the wire is.
    std::string drive() {
        const std::filesystem::path books(Paths(drive_.path().string()).toNative(kDatabasePath));
        std::filesystem::create_directories(books.parent_path());
        std::string text = "host=" + wire_.folder();
        for (const char* keyword : {"dbname", "user"})
            text += std::string(" ") + keyword + '=' + address_.keywords().at(keyword);
        test::writeBytes(store::ServerAddress::fileBeside(books.string()), text);
        return drive_.path().string();
    }

    store::ServerAddress address_;
    test::TemporaryFolder drive_;
    test::Wire wire_;
    Headless program_;
    std::vector<double> times_;
    std::vector<int> trips_;
};

void benchShop(const std::string& root, std::chrono::microseconds line, DateTime now) {
    Till till(root, line, now);
    Headless& program = till.program();
    std::printf("%s, %lld µs\n", root.c_str(), static_cast<long long>(line.count()));
    const std::vector<SaleKey> sales = till.sales(kSales);
    for (const SaleKey& key : sales) {
        program.type(key.account);
        till.time([&] { program.type(key.account); });
    }
    till.print("keystroke in Text1");
    for (const SaleKey& key : sales) {
        till.load(key);
        program.select(key.sale);
        till.time([&] { program.pressEnter(); });
    }
    till.print("opening a sale, Enter in L3");
    for (const SaleKey& key : sales) {
        till.load(key);
        mustTake(user::put(program.screen().mskOdenenPara, "1"));
        till.time([&] { program.collect(); });
        program.expectSaid("KAYIT İŞLEMİ TAMAMLANDI");
    }
    till.print("posting a payment, Command1");
    for (const SaleKey& key : till.sales(kSavedSales)) {
        program.type(key.account);
        program.inSaleScreen([&](FrmSatis& sale) {
            mustTake(user::put(sale.MskToplamUcret, "1200"));
            mustTake(user::put(sale.MskTaksitAdedi, "12"));
            till.time([&] { mustTake(user::click(sale.cmdKaydet)); });
        });
        program.expectSaid("İşlem Tamamlandı");
    }
    till.print("saving a sale of 12");
}

void benchOverdue(const std::string& root, std::chrono::microseconds line, DateTime now) {
    Till till(root, line, now);
    Session& session = till.program().session();
    showScreen(session, "rprodemesigecen", Kip::Modeless);
    Form& form = *session.forms.loaded("rprodemesigecen");
    mustTake(user::pickDate(dynamic_cast<DateBox&>(*form.find("dtRaporTarihi")), Value()));
    mustTake(user::pickDate(dynamic_cast<DateBox&>(*form.find("dtRaporTarihiSon")), now.date()));
    for (int run = 0; run < 3; ++run)
        till.time([&] { mustTake(user::click(*form.find("cmdRapor"))); });
    std::printf("%s, %lld µs\n", root.c_str(), static_cast<long long>(line.count()));
    till.print("overdue, all years");
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
