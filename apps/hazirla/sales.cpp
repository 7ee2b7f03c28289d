#include <algorithm>

#include "apps/hazirla/random.h"
#include "apps/hazirla/shop.h"
#include "apps/hazirla/words.h"
#include "platform/runtime/datetime.h"

namespace veldona::hazirla {
namespace {

constexpr Kurus kLira = 100;
constexpr int kSystemAccounts = 3;
constexpr int kGuarantorGroup = 6;

// Sales as they come in, in the order of their times; the last on the day before today.
std::vector<DateTime> saleTimes(Random& random, const ShopPlan& plan) {
    const DateTime first = addMonths(plan.today, -12 * plan.years);
    const int days = static_cast<int>((plan.today.seconds() - first.seconds()) / kSecondsADay) - 1;
    std::vector<DateTime> times;
    times.reserve(static_cast<std::size_t>(plan.sales));
    for (int i = 0; i < plan.sales; ++i) {
        const DateTime day = openDay(first.plusDays(random.below(days)));
        const DateTime at = day.plusSeconds(9 * kSecondsAnHour + random.below(36000));
        times.push_back(at < plan.today ? at : openDay(first).plusSeconds(10 * kSecondsAnHour));
    }
    std::sort(times.begin(), times.end());
    return times;
}

class SaleMaker {
public:
    SaleMaker(Shop& shop, const ShopPlan& plan) : shop_(shop), plan_(plan), random_(plan.seed, 2) {
        for (std::size_t i = kSystemAccounts; i < shop.customers.size(); ++i)
            if (shop.customers[i].group == kGuarantorGroup) guarantors_.push_back(shop.customers[i].id);
    }

    void run() {
        const std::vector<DateTime> times = saleTimes(random_, plan_);
        shop_.sales.reserve(times.size());
        for (const DateTime at : times) {
            Sale sale;
            sale.number = static_cast<std::int32_t>(shop_.sales.size()) + 1;
            sale.at = at;
            sale.customer = buyer();
            sell(sale);
            planInstallments(sale);
            deliver(sale);
            shop_.sales.push_back(std::move(sale));
        }
    }

private:
    // Numbers are given in the order of coming in: the shop starts with a third of its customers.
    std::int32_t buyer() {
        const auto done = static_cast<std::int64_t>(shop_.sales.size());
        const std::int64_t known =
            plan_.customers * (plan_.sales + 2 * done) / (std::int64_t{3} * plan_.sales);
        int index = random_.below(std::max(1, static_cast<int>(known)));
        while (customerAt(index).group == kGuarantorGroup)
            --index;
        return index + kSystemAccounts;
    }
    const Customer& customerAt(int index) const {
        return shop_.customers[static_cast<std::size_t>(index) + kSystemAccounts];
    }

    // Once the shop wrote every article; for years now a sale is one amount with a note.
    void sell(Sale& sale) {
        const bool itemized = sale.number <= plan_.sales / 5 + 1 && random_.chance(25);
        if (itemized) {
            sellArticles(sale);
            if (!guarantors_.empty() && random_.chance(30))
                sale.guarantor = random_.pick(std::span<const std::int32_t>(guarantors_));
        } else {
            const Product& product = random_.pick(products());
            sale.lines.push_back({0, 1, price(product), product.name});
        }
        Kurus sum = 0;
        for (const Line& line : sale.lines)
            sum += line.quantity * line.price;
        if (random_.chance(6)) sale.discount = sum * random_.between(1, 6) / 100 / kLira * kLira;
        sale.total = sum - sale.discount;
        for (const Line& line : sale.lines) {
            shop_.products[static_cast<std::size_t>(line.product)].sold += line.quantity;
        }
    }
    void sellArticles(Sale& sale) {
        const int count = random_.between(2, 4);
        const auto articles = static_cast<int>(products().size());
        const int first = random_.below(articles);
        for (int i = 0; i < count; ++i) {
            const int article = (first + i * 7) % articles;
            const Product& product = products()[static_cast<std::size_t>(article)];
            sale.lines.push_back(
                {article + 1, product.highest < 150 ? random_.between(1, 6) : 1, price(product), ""});
        }
    }
    Kurus price(const Product& product) {
        const Kurus lira = Kurus{5} * random_.between(product.lowest / 5, product.highest / 5);
        constexpr Kurus tails[] = {50, 90, 99, 25};
        return lira * kLira + (random_.chance(10) ? random_.pick(std::span<const Kurus>(tails)) : 0);
    }

