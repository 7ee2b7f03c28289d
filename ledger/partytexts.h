// How a customer is written on paper: name, telephones and the two addresses.
#pragma once

#include <string>

#include "core/database.h"

namespace veldona {

struct PartyTexts {
    std::string HSTNO;
    std::string fullName;
    std::string phones; // three captions, with the first 50 characters of each number
    std::string homeAddress;
    std::string workAddress;
    std::string homeTown;
};

// The three captions stand also without a number.
[[nodiscard]] std::string phoneText(const std::string& home, const std::string& is, const std::string& gsm);
// False, and `taraf` as it was, where there is no such customer.
bool readParty(Session& session, const std::string& hstno, PartyTexts& party);

// An insert into T_TEMP_GENEL that begins with the party, `alan8` among its addresses.
[[nodiscard]] KayitYapisi generalRow(const PartyTexts& party, const std::string& alan8);

} // namespace veldona
