// The start of the process, step by step, up to the first screen.
#pragma once

#include <string>

namespace veldona {

struct Session;

// The steps, in their order.
void TarihFormatiAyarla(Session& session);
void OturumBaslat(Session& session);
[[nodiscard]] bool DsnOlustur(Session& session, const std::string& attributes);
void IsaretDosyalariYaz(Session& session);
void Baglan(Session& session);
void IlkEkranSec(Session& session);

// The entry procedure: all of the above, and the last handler for what comes later. False where the start
// failed; the error surface has said why, no screen is open, and the process should end with a non-zero code.
[[nodiscard]] bool startSession(Session& session);

} // namespace veldona
