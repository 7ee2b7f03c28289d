// One run of the process: the values that all screens share, and the start that sets them.
//
// gHSTNO and gISLEMNO are the current customer and sale. gKullanici is the operator's name; nothing assigns
// it, so the columns that say who wrote a row stay empty. gBaglanti is opened once and never closed by code.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/formkayit.h"
#include "platform/controls/forms.h"
#include "platform/desktop/desktop.h"
#include "platform/report/desk.h"
#include "platform/store/faces/adodb.h"
#include "platform/store/faces/dao.h"
#include "platform/store/faces/workspace.h"

namespace veldona {

// The password of the delivered database. Held in the process, written nowhere.
inline constexpr std::string_view kDeliveredPassword = "k3v8m2t6b1x5e.";
inline constexpr std::string_view kDatabasePath = "C:\\VELDONA\\Veldona_Taksit\\vorel.mdb";

struct Session {
    Session(Desktop& itsDesktop, Forms& itsForms);

    Desktop& desktop;
    Forms& forms;
    store::Workspace workspace;
    dao::DBEngine dbEngine;

    std::string gDosyaAdi;
    std::string gDsnAdi;
    std::string gSifre;
    std::string gVeritabaniYolu;
    std::uint32_t gLCID = 0;
    std::unique_ptr<adodb::Connection> gBaglanti;

    std::string gHSTNO;
    std::int32_t gISLEMNO = 0;
    std::string gKullanici;
    std::uint8_t gParaBirimi = 0;
    std::int32_t gKusuratModu = 0;
    FormKayit gFormKayit;

    std::vector<Message> deferredBoxes; // to be told behind the end of the open transaction

    report::ReportDesk* reportDesk = nullptr; // set before the start where there is anybody to show reports
    // The user's guide at the chapter of a screen; set before the start where there is anybody to show it.
    std::function<void(const std::string& screen)> showGuide;
    std::optional<report::Document> rapor; // what the viewer shows, as long as it is loaded

    // "MS Access;PWD=" and the password: what the file face wants to hear.
    [[nodiscard]] std::string connectText() const { return "MS Access;PWD=" + gSifre; }
};

// The steps of the start, in their order.
void TarihFormatiAyarla(Session& session);
void OturumBaslat(Session& session);
[[nodiscard]] bool DsnOlustur(Session& session, const std::string& attributes);
void IsaretDosyalariYaz(Session& session);
void Baglan(Session& session);
void IlkEkranSec(Session& session);

// The entry procedure: all of the above, and the last handler for what comes later. False where the start
// failed; the error surface has said why, no screen is open, and the process should end with a non-zero code.
[[nodiscard]] bool startSession(Session& session);

// Shows a box; inside a transaction of the shared connection it is kept until behind the end of that one. A
// box stands until somebody answers it, and the saves of the other tills would wait as long.
void tell(Session& session, Message message);
void tellDeferred(Session& session); // for whoever ends the transaction

// Rolls back what an uncaught error left open on the shared connection and shows the error's surface.
void uncaughtError(Session& session, const RuntimeError& error);

// Shows the error's surface for a failure of the disk that the event's procedures passed over: what they then
// show or call done may be wrong. For the end of each event.
void untoldError(Session& session);

// Opens a screen by its name.
void showScreen(Session& session, std::string_view name, Kip kip);

} // namespace veldona
