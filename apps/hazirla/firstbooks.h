// The start on a folder that holds no books yet: a new shop, or a file that went missing.
#pragma once

#include "platform/desktop/dialogs.h"
#include "platform/desktop/paths.h"

namespace veldona::hazirla {

// The one thing that books made at the first start hold besides what is delivered: their first screen is the
// letterhead's.
inline constexpr const char* kAskForLetterhead = "UPDATE FIRMABILGISI SET DEGER='0'";

// Whether there are books to open. Where there are none the operator is asked whether empty ones be made,
// whose first screen asks for the shop's letterhead. What stands is never touched, and a failure is told of.
[[nodiscard]] bool findOrMakeBooks(const Paths& paths, Dialogs& dialogs);

} // namespace veldona::hazirla
