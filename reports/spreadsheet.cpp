#include "reports/spreadsheet.h"

#include <filesystem>
#include <map>
#include <optional>

#include "core/database.h"
#include "core/exportfolders.h"
#include "core/money.h"
#include "platform/export/spreadsheet.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "reports/unpaidmonths.h"

namespace veldona {

namespace {

constexpr exports::CellStyle kBaslik{.bold = true, .size = 14};
constexpr exports::CellStyle kSutunBasligi{.bold = true, .underline = true, .size = 12};
constexpr exports::CellStyle kToplamYazisi{.bold = true, .size = 12, .rgb = 0x0000C0}; // dark blue
constexpr exports::CellStyle kToplam{.bold = true, .size = 12};
constexpr int kIlkSatir = 5;
constexpr int kBosKutuluSatis = 369; // shows an empty box; the shop knows why

struct Satis {
    std::int32_t ISLEMNO;
    StoredAmount TOPBORC;
};

struct Musteri {
    std::string MUSTNO, AD, SOYAD;
};

std::vector<Satis> satislariOku(Session& session) {
    dao::Database db = session.dbEngine.openDatabase(session.gVeritabaniYolu, session.connectText());
    dao::Recordset rs = db.openRecordset("SELECT  ISLEMNO,TOPBORC From ISLEMNOTABLO  ");
    std::vector<Satis> satislar;
    std::map<std::int32_t, StoredAmount> ilkBorc; // a number that stands twice has the debt of its first row
    for (; !rs.eof(); rs.moveNext()) {
        const Value borc = rs.value("TOPBORC");
        const std::int32_t no = toLong(rs.value("ISLEMNO"));
        const auto debt = ilkBorc.try_emplace(no, storedIn(borc).value_or(StoredAmount{})).first;
        satislar.push_back({no, debt->second});
    }
    return satislar;
}

class ExcelListesi {
public:
    explicit ExcelListesi(RaporAraligi& aralik)
        : aralik_(aralik), session_(aralik.session), baslik_(aralik.form.caption()),
          dosya_(aktarimDosyasi(session_, "MSExcel",
                                "Odemeler " + format(session_.desktop.clock.now(), "yyyy-mm-dd hh.mm.ss"),
                                ".xlsx")),
          tablo_(dosya_) {}

    // The file's path, or nothing where the operator left.
    std::optional<std::string> yaz();

private:
    void basliklar();
    void satis(const Satis& satis, const SatisHareketleri& taksit, const SatisHareketleri& odenen);
    [[nodiscard]] std::optional<Musteri> musteriBul(std::int32_t islemNo);
    void satirYaz(const Musteri& musteri, std::int32_t islemNo, const AcikAy& ay);
    void toplamYaz();
    // Shows how far it is and lets events run; false where the screen is gone.
    [[nodiscard]] bool devam(double yapilan, double toplam);

