#include "journal/captions.h"

#include <map>
#include <set>

#include "core/money.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/storedamount.h"
#include "platform/store/dialect/literal.h"

namespace veldona::journal {

namespace {

using Captions = std::map<std::string, const char*, std::less<>>;

// Where a column is called otherwise than in the other tables, or is in one alone.
const std::map<std::string, Captions, std::less<>> kOfTables = {
    {"MUSTKAYIT",
     {{"HSTNO", "Müşteri No"},
      {"AD", "Adı"},
      {"SOYAD", "Soyadı"},
      {"BARKOD_KODU", "Barkod"},
      {"YAS", "Yaşı"},
      {"DOGTRH", "Doğum Tarihi"},
      {"MEDENIHAL", "Medeni Hali"},
      {"MESLEK", "Mesleği"},
      {"CINS", "Cinsiyeti"},
      {"VERGIDAIRE", "Vergi Dairesi"},
      {"VERGIDAIRENO", "Vergi No"},
      {"GURUP_ID", "Grup"},
      {"EVTEL", "Ev Telefonu 1"},
      {"EVTEL2", "Ev Telefonu 2"},
      {"ISTEL", "İş Telefonu"},
      {"FAX", "Faks"},
      {"EVMH", "Ev: Mahalle"},
      {"EVCD", "Ev: Cd / Sk"},
      {"EVAPT", "Ev: Apt. / No"},
      {"EVILCE", "Ev: İlçe"},
      {"EVIL", "Ev: İl"},
      {"EVPOSTAKOD", "Ev: Posta Kodu"},
      {"ISMH", "İş: Mahalle"},
      {"ISCD", "İş: Cd / Sk"},
      {"ISAPT", "İş: Apt. / No"},
      {"ISILCE", "İş: İlçe"},
      {"ISIL", "İş: İl"},
      {"ISPOSTAKOD", "İş: Posta Kodu"},
      {"SEMT", "Semt"},
      {"OZEL_KOD1", "Özel Kod"},
      {"RESIM_AD", "Resim"},
      {"UYARI", "Uyarı"}}},
    {"ISLEMNOTABLO",
     {{"TOPBORC", "Toplam Borç"},
      {"ODEME_TIPI", "Ödeme Tipi"},
      {"KREDI_KARTI", "Kredi Kartı"},
      {"KEFIL_CARI_ID", "Kefil"},
      {"INDIRIM", "İndirim Oranı"},
      {"INDIRIM_YTL", "İndirim"},
      {"TESLIMAT_TRH", "Teslim Edilecek Gün"},
      {"TESLIM_EDILEN_TRH", "Teslim Edilen Gün"},
      {"BANKA_ID", "Banka"},
      {"TRH", "Satış Tarihi"}}},
    {"URUNAL",
     {{"URKOD", "Ürün"},
      {"ADET", "Adet"},
      {"FIYAT", "Fiyat"},
      {"KDV_DAHIL_HARIC", "KDV Dahil"},
      {"DEPO_ID", "Depo"},
      {"TRH", "Satış Tarihi"}}},
    {"URUNSAT", {{"ODTRH", "Vade"}, {"ODMIKTAR", "Taksit"}, {"PESINAT", "Peşinat"}}},
    {"TAKSITODENEN", {{"ODTRH", "Ödeme Günü"}, {"ODMIKTAR", "Ödenen"}}},
    {"ARAMA_NOTU",
     {{"TRH", "Görüşme"},
      {"ACIKLAMA", "Söylenen"},
      {"SOZ_TRH", "Söz Verilen Gün"},
      {"SOZ_TUTAR", "Söz Verilen Tutar"}}},
    {"URUNTANITIM",
     {{"URKOD", "Ürün Kodu"},
      {"URUNCINS", "Ürün"},
      {"BIRIM", "Birim"},
      {"SATIS_FIYAT1", "Satış Fiyatı"},
      {"SATIS_FIYAT1_KDV_DAHIL", "KDV Dahil"},
      {"TOPLAM_ALINAN", "Alınan"},
      {"TOPLAM_SATILAN", "Satılan"},
      {"KALAN", "Kalan"}}},
    {"T_KASA_TANITIM", {{"KASA_NO", "Kasa No"}, {"KASA_ADI", "Kasa Adı"}}},
    {"T_KASA_HAREKETLERI",
     {{"ISLEM_ID", "İşlem"},
      {"CARI_ID", "Müşteri"},
      {"TARIH", "Tarih"},
      {"ALACAK_TUTAR", "Tutar"},
      {"ISLEM_TUR", "Tür"}}},
    {"FIRMABILGISI",
     {{"FIRMA", "Firma"},
      {"YETKILI1_AD", "Yetkili"},
      {"ADRES", "Adres"},
      {"TELEFON", "Telefon"},
      {"FAX1", "Faks"},
      {"GSM2", "GSM 2"},
      {"WEB", "Web"},
      {"MAIL", "E-posta"}}},
};

const Captions kOfAll = {{"ID", "Kayıt No"},
                         {"MUSTNO", "Müşteri No"},
                         {"ISLEMNO", "Satış No"},
                         {"ACIKLAMA", "Açıklama"},
                         {"TESLIM_EDILDI", "Teslim Edildi"},
                         {"SATIS_ELEMANI_ID", "Satış Elemanı"},
                         {"BARKOD_KODU", "Barkod"},
                         {"KASA_ID", "Kasa"},
                         {"KONTROL_KIM", "Yazan"},
                         {"KONTROL_NE_ZAMAN", "Yazıldığı Zaman"}};

const std::set<std::string, std::less<>> kAmounts = {"TOPBORC",   "INDIRIM_YTL",  "FIYAT",       "ODMIKTAR",
                                                     "SOZ_TUTAR", "SATIS_FIYAT1", "ALACAK_TUTAR"};

} // namespace

std::string captionOf(const std::string& table, const std::string& column) {
    if (const auto own = kOfTables.find(table); own != kOfTables.end())
        if (const auto found = own->second.find(column); found != own->second.end()) return found->second;
    const auto found = kOfAll.find(column);
    return found == kOfAll.end() ? column : found->second;
}

std::string shownAmount(double column) {
    return format(StoredAmount::ofColumn(column).roundedToKurus().working(), kMoneyMask);
}

std::string shownIn(const std::string& column, const Value& stored) {
    if (stored.isNull()) return "—";
    if (stored.kind() == Value::Kind::Double && kAmounts.contains(column))
        return shownAmount(stored.get<double>());
    if (stored.isText())
        if (const auto date = store::dateOfStored(stored.get<std::string>()))
            return format(*date, date->hasTime() ? "dd/mm/yyyy hh:mm:ss" : "dd/mm/yyyy");
    const std::string text = joinText(stored);
    return text.empty() ? "boş" : text;
}

std::string shownDay(const std::string& stored) {
    if (stored.size() < 10) return stored;
    return stored.substr(8, 2) + '/' + stored.substr(5, 2) + '/' + stored.substr(0, 4);
}

} // namespace veldona::journal
