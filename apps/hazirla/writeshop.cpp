#include "apps/hazirla/writeshop.h"

#include <algorithm>
#include <stdexcept>
#include <string_view>

#include "apps/hazirla/delivered.h"
#include "apps/hazirla/words.h"
#include "core/delivered.h"
#include "platform/store/engine/bulkload.h"
#include "schema/tables.h"

namespace veldona::hazirla {
namespace {

using store::BulkLoad;

const store::TableDef& table(std::string_view name) {
    const auto& all = schema::tables();
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const store::TableDef& known) { return known.name == name; });
    if (found == all.end()) throw std::logic_error("the delivered schema lacks a table of the sample shop");
    return *found;
}

// The amount as the books keep it: the shown one times a million.
Value stored(Kurus amount) {
    return static_cast<double>(amount) * 10'000;
}

Value cashBoxOf(const Payment& payment) {
    return payment.cashBox == 0 ? Value() : Value(payment.cashBox);
}

// Nothing gives the operator a name, so that the columns that say who wrote a row hold an empty text.
const Value kNobody = "";

void writeCustomers(BulkLoad& load, const Shop& shop) {
    BulkLoad::Rows rows =
        load.into(table("MUSTKAYIT"), {"HSTNO", "AD",       "SOYAD", "YAS",   "DOGTRH", "MEDENIHAL", "MESLEK",
                                       "CINS",  "GURUP_ID", "EVTEL", "ISTEL", "GSM",    "EVMH",      "EVCD",
                                       "EVAPT", "EVILCE",   "EVIL",  "ISMH",  "ISCD",   "UYARI"});
    for (const Customer& customer : shop.customers) {
        rows.add(
            {customer.number,     customer.name,      customer.surname,
             customer.age,        customer.birthDate, customer.maritalStatus,
             customer.occupation, customer.sex,       customer.group == 0 ? Value() : Value(customer.group),
             customer.homePhone,  customer.workPhone, customer.mobile,
             customer.quarter,    customer.street,    customer.building,
             customer.district,   customer.province,  customer.workQuarter,
             customer.workStreet, customer.warning});
    }
}

void writeSaleHeaders(BulkLoad& load, const Shop& shop) {
    BulkLoad::Rows rows = load.into(
        table("ISLEMNOTABLO"), {"MUSTNO", "ISLEMNO", "KEFIL_CARI_ID", "ODEME_TIPI", "KREDI_KARTI",
                                "SATIS_ELEMANI_ID", "INDIRIM", "ACIKLAMA", "TOPBORC", "TRH", "INDIRIM_YTL",
                                "TESLIMAT_TRH", "TESLIM_EDILEN_TRH", "TESLIM_EDILDI", "BANKA_ID"});
    for (const Sale& sale : shop.sales) {
        rows.add({customerOf(shop, sale).number, sale.number, sale.guarantor, "Senet", "", -1, 0, "",
                  stored(sale.total), sale.at, stored(sale.discount), sale.promised,
                  sale.delivered ? Value(sale.at) : Value(), sale.delivered ? 1 : 0, -1});
    }
}

void writeSaleLines(BulkLoad& load, const Shop& shop) {
    BulkLoad::Rows rows =
        load.into(table("URUNAL"),
                  {"MUSTNO", "ISLEMNO", "URKOD", "ADET", "TRH", "FIYAT", "ACIKLAMA", "KDV", "KDV_DAHIL_HARIC",
                   "KONTROL_KIM", "KONTROL_NE_ZAMAN", "TESLIM_EDILDI", "DEPO_ID", "SATIS_ELEMANI_ID"});
    for (const Sale& sale : shop.sales) {
        for (const Line& line : sale.lines) {
            rows.add({customerOf(shop, sale).number, sale.number,
                      shop.products[static_cast<std::size_t>(line.product)].code, line.quantity, sale.at,
                      stored(line.price), line.note, 0, 1, kNobody, sale.at, sale.delivered ? 1 : 0, -1, -1});
        }
    }
}

void writeSchedule(BulkLoad& load, const Shop& shop) {
    BulkLoad::Rows rows = load.into(table("URUNSAT"), {"MUSTNO", "ISLEMNO", "ODTRH", "ODMIKTAR",
                                                       "KONTROL_KIM", "KONTROL_NE_ZAMAN", "PESINAT"});
    for (const Sale& sale : shop.sales) {
        for (const Due& due : sale.schedule) {
            rows.add({customerOf(shop, sale).number, sale.number, due.on, stored(due.amount), kNobody,
                      sale.at, due.downPayment ? 1 : 0});
        }
    }
}

void writePayments(BulkLoad& load, const Shop& shop) {
    BulkLoad::Rows rows = load.into(table("TAKSITODENEN"), {"MUSTNO", "ISLEMNO", "ODTRH", "ODMIKTAR",
                                                            "KONTROL_KIM", "KONTROL_NE_ZAMAN", "KASA_ID"});
    for (const Payment& payment : shop.payments) {
        const Sale& sale = shop.sales[static_cast<std::size_t>(payment.sale)];
        rows.add({customerOf(shop, sale).number, sale.number, payment.at, stored(payment.amount), kNobody,
                  payment.at, cashBoxOf(payment)});
    }
}

