// What a list of customers shows, on the main screen and in the finder.
#pragma once

#include <string>
#include <vector>

#include "platform/controls/lists.h"

namespace veldona {

// "SELECT … FROM MUSTKAYIT", with every column named; a condition and an order may follow.
inline constexpr const char* kCustomerList =
    "SELECT MUSTKAYIT.ID,MUSTKAYIT.HSTNO,MUSTKAYIT.AD,MUSTKAYIT.SOYAD,MUSTKAYIT.DOGTRH,MUSTKAYIT.EVTEL,"
    "MUSTKAYIT.ISTEL,MUSTKAYIT.GSM,MUSTKAYIT.EVMH,MUSTKAYIT.EVCD,MUSTKAYIT.EVAPT,MUSTKAYIT.EVILCE,"
    "MUSTKAYIT.EVIL  FROM MUSTKAYIT";

// A condition on the account number that keeps the system's own accounts out; a sub-select follows.
inline constexpr const char* kWithoutSystemAccounts =
    " MUSTKAYIT.HSTNO NOT IN ('G3','G4','TI') AND MUSTKAYIT.HSTNO in ";

[[nodiscard]] std::vector<DataGrid::Column> customerListColumns();

} // namespace veldona
