// The start on a folder that holds no books yet: a new shop, or a file that went missing.
#pragma once

#include "platform/desktop/dialogs.h"
#include "platform/desktop/paths.h"

namespace veldona::hazirla {

// The one thing that books made at the first start hold besides what is delivered: their first screen is the
// letterhead's.
inline constexpr const char* kAskForLetterhead = "UPDATE FIRMABILGISI SET DEGER='0'";

// Whether there are books to open, in their file or on a server.
[[nodiscard]] bool areThereBooks(const Paths& paths);

// Makes empty ones, whose first screen asks for the shop's letterhead. What stands is never touched; a
// failure is told of, and answers false.
bool makeFirstBooks(const Paths& paths, Dialogs& dialogs);

} // namespace veldona::hazirla
