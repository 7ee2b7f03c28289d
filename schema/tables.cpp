#include "schema/tables.h"

#include <initializer_list>
#include <string>

namespace veldona::schema {

namespace {

using store::ColumnDef;
using store::TableDef;
using enum store::ColumnType;

using Names = std::initializer_list<const char*>;
using Indexes = std::vector<std::vector<std::string>>;

std::vector<ColumnDef> counted(std::vector<ColumnDef> columns) {
    columns.insert(columns.begin(), {"ID", Counter});
    return columns;
}

std::vector<ColumnDef> texts(Names names) {
    std::vector<ColumnDef> columns;
    for (const char* name : names)
        columns.push_back({name, Text});
    return columns;
}

std::vector<ColumnDef> operator+(std::vector<ColumnDef> first, const std::vector<ColumnDef>& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

const std::vector<ColumnDef> audit = {{"KONTROL_KIM", Text}, {"KONTROL_NE_ZAMAN", Date}};

TableDef journaled(TableDef table) {
    table.isJournaled = true;
    return table;
}

TableDef customers() {
    return {"MUSTKAYIT",
            counted(texts({"HSTNO", "AD", "SOYAD", "BARKOD_KODU", "YAS"}) +
                    std::vector<ColumnDef>{{"DOGTRH", Date}} +
                    texts({"MEDENIHAL", "MESLEK", "CINS", "VERGIDAIRE", "VERGIDAIRENO"}) +
                    std::vector<ColumnDef>{{"GURUP_ID", Whole}} +
                    texts({"EVTEL", "EVTEL2", "ISTEL", "GSM",        "FAX",       "EVMH",    "EVCD",
                           "EVAPT", "EVILCE", "EVIL",  "EVPOSTAKOD", "SEMT",      "ISMH",    "ISCD",
                           "ISAPT", "ISILCE", "ISIL",  "ISPOSTAKOD", "OZEL_KOD1", "RESIM_AD"}) +
                    std::vector<ColumnDef>{{"UYARI", Memo}}),
            {{"HSTNO"}, {"AD", "SOYAD"}, {"SOYAD"}, {"BARKOD_KODU"}}};
}

TableDef saleHeaders() {
    return {"ISLEMNOTABLO",
            counted(std::vector<ColumnDef>{{"MUSTNO", Text},
                                           {"ISLEMNO", Whole},
                                           {"KEFIL_CARI_ID", Whole},
                                           {"ODEME_TIPI", Text},
                                           {"KREDI_KARTI", Text},
                                           {"SATIS_ELEMANI_ID", Whole},
                                           {"INDIRIM", Number},
                                           {"ACIKLAMA", Memo},
                                           {"TOPBORC", Number},
                                           {"TRH", Date},
                                           {"INDIRIM_YTL", Number},
                                           {"TESLIMAT_TRH", Date},
                                           {"TESLIM_EDILEN_TRH", Date},
                                           {"TESLIM_EDILDI", Small},
                                           {"BANKA_ID", Whole}} +
                    audit),
            {{"MUSTNO"}, {"INDIRIM_YTL", "ISLEMNO"}}, // few sales have a discount
            {"ISLEMNO"}};
}

TableDef saleLines() {
    return {"URUNAL",
            counted(std::vector<ColumnDef>{{"MUSTNO", Text},
                                           {"ISLEMNO", Whole},
                                           {"URKOD", Text},
                                           {"ADET", Number},
                                           {"TRH", Date},
                                           {"FIYAT", Number},
                                           {"ACIKLAMA", Memo},
                                           {"KDV", Whole},
                                           {"KDV_DAHIL_HARIC", Small},
                                           {"TESLIM_EDILDI", Small},
                                           {"DEPO_ID", Whole},
                                           {"SATIS_ELEMANI_ID", Whole}} +
                    audit),
            {{"MUSTNO", "ISLEMNO"}, {"ISLEMNO"}}};
}

// The two tables that every balance and report adds up. The long indexes hold all that the sums need, so that
// a report over ten years reads no row at all.
TableDef schedule() {
    return {"URUNSAT",
            counted(std::vector<ColumnDef>{{"MUSTNO", Text},
                                           {"ISLEMNO", Whole},
                                           {"ODTRH", Date},
                                           {"ODMIKTAR", Number},
                                           {"PESINAT", Small, 0}} + // 1 is a down payment
                    audit),
            {{"MUSTNO", "ISLEMNO", "ODTRH", "ODMIKTAR"}, {"ISLEMNO", "ODTRH"}, {"ODTRH"}}};
}

TableDef payments() {
    return {"TAKSITODENEN",
            counted(std::vector<ColumnDef>{{"MUSTNO", Text},
                                           {"ISLEMNO", Whole},
                                           {"ODTRH", Date},
                                           {"ODMIKTAR", Number},
                                           {"KASA_ID", Whole}} +
                    audit),
            {{"MUSTNO", "ISLEMNO", "ODTRH", "ODMIKTAR"}, {"ISLEMNO", "ODTRH"}, {"ODTRH"}}};
}

// What was said on the telephone, and what was promised: the call list's own table.
TableDef callNotes() {
    return {"ARAMA_NOTU",
            counted(std::vector<ColumnDef>{{"MUSTNO", Text},
                                           {"TRH", Date},
                                           {"ACIKLAMA", Memo},
                                           {"SOZ_TRH", Date},
                                           {"SOZ_TUTAR", Number}} +
                    audit),
            {{"MUSTNO", "TRH"}}};
}

// Who changed what: written by the engine along with each write to a journaled table, and by nobody else. The
// columns from PROGRAM to ADIM stand in the first entry of an act alone. ESKI and YENI hold a row as a JSON
// object; of a change ID and what is other. OZET ties each entry to the one before it.
TableDef journal() {
    return {
        "GUNLUK",
        counted(std::vector<ColumnDef>{{"ISLEM", Text}, {"AN", Date}} +
                texts({"PROGRAM", "MAKINE", "KULLANICI", "EKRAN", "ADIM", "TABLO", "TUR"}) +
                std::vector<ColumnDef>{{"ANAHTAR", Whole}, {"ESKI", Memo}, {"YENI", Memo}, {"OZET", Text}}),
        {}};
}

TableDef products() {
    return {"URUNTANITIM",
            counted({{"URKOD", Text},
                     {"URUNCINS", Text},
                     {"BARKOD_KODU", Text},
                     {"BIRIM", Text},
                     {"SATIS_FIYAT1", Number},
                     {"SATIS_FIYAT1_KDV_DAHIL", Small},
                     {"KDV", Whole},
                     {"TOPLAM_ALINAN", Whole},
                     {"TOPLAM_SATILAN", Whole},
                     {"KALAN", Whole}}),
            {{"URKOD"}}};
}

std::vector<TableDef> scratch() {
    const std::vector<ColumnDef> sale = {{"MUSTNO", Text}, {"ISLEMNO", Whole}, {"ODTRH", Date}};
    return {
        {"GUNUGECENODM",
         counted(sale + std::vector<ColumnDef>{{"MIN_ODTRH", Date}, {"KALAN", Number}, {"AD_SOYAD", Text}}),
         {}},
        {"BEKLENENODM", counted(sale + std::vector<ColumnDef>{{"KALAN", Number}}), {}},
        {"T_TEMP_GENEL",
         counted(texts({"ALAN_1", "ALAN_2", "ALAN_4", "ALAN_5", "ALAN_6", "ALAN_7", "ALAN_8", "ACIKLAMA_1",
                        "ACIKLAMA_2", "ACIKLAMA_3", "ACIKLAMA_4"}) +
                 std::vector<ColumnDef>{{"ID_1", Whole},
                                        {"SAYI_1", Number},
                                        {"SAYI_2", Number},
                                        {"SAYI_3", Number},
                                        {"SAYI_4", Number},
                                        {"TARIH_1", Date},
                                        {"DENEME", Text}}),
         {}}};
}

std::vector<TableDef> smallTables() {
    return {
        journaled({"T_KASA_TANITIM", counted(texts({"KASA_NO", "KASA_ADI"})), {}}),
        journaled({"T_KASA_HAREKETLERI",
                   counted(std::vector<ColumnDef>{{"ISLEM_ID", Whole},
                                                  {"CARI_ID", Whole},
                                                  {"TARIH", Date},
                                                  {"ALACAK_TUTAR", Number},
                                                  {"ISLEM_TUR", Text},
                                                  {"ACIKLAMA", Memo},
                                                  {"KASA_ID", Whole},
                                                  {"KONTROL_KIM", Text}}),
                   {{"CARI_ID"}, {"TARIH"}}}),
        {"GRUPLAR", counted(texts({"GRUP_ADI", "GRUP_KOD"})), {}},
        {"ADRES", counted(std::vector<ColumnDef>{{"NO", Whole}, {"MAHALLE", Text}}), {}},
        {"ADRESSOK", counted(std::vector<ColumnDef>{{"NO", Whole}, {"SK", Text}}), {}},
        journaled({"FIRMABILGISI",
                   counted(texts({"DEGER", "GIRIS", "FIRMA", "YETKILI1_AD", "ADRES", "TELEFON", "FAX1",
                                  "FAX2", "GSM", "GSM2", "WEB", "MAIL"})),
                   {}}),
        {"TAKSITALINAN",
         counted({{"MUSTNO", Text}, {"ISLEMNO", Whole}, {"ODTRH", Date}, {"ODMIKTAR", Number}}),
         {}},
        {"T_STOK_GRIS_CIKIS_DETAY", counted({{"URKOD", Text}, {"MIKTAR", Whole}}), {{"URKOD"}}},
        {"FATURA_DETAY", counted({{"URKOD", Text}, {"MIKTAR", Whole}, {"ALIS_SATIS", Small}}), {{"URKOD"}}},
        {"ALINANCEK",
         counted({{"FIRMANO", Text}, {"TUTAR", Number}, {"CARI_HESAP_ISLE", Text}}),
         {{"FIRMANO"}}},
    };
}

} // namespace

const std::vector<TableDef>& tables() {
    static const std::vector<TableDef> all = [] {
        std::vector<TableDef> made;
        for (TableDef (*table)() :
             {customers, saleHeaders, saleLines, schedule, payments, products, callNotes})
            made.push_back(journaled(table()));
        made.push_back(journal());
        for (TableDef& table : smallTables())
            made.push_back(std::move(table));
        return made;
    }();
    return all;
}

const std::vector<store::TableDef>& scratchTables() {
    static const std::vector<TableDef> all = scratch();
    return all;
}

// UNVAN is the customer's name and surname with a blank between them. A payment whose customer is gone stays
// in the income list without a name: the money did come in.
const std::vector<store::SavedQueryDef>& savedQueries() {
    static const std::vector<store::SavedQueryDef> all = {
        {"S_TAKSITODENEN",
         "SELECT (MUSTKAYIT.AD & ' ' & MUSTKAYIT.SOYAD) AS UNVAN, TAKSITODENEN.ODTRH, TAKSITODENEN.ODMIKTAR, "
         "TAKSITODENEN.KONTROL_KIM, TAKSITODENEN.KASA_ID "
         "FROM TAKSITODENEN LEFT JOIN MUSTKAYIT ON TAKSITODENEN.MUSTNO = MUSTKAYIT.HSTNO"},
        {"S_T_KASA_HAREKETLERI",
         "SELECT (MUSTKAYIT.AD & ' ' & MUSTKAYIT.SOYAD) AS UNVAN, T_KASA_HAREKETLERI.TARIH, "
         "T_KASA_HAREKETLERI.ALACAK_TUTAR, T_KASA_HAREKETLERI.ISLEM_TUR, T_KASA_HAREKETLERI.ACIKLAMA, "
         "T_KASA_HAREKETLERI.KONTROL_KIM, T_KASA_HAREKETLERI.KASA_ID, T_KASA_HAREKETLERI.ISLEM_ID "
         "FROM T_KASA_HAREKETLERI LEFT JOIN MUSTKAYIT ON T_KASA_HAREKETLERI.CARI_ID = MUSTKAYIT.ID"},
    };
    return all;
}

const store::Delivered& delivered() {
    static const store::Delivered all{tables(), savedQueries(), scratchTables()};
    return all;
}

const std::vector<const char*>& firstRows() {
    static const std::vector<const char*> all = {
        "INSERT INTO FIRMABILGISI (DEGER) VALUES ('1')",
        "INSERT INTO URUNTANITIM (URKOD,URUNCINS,TOPLAM_ALINAN,TOPLAM_SATILAN,KALAN) VALUES "
        "('1','Ürün',0,0,0)",
        "INSERT INTO T_KASA_TANITIM (KASA_NO,KASA_ADI) VALUES ('1','Merkez')",
    };
    return all;
}

} // namespace veldona::schema
