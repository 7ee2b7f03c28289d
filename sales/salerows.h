// The rows of a sale as they go into the books: a header, one line of the one product, the schedule, the
// payment taken at the sale. Each of the inserts tells the operator of its own failure and answers false.
//
// The down payment is kept twice: as the first row of the schedule and as a payment, so that the balances
// take that row for paid.
#pragma once

#include <cstdint>
#include <string>

#include "sales/salescreen.h"

namespace veldona {

// Fields of a sale that the screen does not offer, or computes, by their code.
namespace SaleField {
inline constexpr int KefilCariId = 3;
inline constexpr int OdemeTipi = 4;
inline constexpr int KrediKarti = 5;
inline constexpr int SatisElemaniId = 6;
inline constexpr int Indirim = 7;
inline constexpr int Aciklama = 8;
inline constexpr int TopBorc = 9;
inline constexpr int Trh = 10;
inline constexpr int IndirimYtl = 11;
inline constexpr int TeslimatTrh = 12;
inline constexpr int TeslimEdilenTrh = 13;
inline constexpr int TeslimEdildi = 14;
inline constexpr int BankaId = 15; // and KASA_ID
inline constexpr int DepoId = 16;
} // namespace SaleField

[[nodiscard]] Value VarsayilanDeger(FrmSatis& f, int kod);

// A new sale's rows do say who wrote them and which one is the down payment; a changed sale's do not, but its
// header does.
enum class SaleRoute { Yeni, Changed };

[[nodiscard]] bool IslemBasligiEkle(FrmSatis& f, SaleRoute route);
// With it the stock: one more unit sold. False, and no word, where the product is missing.
[[nodiscard]] bool SatisSatiriEkle(FrmSatis& f);
// The down payment; as a payment it names the cash box, as a row of the schedule it is marked.
[[nodiscard]] bool PesinatEkle(FrmSatis& f, const std::string& tablo);
// One row for each row of grdYapilacakOdeme that has a date. Error 6 for a grid of more than 255 rows.
[[nodiscard]] bool TaksitSatirlariEkle(FrmSatis& f, SaleRoute route);
// A sale without installments: the whole total as one row of the schedule, and as paid.
[[nodiscard]] bool PesinSatisPlaniEkle(FrmSatis& f, const std::string& tablo);
[[nodiscard]] bool PesinOdemeEkle(FrmSatis& f);
// One payment for each row of grdYapilanOdeme that has an amount.
[[nodiscard]] bool addPayments(FrmSatis& f);

// Deletes the rows of the sale from one table.
[[nodiscard]] bool deleteRows(Session& session, const std::string& tablo, const std::string& islemno);
// All of them, the header last.
[[nodiscard]] bool SatisKayitlariniSil(Session& session, const std::string& islemno);

} // namespace veldona
