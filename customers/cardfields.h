// The card's fields: what of each is saved, how it is shown and emptied.
#pragma once

#include <string>
#include <vector>

#include "customers/customercard.h"

namespace veldona {

// All fields of the card, frame by frame.
[[nodiscard]] std::vector<FieldControl*> fieldsOf(const FrmCariEkle& f);
// What a save writes of the field.
[[nodiscard]] Value CariAlanDegeri(const FrmCariEkle& f, const CustomerField& field);

// All fields emptied; the number only where no new record is entered, so that a fresh one survives.
void AlanlariTemizle(FrmCariEkle& f);
// The fields from the recordset's current row, Null as "".
void showFields(FrmCariEkle& f);
// The same over what the operator typed, which stays.
void showFieldsAnew(FrmCariEkle& f);
void ListeleriYukle(FrmCariEkle& f);

// Fills a combo from a query: `gosterilen` is shown, `anahtar` bound.
void fillList(Session& session, ComboBox& combo, const std::string& sql, const char* shown, const char* key);
// The groups in a combo whose choice goes to a hidden text; emptying the combo empties it.
void groupList(Session& session, ComboBox& cboGrup, TextBox& txtGrupID);

} // namespace veldona
