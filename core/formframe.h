// What the record screens share: the button bar and its states, walking through the records, focus marks and
// the wait cursor. The cycle of new, change, delete, save and cancel is in recordcycle.h.
//
// A screen's state is one small number with the bar state of the same number; a number outside the table
// leaves all tools hidden.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "core/database.h"
#include "platform/controls/forms.h"
#include "platform/controls/lists.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

struct Session;

namespace FormModu {
inline constexpr int Navigation = 1; // one record is looked at
inline constexpr int Search = 2;     // search
inline constexpr int Yeni = 3;       // a new record is entered
inline constexpr int Change = 4;     // a record is changed
inline constexpr int AllTools = 5;   // looked at, with every tool
inline constexpr int ReadOnly = 13;
inline constexpr int SaveOnly = 14;
} // namespace FormModu

// What gFormKayit.Sonuc holds: a caller that waits for a record asks by Istendi, and finds an answer there.
namespace FormResult {
inline constexpr int GivenUp = 2;
inline constexpr int Requested = 3;
inline constexpr int Chosen = 4;
} // namespace FormResult

// Fills an empty bar with all the tools, their captions and key hints.
void buildBar(ToolBar& bar);
// Shows the tools of the state; spacers and marks are never touched. Mask bit 1 takes all of them away again.
void BarDurumAyarla(int durum, ToolBar& bar, int maske);
[[nodiscard]] bool toolOpen(const ToolBar& bar, std::string_view toolName); // shown and to be had
// F2 save, F3 new, F4 cancel, F5 change, F6 delete: a click on the tool, where the state shows it.
void toolKeys(const ToolBar& bar, KeyEvent& event);

[[nodiscard]] bool FormAcikMi(const Forms& forms, std::string_view name);
// The wait cursor and the screen disabled; the default pointer and the screen enabled.
void Bekle(Form& form, bool acik);
// The pointer only: true gives the default one, false the wait cursor.
void IsaretGoster(Form& form, bool acik);
// The wait cursor for as long as it stands; the screen may unload meanwhile.
class BusyGuard {
public:
    explicit BusyGuard(Form& form) : hold_(form.forms()), form_(form) { IsaretGoster(form_, false); }
    ~BusyGuard() { IsaretGoster(form_, true); }
    BusyGuard(const BusyGuard&) = delete;
    BusyGuard& operator=(const BusyGuard&) = delete;

private:
    Forms::Hold hold_;
    Form& form_;
};

// For the active control of the active form, when it has text: all of it selected, the focus colour behind
// it.
void HighLight(Forms& forms);
void HFocus(Control& control);  // the selection alone
void BGFocus(Control& control); // the colour alone; a locked control keeps its own
void BGLoss(Control& control);
// From now on each field of the screen is marked while it has the focus.
void markFocus(Form& form);
// Enter moves on: the next field gets the focus, its tab page turned to; behind the last one the first.
void nextField(Form& form);
// Esc closes the screen, and is nobody else's then.
void closeOnEscape(Form& form);

void FormKayitTemizle(Session& session);

enum class Navigation { Ilk = 1, Previous = 2, Bul = 3, Next = 4, Son = 5 };

// Moves the recordset; a move that fails, or that leaves the rows, ends on the first or last.
void walkRecords(adodb::Recordset& rs, Navigation yon);
// What the operator is told of a record that could not be read: a lost bookmark, a deleted row, another
// error.
[[nodiscard]] std::string saveStatus(const Err& err);

// "Alanını Boş Geçemezsiniz" behind the labels of the missing fields. `araya` joins all but the last pair,
// `sona` the last: ", " and " ve " on one screen, "" and "ve " on another. At most 100 labels.
[[nodiscard]] std::string emptyFieldWords(const std::vector<std::string>& captions,
                                          const std::string& between, const std::string& atEnd);

} // namespace veldona
