// The first page of a Jet file: its version, and the password that the reading library never asks for.
//
// The password is no lock: the pages can be read without it, and it stands in the header behind a fixed mask.
// Asking for it keeps the owner's word, no more. Rights given to single users of a work group are not looked
// at.
#pragma once

#include <string>
#include <string_view>

#include "apps/hazirla/delivered.h"

namespace veldona::aktar {

// The file has a password, and none was given.
class PasswordLacks : public hazirla::Refusal {
public:
    using Refusal::Refusal;
};

// Raises hazirla::Refusal, with a sentence for the operator: no such file, no Jet 4 file, a file that was
// cut, a password that is missing or wrong.
void checkJetHeader(const std::string& path, std::string_view password);

} // namespace veldona::aktar
