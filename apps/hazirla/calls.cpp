#include <algorithm>
#include <map>

#include "apps/hazirla/random.h"
#include "apps/hazirla/shop.h"
#include "apps/hazirla/words.h"

namespace veldona::hazirla {
namespace {

// What the shop wrote down of its calls in the last weeks with those who are behind.
class Caller {
public:
    Caller(Shop& shop, const ShopPlan& plan) : shop_(shop), plan_(plan), random_(plan.seed, 6) {}

    void run() {
        readPayments();
        for (std::size_t i = 0; i < shop_.sales.size(); ++i)
            if (isBehind(shop_.sales[i], paid_[i]) && random_.chance(60)) call(shop_.sales[i]);
        std::stable_sort(shop_.calls.begin(), shop_.calls.end(),
                         [](const Call& one, const Call& other) { return one.at < other.at; });
    }

private:
    void readPayments() {
        paid_.resize(shop_.sales.size());
        for (const Payment& payment : shop_.payments) {
            paid_[static_cast<std::size_t>(payment.sale)] += payment.amount;
            last_[shop_.sales[static_cast<std::size_t>(payment.sale)].customer] = payment;
        }
    }
    [[nodiscard]] bool isBehind(const Sale& sale, Kurus paid) const {
        for (const Due& due : sale.schedule)
            if (due.on < plan_.today) paid -= due.amount;
        return paid < 0;
    }
    // Whoever has paid since the call kept a promise; the others promised for soon, or in vain.
    void call(const Sale& sale) {
        Call call{sale.customer,
                  timeOn(openDay(plan_.today.plusDays(-random_.between(2, 30)))),
                  random_.pick(answers()),
                  {},
                  0};
        const auto payment = last_.find(sale.customer);
        const bool paidLately = payment != last_.end() &&
                                plan_.today.seconds() - payment->second.at.seconds() < 25 * kSecondsADay;
        if (paidLately && random_.chance(70)) {
            const DateTime paidOn = payment->second.at.date();
            call.at = timeOn(openDay(paidOn.plusDays(-random_.between(2, 6))));
            promise(call, paidOn, payment->second.amount);
        } else if (random_.chance(65)) {
            promise(call, openDay(call.at.date().plusDays(random_.between(3, 21))),
                    sale.schedule.back().amount);
        }
        if (call.at < plan_.today) shop_.calls.push_back(call);
    }
    static void promise(Call& call, DateTime day, Kurus amount) {
        call.promisedDay = day;
        call.promised = amount;
    }
    DateTime timeOn(DateTime day) { return day.plusSeconds(10 * 3600 + random_.below(6 * 3600) / 60 * 60); }

    Shop& shop_;
    const ShopPlan& plan_;
    Random random_;
    std::vector<Kurus> paid_;              // by sale
    std::map<std::int32_t, Payment> last_; // by customer
};

} // namespace

void addCalls(Shop& shop, const ShopPlan& plan) {
    Caller(shop, plan).run();
}

} // namespace veldona::hazirla
