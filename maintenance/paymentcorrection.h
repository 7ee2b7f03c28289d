// Changes or deletes one payment of the sale on show.
//
// Save and delete mean the first payment of that day whose whole amount is the same, whichever was clicked. A
// corrected payment takes the time of the correction. The cash box is not touched, and errors reach the last
// handler.
#pragma once

#include <memory>
#include <optional>

#include "ledger/correctionswalk.h"

namespace veldona {

struct TaksitMustDuzelt : Form, CorrectionBox {
    TaksitMustDuzelt(Forms& forms, Session& itsSession);
    void al(const RowToCorrect& satir) override;

    Session& session;

    Frame fraOdemeTarihiDuzelt{*this, "fraOdemeTarihiDuzelt"};
    DateBox DTPicker1{*this, "DTPicker1"};
    TextBox Text1{*this, "Text1"};
    TextBox Text2{*this, "Text2"};                        // the row of both lists that a delete takes away
    CommandButton Command1{*this, "Command1", "&KAYDET"}; // started from the dates
    CommandButton Command3{*this, "Command3", "T&AMAM"};  // started from the amounts
    CommandButton Command4{*this, "Command4", "&SIL"};
    CommandButton Command2{*this, "Command2", "&VAZGEÇ"};

    std::optional<dao::Recordset> rsOdenen;
};

[[nodiscard]] std::unique_ptr<Form> makeTaksitMustDuzelt(Forms& forms, Session& session);

} // namespace veldona
