// The books as they are delivered: where they stand, and the password they come with.
#pragma once

#include <string_view>

namespace veldona {

// Held in the process, written nowhere.
inline constexpr std::string_view kDeliveredPassword = "k3v8m2t6b1x5e.";
inline constexpr std::string_view kDatabasePath = "C:\\VELDONA\\Veldona_Taksit\\vorel.mdb";

} // namespace veldona
