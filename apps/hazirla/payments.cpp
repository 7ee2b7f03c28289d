#include <algorithm>

#include "apps/hazirla/random.h"
#include "apps/hazirla/shop.h"

namespace veldona::hazirla {
namespace {

enum class Temper { OnTime, Late, Ahead, InParts, Stops, Never };

// How one customer pays one sale, installment by installment, up to yesterday.
class Payer {
public:
    Payer(Random& random, const Sale& sale, std::int32_t index, DateTime today,
          std::vector<Payment>& payments)
        : random_(random), sale_(sale), index_(index), today_(today), payments_(payments) {
        const int share = random.below(100);
        temper_ = share < 46   ? Temper::OnTime
                  : share < 72 ? Temper::Late
                  : share < 82 ? Temper::Ahead
                  : share < 89 ? Temper::InParts
                  : share < 97 ? Temper::Stops
                               : Temper::Never;
        stopsAfter_ = random.below(static_cast<int>(sale.schedule.size()) + 1);
    }

    void run() {
        const auto& schedule = sale_.schedule;
        std::size_t next = 0;
        if (!schedule.empty() && schedule[0].downPayment) {
            // The sale screen writes it with the sale's own time and no cash box.
            payments_.push_back({index_, sale_.at, schedule[0].amount, -1});
            next = 1;
        }
        for (std::size_t row = next; row < schedule.size(); ++row) {
            if (temper_ == Temper::Never) return;
            if (temper_ == Temper::Stops && static_cast<int>(row) >= stopsAfter_) return;
            const std::size_t together = coveredFrom(row);
            Kurus amount = 0;
            for (std::size_t i = row; i < row + together; ++i)
                amount += schedule[i].amount;
            if (!payOn(dayFor(schedule[row].on), amount)) return;
            row += together - 1;
        }
    }

private:
    // One payment may cover two installments, or all that is left.
    std::size_t coveredFrom(std::size_t row) {
        const std::size_t left = sale_.schedule.size() - row;
        if (temper_ == Temper::Ahead && random_.chance(6)) return left;
        return left > 1 && random_.chance(temper_ == Temper::InParts ? 0 : 5) ? 2 : 1;
    }
    DateTime dayFor(DateTime due) {
        switch (temper_) {
        case Temper::Late:
            return due.plusDays(random_.between(3, 50));
        case Temper::Ahead:
            return due.plusDays(-random_.between(5, 40));
        case Temper::OnTime:
        case Temper::InParts:
        case Temper::Stops:
        case Temper::Never:
            break;
        }
        return due.plusDays(random_.between(-3, 4));
    }
    // False where the day has not come yet: what is due later has not been paid either.
    bool payOn(DateTime day, Kurus amount) {
        if (temper_ != Temper::InParts || amount < 400 || !random_.chance(70)) return pay(day, amount);
        const Kurus part = amount * random_.between(30, 70) / 100 / 100 * 100;
        return pay(day, part) && pay(day.plusDays(random_.between(4, 18)), amount - part);
    }
    bool pay(DateTime day, Kurus amount) {
        const DateTime counter = openDay(std::max(day, sale_.at.date().plusDays(1)));
        if (counter >= today_) return false;
        const int box = random_.below(100);
        const DateTime at = counter.plusSeconds(9 * 3600 + random_.below(36000));
        payments_.push_back({index_, at, amount, box < 70 ? 1 : box < 85 ? 2 : 0});
        return true;
    }

    Random& random_;
    const Sale& sale_;
    std::int32_t index_;
    DateTime today_;
    std::vector<Payment>& payments_;
    Temper temper_;
    int stopsAfter_;
};

} // namespace

void addPayments(Shop& shop, const ShopPlan& plan) {
    Random random(plan.seed, 3);
    for (std::size_t i = 0; i < shop.sales.size(); ++i)
        Payer(random, shop.sales[i], static_cast<std::int32_t>(i), plan.today, shop.payments).run();
    std::stable_sort(shop.payments.begin(), shop.payments.end(),
                     [](const Payment& a, const Payment& b) { return a.at < b.at; });
}

} // namespace veldona::hazirla
