// How a correction finds its row and writes it back into the lists, shared by the panels of the main screen
// and by the correction dialogs.
//
// A row is known as an operator knows it: by its sale, its day and its amount, never by its ID. Of two equal
// rows the first one in the recordset is meant, whichever was selected. The walk makes every test itself;
// opened for one sale it costs an index look-up, however long the table has grown.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "ledger/mainscreen.h"

namespace veldona {

// The question before what is planned falls below what was paid. It is asked in two spellings, one where a
// correction started from the dates and one where it started from the amounts.
inline constexpr const char* kDateQuestion =
    "ÖDENECEK MİKTAR TOPLAM BORÇTAN FAZLA. İSLEME DEVAM ETMEK İSTİYORMUSUNUZ ?";
inline constexpr const char* kAmountQuestion =
    "ÖDENECEK MİKTAR TOPLAM BORÇTAN FAZLA. İSLEME DEVAM ETMEK İSTİYORMUUSUNUZ ?";

struct SoughtRow {
    std::string islemno;
    std::function<bool(const Value& odtrh)> isDay;
    std::function<bool(const Value& odmiktar)> isAmount;
};

// A table or query, of which only the rows of one sale are read.
[[nodiscard]] dao::Recordset openForSale(dao::Database& books, std::string_view source,
                                         const std::string& islemno);
// Walks from the first row on, to one of the sale; respectively to one that passes all three tests. False:
// there is none.
[[nodiscard]] bool findSale(dao::Recordset& rs, const std::string& islemno);
[[nodiscard]] bool findRow(dao::Recordset& rs, const SoughtRow& sought);

// The day of a row, its time left aside, is the one that a list shows.
[[nodiscard]] std::function<bool(const Value&)> onDay(std::string day);
// A stored amount as the lists show it.
[[nodiscard]] Currency shownAmount(const Session& session, const Value& stored);

// The amount of a list's row: a blank one is 0, another text that is no number is an error.
[[nodiscard]] Currency amountOrZero(const std::string& text);
// All rows of a list added up so; no more of them than a byte counts.
[[nodiscard]] Currency sumOf(const ListBox& amounts);

// A corrected row as the lists show it from now on.
void patchRow(ListBox& days, ListBox& amounts, int row, const std::string& day, const std::string& amount);
// Label9 from the two captions beside it, under `mask`.
void showRemaining(FrmMainVeldona& f, const char* mask);

// The list whose row a correction was started from.
enum class CorrectionSource : std::uint8_t { None = 0, Tarih = 1, Tutar = 2 };

// What a correction dialog is handed. The main screen knows the dialogs only by their names and by this.
struct RowToCorrect {
    CorrectionSource kaynak = CorrectionSource::None;
    int satir = -1;
    std::string gun;
    std::string tutar;
};
class CorrectionBox {
public:
    virtual ~CorrectionBox() = default;
    virtual void al(const RowToCorrect& satir) = 0;
};
// Loads the dialog, hands it the row, and shows it until it is closed. A row that it cannot take raises, and
// nothing is left open.
void openCorrectionBox(FrmMainVeldona& f, std::string_view box, const RowToCorrect& satir);

} // namespace veldona
