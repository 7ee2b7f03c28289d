// What the card writes and tests.
//
// A customer's number is unique by the test of a new card alone, and never changes after the first save.
// Deleting a card leaves the customer's sales behind under the number: they are the shop's books. What was
// said to the customer goes, unless another card has the number too: a new customer gets it again.
#pragma once

#include <cstdint>

#include "customers/customercard.h"

namespace veldona {

// Inside a transaction; the new row's ID is kept. What fails has been told.
bool YeniCariEkle(FrmCariEkle& f);
bool CariGuncelle(FrmCariEkle& f);
bool CariSil(Session& session, std::int32_t id);

bool MinimumInputKontrolu(FrmCariEkle& f);
bool MantikliInputKontrolu(FrmCariEkle& f);

// The recordset over the cards that the screen stands on; empty where there is none.
void openCards(FrmCariEkle& f);
// The fields of a new card: its number, the box, the focus.
void beginNewCustomer(FrmCariEkle& f);

} // namespace veldona