    // A plan by amount, as the sale screen makes it: the count is the remainder over the installment, rounded
    // half to even, and the last installment takes the difference, up or down.
    void planInstallments(Sale& sale) {
        const Kurus down = downPayment(sale.total);
        if (down > 0) sale.schedule.push_back({sale.at.date(), down, true});
        const Kurus remainder = sale.total - down;
        if (remainder == 0) return;
        const Kurus installment = roundInstallment(remainder, wantedCount(remainder));
        const Kurus count = std::max<Kurus>(1, halfEvenQuotient(remainder, installment));
        const DateTime start = firstDue(sale.at.date());
        for (int i = 0; i < count; ++i) {
            const bool last = i + 1 == count;
            const Kurus amount = last ? installment + remainder - count * installment : installment;
            sale.schedule.push_back({addMonths(start, i), amount, false});
        }
    }
    Kurus downPayment(Kurus total) {
        if (random_.chance(2)) return total;
        if (random_.chance(20)) return 0;
        const Kurus wanted = total * random_.between(8, 30) / 100;
        return std::max<Kurus>(5 * kLira, wanted / (5 * kLira) * (5 * kLira));
    }
    int wantedCount(Kurus remainder) {
        if (remainder < 60 * kLira) return random_.between(2, 4);
        constexpr int counts[] = {4, 6, 8, 10, 12, 12, 12, 12, 12, 15, 15, 18};
        return random_.pick(std::span<const int>(counts));
    }
    // To whole five lira where the installment is large enough for that.
    static Kurus roundInstallment(Kurus remainder, int count) {
        const Kurus step = remainder / count < 30 * kLira ? kLira : 5 * kLira;
        return std::max(step, (remainder / count + step / 2) / step * step);
    }
    static Kurus halfEvenQuotient(Kurus dividend, Kurus divisor) {
        const Kurus whole = dividend / divisor;
        const Kurus twice = 2 * (dividend % divisor);
        if (twice == divisor) return whole + whole % 2;
        return twice > divisor ? whole + 1 : whole;
    }
    // A month later, or on the next month's payday.
    DateTime firstDue(DateTime saleDay) {
        const DateTime due = addMonths(saleDay, 1);
        if (!random_.chance(35)) return due;
        constexpr int paydays[] = {1, 5, 15, 15, 20};
        return DateTime::of(due.year(), due.month(), random_.pick(std::span<const int>(paydays)));
    }

    // Most goods leave with the customer. Some of the last weeks' are still to be brought, and few were
    // forgotten.
    void deliver(Sale& sale) {
        const bool recent = plan_.today.seconds() - sale.at.seconds() < 45 * kSecondsADay;
        if (!random_.chance(recent ? 30 : 1)) return;
        sale.promised = openDay(sale.at.date().plusDays(random_.between(3, 30)));
        sale.delivered = false;
    }

    Shop& shop_;
    const ShopPlan& plan_;
    Random random_;
    std::vector<std::int32_t> guarantors_;
};

void stockProducts(Shop& shop) {
    shop.products.push_back({"1", "Ürün", 0, 0, 0});
    for (const Product& product : products())
        shop.products.push_back({product.code, product.name, product.highest * kLira, 0, 0});
}

// Every article was bought before it was sold; what the sale screen sells has no purchases.
void buyStock(Shop& shop, const ShopPlan& plan) {
    Random random(plan.seed, 4);
    for (std::size_t i = 1; i < shop.products.size(); ++i)
        shop.products[i].bought = shop.products[i].sold + random.between(0, 25);
}

} // namespace

DateTime openDay(DateTime day) {
    constexpr std::int64_t sunday = 1; // day zero is a Saturday
    return day.seconds() / kSecondsADay % 7 == sunday ? day.plusDays(1) : day;
}

void addSales(Shop& shop, const ShopPlan& plan) {
    stockProducts(shop);
    SaleMaker(shop, plan).run();
    buyStock(shop, plan);
}

} // namespace veldona::hazirla
