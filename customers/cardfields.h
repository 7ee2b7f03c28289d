// The card's fields: which column each stands for, what of it is saved, how it is shown.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "customers/customercard.h"

namespace veldona {

namespace CustomerField {
inline constexpr int HSTNO = 1;
inline constexpr int DOGTRH = 6;
inline constexpr int GURUP_ID = 12;
inline constexpr int EVTEL2 = 31;
} // namespace CustomerField

// One column of the card; without a control no value is taken from the screen.
struct CustomerColumn {
    int kod;
    const char* column;
    TextBox FrmCariEkle::*text = nullptr;
    ComboBox FrmCariEkle::*list = nullptr;
};

// In the order of the statements.
[[nodiscard]] const std::vector<CustomerColumn>& customerColumns();
// The value to be saved of the column of this code.
[[nodiscard]] Value CariAlanDegeri(const FrmCariEkle& f, int kod);

// All fields emptied; the number only where no new record is entered, so that a fresh one survives.
void AlanlariTemizle(FrmCariEkle& f);
// The fields from the recordset's current row, Null as "".
void showFields(FrmCariEkle& f);
void ListeleriYukle(FrmCariEkle& f);

// Fills a combo from a query: `gosterilen` is shown, `anahtar` bound.
void fillList(Session& session, ComboBox& combo, const std::string& sql, const char* shown, const char* key);
// The groups in a combo whose choice goes to a hidden text; emptying the combo empties it.
void groupList(Session& session, ComboBox& cboGrup, TextBox& txtGrupID);

} // namespace veldona
