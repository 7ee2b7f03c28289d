// The card's fields: which column each stands for, what of it is saved, how it is shown.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "customers/customercard.h"

namespace veldona {

namespace CariAlan {
inline constexpr int HSTNO = 1;
inline constexpr int DOGTRH = 6;
inline constexpr int GURUP_ID = 12;
inline constexpr int EVTEL2 = 31;
} // namespace CariAlan

// One column of the card; without a control no value is taken from the screen.
struct CariSutunu {
    int kod;
    const char* sutun;
    TextBox FrmCariEkle::*metin = nullptr;
    ComboBox FrmCariEkle::*liste = nullptr;
};

// In the order of the statements.
[[nodiscard]] const std::vector<CariSutunu>& cariSutunlari();
// The value to be saved of the column of this code.
[[nodiscard]] Value CariAlanDegeri(const FrmCariEkle& f, int kod);

// All fields emptied; the number only where no new record is entered, so that a fresh one survives.
void AlanlariTemizle(FrmCariEkle& f);
// The fields from the recordset's current row, Null as "".
void AlanlariGoster(FrmCariEkle& f);
void ListeleriYukle(FrmCariEkle& f);

// Fills a combo from a query: `gosterilen` is shown, `anahtar` bound.
void listeDoldur(Session& session, ComboBox& combo, const std::string& sql, const char* gosterilen,
                 const char* anahtar);
// The groups in a combo whose choice goes to a hidden text; emptying the combo empties it.
void grupListesi(Session& session, ComboBox& cboGrup, TextBox& txtGrupID);

} // namespace veldona
