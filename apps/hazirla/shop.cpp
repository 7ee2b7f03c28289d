#include "apps/hazirla/shop.h"

#include "apps/hazirla/random.h"
#include "platform/runtime/datetime.h"

namespace veldona::hazirla {
namespace {

// Tables that other programs of the shop once wrote: cheques, and money that went through the cash box.
void addDesk(Shop& shop, const ShopPlan& plan) {
    Random random(plan.seed, 5);
    const DateTime first = addMonths(plan.today, -12 * plan.years);
    const int days = static_cast<int>((plan.today.seconds() - first.seconds()) / kSecondsADay);
    for (std::size_t i = 3; i < shop.customers.size(); ++i) {
        const Customer& customer = shop.customers[i];
        if (random.below(150) == 0)
            shop.cheques.push_back({customer.number, Kurus{1000} * random.between(5, 60), random.chance(60)});
        if (random.below(20) != 0) continue;
        CashMovement movement{
            random.between(1, 3), customer.id, {}, Kurus{100} * random.between(10, 400), {}, 1};
        movement.on = openDay(first.plusDays(random.below(days - 1)))
                          .plusSeconds(9 * kSecondsAnHour + random.below(36000));
        movement.cashBox = random.between(1, 2);
        if (random.chance(80)) movement.note = "Elden alındı";
        shop.cashMovements.push_back(std::move(movement));
    }
}

} // namespace

Shop makeShop(const ShopPlan& plan) {
    Shop shop;
    shop.groups = {{"Esnaf", "ES"},  {"Memur", "ME"},  {"İşçi", "IS"},
                   {"Emekli", "EM"}, {"Çiftçi", "CF"}, {"Kefiller", "YM"}};
    shop.cashBoxes = {"Merkez", "Şube"};
    addCustomers(shop, plan);
    addSales(shop, plan);
    addPayments(shop, plan);
    addDesk(shop, plan);
    addCalls(shop, plan);
    return shop;
}

} // namespace veldona::hazirla
