#include <string>
#include <utility>

#include "apps/hazirla/random.h"
#include "apps/hazirla/shop.h"
#include "apps/hazirla/words.h"

namespace veldona::hazirla {
namespace {

constexpr int kGuarantorGroup = 6;

// The accounts that the program keeps out of every customer list.
void addSystemAccounts(Shop& shop) {
    constexpr std::pair<const char*, const char*> accounts[] = {
        {"G3", "Gelir Hesabı"}, {"G4", "Gider Hesabı"}, {"TI", "Taksit Hesabı"}};
    for (const auto& [number, name] : accounts) {
        Customer account;
        account.id = static_cast<std::int32_t>(shop.customers.size()) + 1;
        account.number = number;
        account.name = name;
        shop.customers.push_back(std::move(account));
    }
}

std::string twoDigits(int number) {
    return std::to_string(100 + number).substr(1);
}

std::string phone(Random& random, const std::string& area) {
    std::string number = area + ' ' + std::to_string(random.between(200, 899));
    number += ' ' + twoDigits(random.below(100));
    return number + ' ' + twoDigits(random.below(100));
}

std::string mobilePhone(Random& random) {
    constexpr const char* operators[] = {"0505", "0532", "0535", "0542", "0543", "0555"};
    return phone(random, random.pick(std::span<const char* const>(operators)));
}

void givePerson(Customer& customer, Random& random, int thisYear) {
    const FirstName& first = random.pick(firstNames());
    customer.name = first.text;
    customer.surname = random.pick(surnames());
    customer.sex = first.woman ? "BAYAN" : "ERKEK";
    const int age = random.between(19, 78);
    customer.age = std::to_string(age);
    customer.maritalStatus = random.chance(age < 26 ? 30 : 85) ? "EVLİ" : "BEKAR";
    customer.occupation = random.pick(occupations());
    const int month = random.between(1, 12);
    const int day = random.between(1, 28);
    if (random.chance(30)) customer.birthDate = DateTime::of(thisYear - age, month, day);
    if (random.chance(4)) customer.warning = random.pick(warnings());
}

void giveAddress(Customer& customer, Random& random) {
    customer.quarter = random.pick(quarters());
    customer.street = random.pick(streets());
    customer.building = "No: " + std::to_string(random.between(1, 140));
    customer.building += '/' + std::to_string(random.between(1, 24));
    customer.district = random.chance(80) ? "Merkez" : "Gölyaka";
    customer.province = "Düzce";
    if (random.chance(75)) customer.homePhone = phone(random, "0380");
    if (random.chance(90)) customer.mobile = mobilePhone(random);
    if (!random.chance(40)) return;
    customer.workPhone = phone(random, "0380");
    customer.workQuarter = random.pick(quarters());
    customer.workStreet = random.pick(streets());
}

} // namespace

// The first customer is a buyer and no guarantor, so that the smallest shop can sell.
void addCustomers(Shop& shop, const ShopPlan& plan) {
    addSystemAccounts(shop);
    Random random(plan.seed, 1);
    for (int number = 1; number <= plan.customers; ++number) {
        Customer customer;
        customer.id = static_cast<std::int32_t>(shop.customers.size()) + 1;
        customer.number = std::to_string(number);
        givePerson(customer, random, plan.today.year());
        giveAddress(customer, random);
        const bool guarantor = random.below(50) == 0 && number > 1;
        const int trade = random.below(kGuarantorGroup);
        customer.group = guarantor ? kGuarantorGroup : trade;
        shop.customers.push_back(std::move(customer));
    }
}

} // namespace veldona::hazirla