    RaporAraligi& aralik_;
    Session& session_;
    std::string baslik_; // the screen's caption
    std::string dosya_;
    exports::Spreadsheet tablo_;
    DateTime sinir_;
    float ToplamKalan = 0;
    std::int16_t SatirNo = kIlkSatir;
};

bool ExcelListesi::devam(double yapilan, double toplam) {
    aralik_.form.setCaption(baslik_ + "  % " + format(100 * yapilan / std::max(toplam, 1.0), "0"));
    session_.desktop.events.doEvents();
    return !aralik_.form.isUnloaded();
}

void ExcelListesi::basliklar() {
    tablo_.write("C1", "GÜNÜ GEÇEN ÖDEMELER", kBaslik);
    const char* const sutunlar[] = {"Müşteri No", "Ad", "Soyad", "İşlem No", "Ödeme Trh", "Kalan"};
    const double genislikler[] = {12, 14, 14, 10, 12, 21};
    for (int i = 0; i < 6; ++i) {
        tablo_.write(3, i, sutunlar[i], kSutunBasligi);
        tablo_.setWidth(static_cast<char>('A' + i), genislikler[i]);
    }
}

std::optional<Musteri> ExcelListesi::musteriBul(std::int32_t islemNo) {
    KayitSeti rs;
    KayitSetiAc(session_, rs,
                "SELECT TOP 1 MUSTKAYIT.AD,MUSTKAYIT.SOYAD,  URUNSAT.MUSTNO     From URUNSAT, MUSTKAYIT "
                "Where URUNSAT.MUSTNO = MUSTKAYIT.HSTNO And urunsat.ISLEMNO = " +
                    std::to_string(islemNo) + " And  URUNSAT.ODTRH <=  " + TarihSabiti(sinir_) +
                    " ORDER BY URUNSAT.ID",
                adodb::CursorLocation::Client);
    if (rs->eof()) return std::nullopt;
    return Musteri{joinText(rs->value("MUSTNO")), joinText(rs->value("AD")), joinText(rs->value("SOYAD"))};
}

void ExcelListesi::satirYaz(const Musteri& musteri, std::int32_t islemNo, const AcikAy& ay) {
    const int satir = SatirNo - 1;
    tablo_.write(satir, 0, musteri.MUSTNO);
    tablo_.write(satir, 1, musteri.AD);
    tablo_.write(satir, 2, musteri.SOYAD);
    tablo_.write(satir, 3, islemNo);
    tablo_.write(satir, 4, ay.ODTRH);
    tablo_.write(satir, 5, ay.kalan.column());
    ToplamKalan = static_cast<float>(static_cast<double>(ToplamKalan) + ay.kalan.column());
    SatirNo = toInteger(SatirNo + 1);
}

void ExcelListesi::satis(const Satis& satis, const SatisHareketleri& taksit, const SatisHareketleri& odenen) {
    const auto odemeler = odenen.satisin(satis.ISLEMNO);
    if (tamamenOdenmis(satis.TOPBORC, odemeler)) return;
    const std::vector<AcikAy> aylar = acikAylar(taksit.satisin(satis.ISLEMNO), odemeler);
    if (aylar.empty()) return;
    const auto musteri = musteriBul(satis.ISLEMNO);
    for (const AcikAy& ay : aylar)
        if (musteri) satirYaz(*musteri, satis.ISLEMNO, ay);
}

void ExcelListesi::toplamYaz() {
    const std::string satir = std::to_string(SatirNo + 1);
    tablo_.write("E" + satir, "TOPLAM =", kToplamYazisi);
    tablo_.write("F" + satir, format(static_cast<double>(ToplamKalan), "###,###,###"), kToplam);
}

std::optional<std::string> ExcelListesi::yaz() {
    constexpr int okumaPayi = 40; // of the hundred steps that the caption counts
    const std::vector<Satis> satislar = satislariOku(session_);
    sinir_ = toDate(aralik_.DTPicker2.value());
    basliklar();
    std::vector<std::int32_t> numaralar;
    for (const Satis& each : satislar)
        numaralar.push_back(each.ISLEMNO);
    const SatisHareketleri taksit(session_, "URUNSAT", numaralar, [&] { return devam(okumaPayi / 2, 100); });
    if (!taksit.isComplete()) return std::nullopt;
    const SatisHareketleri odenen(session_, "TAKSITODENEN", numaralar, [&] { return devam(okumaPayi, 100); });
    if (!odenen.isComplete()) return std::nullopt;
    for (std::size_t i = 0; i < satislar.size(); ++i) {
        const auto yapilan = static_cast<double>(i) / static_cast<double>(satislar.size());
        if (i % 200 == 0 && !devam(okumaPayi + yapilan * (100 - okumaPayi), 100)) return std::nullopt;
        if (satislar[i].ISLEMNO == kBosKutuluSatis) session_.desktop.dialogs.tell("");
        satis(satislar[i], taksit, odenen);
    }
    toplamYaz();
    tablo_.close();
    return dosya_;
}

// While the list is being made its button takes no second click, and the screen is put back in any case.
class Yaziliyor {
public:
    explicit Yaziliyor(RaporAraligi& aralik)
        : aralik_(aralik), hold_(aralik.session.forms), baslik_(aralik.form.caption()) {
        aralik_.excelYaziliyor = true;
        aralik_.form.setPointer(MousePointer::Wait);
    }
    ~Yaziliyor() {
        aralik_.excelYaziliyor = false;
        aralik_.form.setPointer(MousePointer::Default);
        aralik_.form.setCaption(baslik_);
    }
    Yaziliyor(const Yaziliyor&) = delete;
    Yaziliyor& operator=(const Yaziliyor&) = delete;

private:
    RaporAraligi& aralik_;
    Forms::Hold hold_;
    std::string baslik_;
};

} // namespace

void cmdExcel_Click(RaporAraligi& aralik) {
    if (aralik.excelYaziliyor) return;
    aralik.Text1.setText(aralik.DTPicker1.text());
    aralik.Text2.setText(aralik.DTPicker2.text());
    const Yaziliyor yaziliyor(aralik);
    const auto dosya = ExcelListesi(aralik).yaz();
    if (dosya && !aralik.session.desktop.opener.open(*dosya))
        aralik.session.desktop.dialogs.tell("Liste yazıldı: " + *dosya, Icon::Information);
}

} // namespace veldona
