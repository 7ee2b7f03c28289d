// The rows of a sale as they go into the books: a header, one line of the one product, the schedule, the
// payment taken at the sale. Who writes them tells the operator what failed (core/database).
//
// The down payment is kept twice: as the first row of the schedule and as a payment, so that the balances
// take that row for paid.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/database.h"
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

using SaleRows = std::vector<KayitYapisi>; // to be written in their order

void IslemBasligiEkle(FrmSatis& f, SaleRoute route, SaleRows& rows);
void SatisSatiriEkle(FrmSatis& f, SaleRows& rows);
// Belongs behind the line: one more unit sold. Nothing where the product is missing.
[[nodiscard]] std::optional<KayitYapisi> soldUnit(Session& session);
// The down payment; as a payment it names the cash box, as a row of the schedule it is marked.
void PesinatEkle(FrmSatis& f, const std::string& tablo, SaleRows& rows);
// One row for each row of grdYapilacakOdeme that has a date. Error 6 for a grid of more than 255 rows.
void TaksitSatirlariEkle(FrmSatis& f, SaleRoute route, SaleRows& rows);
// A sale without installments: the whole total as one row of the schedule, and as paid.
void PesinSatisPlaniEkle(FrmSatis& f, const std::string& tablo, SaleRows& rows);
void PesinOdemeEkle(FrmSatis& f, SaleRows& rows);
// Writes one payment for each row of grdYapilanOdeme that has an amount.
[[nodiscard]] bool addPayments(FrmSatis& f);

// Deletes the rows of the sale from one table.
[[nodiscard]] bool deleteRows(Session& session, const std::string& tablo, const std::string& islemno);
// All of them, the header last.
[[nodiscard]] bool SatisKayitlariniSil(Session& session, const std::string& islemno);

} // namespace veldona
