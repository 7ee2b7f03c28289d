// The cycle of a record screen: new, change, save, cancel, delete, and the walk through the records.
//
// Written once; a screen holds only what differs: its fields, its tests, its statements, given as hooks. What
// was typed stays until it is written or cancelled: a failed test or write changes neither state nor fields.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

#include "core/formframe.h"
#include "core/formkayit.h"

namespace veldona {

// True where `adimlar` went through and was kept: one transaction of the shared connection, rolled back
// otherwise. What `adimlar` raises goes on to the last handler, which rolls back.
bool inTransaction(Session& session, const std::function<bool()>& steps);

// The cycle of one record screen. The screen gives the hooks; one that is not set does nothing, and passes
// where it is a test. `rs` stands open for the screen's whole life, KayitID is the row on show, 0 for none.
struct RecordCycle {
    RecordCycle(Form& itsForm, Session& itsSession, ToolBar* itsBar)
        : form(itsForm), session(itsSession), bar(itsBar) {}

    Form& form;
    Session& session;
    ToolBar* bar; // nullptr: a screen with buttons alone

    int durum = FormModu::Navigation;
    int viewState = FormModu::Navigation; // the state that saving, cancelling and deleting end in
    bool isPicker = false;                // a caller waits for one record: the screen closes with its answer
    std::int32_t KayitID = 0;
    std::string cursor; // the place at the last refresh
    RecordsetPtr rs;

    std::function<void()> alanlariTemizle;
    std::function<void()> beginNew;              // the fields of a new record, blanked already
    std::function<void()> goster;                // the fields from the current row
    std::function<void(std::string)> statusLine; // "3:20", "Yeni kayıt giriliyor" …
    std::function<bool()> minimumInput;          // nothing required is missing
    std::function<bool()> plausibleInput;        // what is there can be
    std::function<bool()> add;                   // writes a new row and sets KayitID
    std::function<bool()> update;                // writes the row KayitID
    std::function<bool(std::int32_t)> remove;    // inside a transaction
    std::function<void()> readAgain;             // rs anew, where requery() is not enough
    std::function<void(FormKayit&)> fillResult;  // more of the answer than its code and the row's ID
};

// Leaves the answer in gFormKayit, with the row where it is Secildi, and closes the screen.
void giveResult(RecordCycle& k, int sonuc);
void enterState(RecordCycle& k, int durum);
// Takes the recordset's current row for the one on show; the error that it could not be read by.
Err KayitGoster(RecordCycle& k);
void FormGezinme(RecordCycle& k, Navigation yon);
void newRecord(RecordCycle& k);
void changeRecord(RecordCycle& k);
// Tests, writes, shows what was written. A failed test or write keeps the state and what was typed.
void saveRecord(RecordCycle& k);
void cancelRecord(RecordCycle& k);
// Asks, deletes the row on show and goes to the one before it. Without one nothing happens.
void deleteRecord(RecordCycle& k);

// One tool of the bar; keys of other tools are passed over.
void barClicked(RecordCycle& k, std::string_view toolName);

} // namespace veldona
