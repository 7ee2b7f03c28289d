// A sample shop as plain rows: customers, and sales of several years in every state that a counter knows:
// paid up, late, ahead, part paid, not yet delivered.
//
// The same plan gives the same rows, whatever the machine. Of every sale it holds that the schedule adds up
// to its total, that the total is its lines less the discount, that a down payment stands both in the
// schedule and among the payments, and that no more was paid than is owed.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/runtime/datetime.h"
#include "platform/runtime/value.h"

namespace veldona::hazirla {

struct ShopPlan {
    int customers = 300;
    int sales = 1500;
    int years = 5;
    std::uint64_t seed = 1;
    DateTime today; // nothing has happened on this day yet, and nothing after it
};

using Kurus = std::int64_t;

inline constexpr std::int64_t kSecondsAnHour = 3600;

// IDs are those that the store will give: 1 for the first row of an empty table.
struct Customer {
    std::int32_t id = 0;
    std::string number; // HSTNO
    std::string name, surname, age, maritalStatus, occupation, sex;
    Value birthDate;
    int group = 0; // GRUPLAR.ID, 0: none
    std::string homePhone, workPhone, mobile;
    std::string quarter, street, building, district, province;
    Value workQuarter, workStreet;
    Value warning; // UYARI
};

struct Line {
    std::int32_t product = 0; // index into Shop::products
    int quantity = 1;
    Kurus price = 0;
    std::string note;
};

struct Due {
    DateTime on;
    Kurus amount = 0;
    bool downPayment = false;
};

struct Sale {
    std::int32_t number = 0;     // ISLEMNO
    std::int32_t customer = 0;   // index into Shop::customers
    std::int32_t guarantor = -1; // Customer::id
    DateTime at;
    Kurus discount = 0;
    Kurus total = 0; // TOPBORC
    bool delivered = true;
    Value promised; // TESLIMAT_TRH
    std::vector<Line> lines;
    std::vector<Due> schedule;
};

struct Payment {
    std::int32_t sale = 0; // index into Shop::sales
    DateTime at;
    Kurus amount = 0;
    std::int32_t cashBox =
        0; // T_KASA_TANITIM.ID; -1 as the sale screen writes a down payment, 0: none chosen
};

struct StockItem {
    std::string code, name;
    Kurus price = 0;
    int bought = 0;
    int sold = 0;
};

struct Group {
    const char* name;
    const char* code;
};

struct Cheque {
    std::string customer;
    Kurus amount = 0;
    bool booked = false;
};

struct CashMovement {
    int kind = 0; // ISLEM_ID
    std::int32_t customerId = 0;
    DateTime on;
    Kurus amount = 0;
    Value note;
    int cashBox = 1;
};

struct Call {
    std::int32_t customer = 0; // index into Shop::customers
    DateTime at;
    const char* said = "";
    Value promisedDay;
    Kurus promised = 0;
};

struct Shop {
    std::vector<Customer> customers; // the system accounts first
    std::vector<Sale> sales;         // in the order of their times and numbers
    std::vector<Payment> payments;   // in the order of their times
    std::vector<StockItem> products; // first the one that the sale screen sells
    std::vector<Group> groups;
    std::vector<const char*> cashBoxes; // the delivered one first
    std::vector<Cheque> cheques;
    std::vector<CashMovement> cashMovements;
    std::vector<Call> calls; // in the order of their times
};

[[nodiscard]] Shop makeShop(const ShopPlan& plan);

[[nodiscard]] inline const Customer& customerOf(const Shop& shop, const Sale& sale) {
    return shop.customers[static_cast<std::size_t>(sale.customer)];
}

// The steps of makeShop, in their order.
void addCustomers(Shop& shop, const ShopPlan& plan);
void addSales(Shop& shop, const ShopPlan& plan);
void addPayments(Shop& shop, const ShopPlan& plan);
void addCalls(Shop& shop, const ShopPlan& plan);

// A day on which the shop is open: a Sunday moves on to the Monday.
[[nodiscard]] DateTime openDay(DateTime day);

} // namespace veldona::hazirla
