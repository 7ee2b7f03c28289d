// How a customer is written on paper: name, telephones and the two addresses.
#pragma once

#include <string>

#include "core/database.h"

namespace veldona {

struct TarafMetinleri {
    std::string HSTNO;
    std::string adSoyad;
    std::string telefonlar; // three captions, with the first 50 characters of each number
    std::string evAdresi;
    std::string isAdresi;
    std::string evIlceIl;
};

// The three captions stand also without a number.
[[nodiscard]] std::string TelefonMetni(const std::string& ev, const std::string& is, const std::string& gsm);
// False, and `taraf` as it was, where there is no such customer.
bool TarafOku(Session& session, const std::string& hstno, TarafMetinleri& taraf);

// An insert into T_TEMP_GENEL that begins with the party, `alan8` among its addresses.
[[nodiscard]] KayitYapisi GenelKayit(const TarafMetinleri& taraf, const std::string& alan8);

} // namespace veldona
