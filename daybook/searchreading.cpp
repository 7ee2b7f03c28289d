#include "daybook/searchreading.h"

#include <unordered_map>

#include "core/database.h"
#include "core/session.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

constexpr const char* kOnlyProduct = "1"; // of a sale entered as one amount: its name says nothing

RecordsetPtr opened(Session& session, const char* sql) {
    RecordsetPtr rs;
    KayitSetiAc(session, rs, sql, adodb::CursorLocation::Client);
    return rs;
}

std::string textAt(const adodb::Recordset& rs, int row, int column) {
    return trim(joinText(rs.at(row, column)));
}

// The reserved accounts are no customers.
std::vector<SearchIndex::Customer> readCustomers(Session& session) {
    constexpr int kFirstTelephone = 3;
    const RecordsetPtr rs = opened(session, "SELECT HSTNO,AD,SOYAD,EVTEL,GSM,ISTEL,EVTEL2 FROM MUSTKAYIT "
                                            "WHERE HSTNO NOT IN ('G3','G4','TI') ORDER BY AD,SOYAD");
    std::vector<SearchIndex::Customer> customers;
    customers.reserve(static_cast<std::size_t>(rs->recordCount()));
    for (int row = 0; row < rs->recordCount(); ++row) {
        SearchIndex::Customer& customer = customers.emplace_back();
        customer.number = textAt(*rs, row, 0);
        customer.name = trim(textAt(*rs, row, 1) + " " + textAt(*rs, row, 2));
        for (int column = kFirstTelephone; column < rs->fieldCount(); ++column)
            if (std::string telephone = textAt(*rs, row, column); !telephone.empty())
                customer.telephones.push_back(std::move(telephone));
    }
    return customers;
}

std::unordered_map<std::string, std::string> readProducts(Session& session) {
    const RecordsetPtr rs = opened(session, "SELECT URKOD,URUNCINS FROM URUNTANITIM");
    std::unordered_map<std::string, std::string> names;
    for (int row = 0; row < rs->recordCount(); ++row)
        if (std::string code = textAt(*rs, row, 0); code != kOnlyProduct)
            names.emplace(std::move(code), textAt(*rs, row, 1));
    return names;
}

void addGoods(std::string& goods, const std::string& words) {
    if (words.empty()) return;
    if (!goods.empty()) goods += ", ";
    goods += words;
}

// A sale without a line, or of nobody's account, is one that the main screen cannot show either.
std::vector<SearchIndex::Sale> readSales(Session& session,
                                         const std::vector<SearchIndex::Customer>& customers) {
    std::unordered_map<std::string_view, std::size_t> accounts;
    for (std::size_t i = 0; i < customers.size(); ++i)
        accounts.emplace(customers[i].number, i);
    const auto products = readProducts(session);
    const RecordsetPtr rs = opened(session, "SELECT ISLEMNO,MUSTNO,URKOD,TRH,ACIKLAMA FROM URUNAL");
    std::vector<SearchIndex::Sale> sales;
    sales.reserve(static_cast<std::size_t>(rs->recordCount()));
    std::unordered_map<std::int64_t, std::size_t> places; // of a sale among them, by its number
    places.reserve(sales.capacity());
    for (int row = 0; row < rs->recordCount(); ++row) {
        const auto account = accounts.find(textAt(*rs, row, 1));
        if (account == accounts.end() || rs->at(row, 0).isNull()) continue;
        const std::int64_t number = toLong(rs->at(row, 0));
        const auto [place, isNew] = places.emplace(number, sales.size());
        if (isNew) sales.push_back({number, account->second, rs->at(row, 3), {}});
        SearchIndex::Sale& sale = sales[place->second];
        addGoods(sale.goods, textAt(*rs, row, 4));
        if (const auto product = products.find(textAt(*rs, row, 2)); product != products.end())
            addGoods(sale.goods, product->second);
    }
    return sales;
}

} // namespace

const SearchIndex& SearchMemory::index(Session& session) {
    const bool isNewCustomers = customers_.hasChanged(*session.gBaglanti) || !isWhole_;
    const bool isNewSales = sales_.hasChanged(*session.gBaglanti) || isNewCustomers;
    isWhole_ = false;
    if (isNewCustomers) index_.setCustomers(readCustomers(session));
    if (isNewSales) index_.setSales(readSales(session, index_.customers()));
    isWhole_ = true;
    return index_;
}

} // namespace veldona