void writeProducts(BulkLoad& load, const Shop& shop) {
    BulkLoad::Rows products = load.into(table("URUNTANITIM"), {"URKOD", "URUNCINS", "BIRIM", "SATIS_FIYAT1",
                                                               "SATIS_FIYAT1_KDV_DAHIL", "KDV",
                                                               "TOPLAM_ALINAN", "TOPLAM_SATILAN", "KALAN"});
    BulkLoad::Rows purchases = load.into(table("T_STOK_GRIS_CIKIS_DETAY"), {"URKOD", "MIKTAR"});
    for (std::size_t i = 1; i < shop.products.size(); ++i) {
        const StockItem& item = shop.products[i];
        products.add({item.code, item.name, "Adet", stored(item.price), 1, 0, item.bought, item.sold,
                      item.bought - item.sold});
        const int early = item.bought / 3;
        for (const int quantity : {early, item.bought - early})
            if (quantity > 0) purchases.add({item.code, quantity});
    }
}

void writeLookUps(BulkLoad& load, const Shop& shop) {
    BulkLoad::Rows groups = load.into(table("GRUPLAR"), {"GRUP_ADI", "GRUP_KOD"});
    for (const Group& group : shop.groups)
        groups.add({group.name, group.code});
    BulkLoad::Rows boxes = load.into(table("T_KASA_TANITIM"), {"KASA_NO", "KASA_ADI"});
    for (std::size_t i = 1; i < shop.cashBoxes.size(); ++i)
        boxes.add({std::to_string(i + 1), shop.cashBoxes[i]});
    const auto writeNames = [&](const char* name, const char* column, std::span<const char* const> names) {
        BulkLoad::Rows rows = load.into(table(name), {"NO", column});
        for (std::size_t i = 0; i < names.size(); ++i)
            rows.add({static_cast<int>(i) + 1, names[i]});
    };
    writeNames("ADRES", "MAHALLE", quarters());
    writeNames("ADRESSOK", "SK", streets());
}

void writeDesk(BulkLoad& load, const Shop& shop) {
    BulkLoad::Rows cheques = load.into(table("ALINANCEK"), {"FIRMANO", "TUTAR", "CARI_HESAP_ISLE"});
    for (const Cheque& cheque : shop.cheques)
        cheques.add({cheque.customer, stored(cheque.amount), cheque.booked ? "1" : "0"});
    BulkLoad::Rows movements =
        load.into(table("T_KASA_HAREKETLERI"), {"ISLEM_ID", "CARI_ID", "TARIH", "ALACAK_TUTAR", "ISLEM_TUR",
                                                "ACIKLAMA", "KASA_ID", "KONTROL_KIM"});
    for (const CashMovement& movement : shop.cashMovements) {
        movements.add({movement.kind, movement.customerId, movement.on, stored(movement.amount),
                       movement.kind == 2 ? "Cari Ödeme" : "Cari Tahsilat", movement.note, movement.cashBox,
                       kNobody});
    }
}

void writeCalls(BulkLoad& load, const Shop& shop) {
    BulkLoad::Rows rows = load.into(table("ARAMA_NOTU"), {"MUSTNO", "TRH", "ACIKLAMA", "SOZ_TRH", "SOZ_TUTAR",
                                                          "KONTROL_KIM", "KONTROL_NE_ZAMAN"});
    for (const Call& call : shop.calls) {
        rows.add({shop.customers[static_cast<std::size_t>(call.customer)].number, call.at, call.said,
                  call.promisedDay, call.promised == 0 ? Value() : stored(call.promised), kNobody, call.at});
    }
}

void describeFirstRows(const std::string& file, const StockItem& saleProduct) {
    const std::string sold = std::to_string(saleProduct.sold);
    runStatements(file, {"UPDATE FIRMABILGISI SET DEGER='1', GIRIS='Örnek Mobilya', "
                         "FIRMA='Örnek Mobilya ve Beyaz Eşya Ticaret', YETKILI1_AD='Ömer Örnek', "
                         "ADRES='Cumhuriyet Mah. Atatürk Cd. No: 1 Düzce', TELEFON='0380 500 00 00', "
                         "FAX1='0380 500 00 01', GSM='0500 000 00 00', WEB='www.ornek.example', "
                         "MAIL='bilgi@ornek.example'",
                         "UPDATE URUNTANITIM SET BIRIM='Adet', KDV=0, TOPLAM_ALINAN=0, TOPLAM_SATILAN=" +
                             sold + ", KALAN=0-" + sold + " WHERE URKOD='1'"});
}

} // namespace

void writeShop(const std::string& file, const Shop& shop) {
    describeFirstRows(file, shop.products.front());
    BulkLoad load(file, kDeliveredPassword);
    writeLookUps(load, shop);
    writeProducts(load, shop);
    writeCustomers(load, shop);
    writeSaleHeaders(load, shop);
    writeSaleLines(load, shop);
    writeSchedule(load, shop);
    writePayments(load, shop);
    writeDesk(load, shop);
    writeCalls(load, shop);
    load.finish();
}

} // namespace veldona::hazirla
