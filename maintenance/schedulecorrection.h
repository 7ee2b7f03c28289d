// The older of the two ways to correct a schedule row: a dialog on the row selected in the ledger.
//
// It compares and writes amounts as they are shown, not as they are stored, so on the shop's data it finds no
// row; the sale's TOPBORC is set to the shown total all the same, and two balances of the ledger lose their
// decimals until the next load. It says nothing of who wrote and when, and its errors reach the last handler.
#pragma once

#include <memory>
#include <optional>

#include "ledger/correctionswalk.h"

namespace veldona {

struct TaksitOdDuzelt : Form, CorrectionBox {
    TaksitOdDuzelt(Forms& forms, Session& itsSession);
    void al(const RowToCorrect& satir) override;

    Session& session;

    DateBox DTPicker1{*this, "DTPicker1"};
    TextBox mskOdenecekMiktar{*this, "mskOdenecekMiktar"};
    CommandButton Command1{*this, "Command1", "T&AMAM"}; // started from the dates
    CommandButton Command3{*this, "Command3", "T&AMAM"}; // started from the amounts
    CommandButton Command2{*this, "Command2", "&VAZGEÇ"};

    std::optional<dao::Recordset> rsTaksit;
    std::optional<dao::Recordset> rsHeader;
};

[[nodiscard]] std::unique_ptr<Form> makeTaksitOdDuzelt(Forms& forms, Session& session);

} // namespace veldona
