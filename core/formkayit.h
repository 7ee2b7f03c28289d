// The one record by which a screen hands its arguments to the screen that it opens, and a picker hands back
// its result: Sonuc 4 and the row's ID in KayitID.
#pragma once

#include <cstdint>
#include <string>

#include "platform/runtime/value.h"

namespace veldona {

struct FormKayit {
    std::int32_t Kip = 0;        // the open mode: 3, 5, 7, 8
    std::int32_t KayitID = 0;    // the row to show, or the row that was picked
    std::string Kaynak;          // the query that the caller stands on
    std::string Kosul;           // " ID = " and the row's number
    Currency Sonuc;              // the answer: 2, 3 or 4
    std::string Baslik;          // a title
    std::int32_t ReportMode = 0; // of the two report screens: 1 expected, 2 overdue
    std::string HSTNO;           // the customer's account number and name, where the caller gives one
    std::string Unvan;
    std::int32_t CariID = 0; // MUSTKAYIT.ID of that customer; 0: none is given
    Value DogumTarihi;
};

} // namespace veldona
