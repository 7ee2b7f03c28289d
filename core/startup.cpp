#include "core/startup.h"

#include <new>

#include "core/database.h"
#include "core/delivered.h"
#include "core/session.h"
#include "core/showscreen.h"
#include "core/tell.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/store/engine/act.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

constexpr int kAddSystemDsn = 4;
constexpr const char* kDriver = "Microsoft Access Driver (*.mdb)";
constexpr int kTimeoutSeconds = 60;

// A marker file is written anew at each start; that it was not there before is no failure.
void writeMarkFile(Session& session, const std::string& name, const std::string& content) {
    const std::string path = session.desktop.paths.toNative(session.desktop.paths.appPath() + "\\" + name);
    Err ignored;
    attempt(ignored, [&] { deleteFile(path); });
    writeTextFile(path, content);
}

} // namespace

void TarihFormatiAyarla(Session& session) {
    session.gLCID = session.desktop.locale.defaultLcid();
    session.desktop.locale.setInfo(session.gLCID, SystemLocale::kShortDate, "dd/MM/yyyy");
}

void OturumBaslat(Session& session) {
    session.gDosyaAdi = "vorel";
    session.gDsnAdi = "vorel";
    if (session.gSifre.empty()) session.gSifre = kDeliveredPassword; // else the shop's own
    const std::string attributes =
        "DSN=" + session.gDsnAdi + ";DBQ=" + std::string(kInstallFolder) + "\\" + session.gDosyaAdi + ".mdb";
    // Registering fails on every start but the first, where the source stands already.
    static_cast<void>(DsnOlustur(session, attributes));
    IsaretDosyalariYaz(session);
    Baglan(session);
}

bool DsnOlustur(Session& session, const std::string& attributes) {
    return session.desktop.dataSources.configure(kAddSystemDsn, kDriver, attributes);
}

void IsaretDosyalariYaz(Session& session) {
    writeMarkFile(session, "Netwok.txt", "\"" + std::string(kInstallFolder) + "\"");
    writeMarkFile(session, "firma.txt", session.gDosyaAdi);
}

void Baglan(Session& session) {
    session.gBaglanti = std::make_unique<adodb::Connection>(session.workspace);
    session.gBaglanti->commandTimeout = kTimeoutSeconds;
    session.gBaglanti->connectionTimeout = kTimeoutSeconds;
    session.gBaglanti->open(session.gDsnAdi, "", session.gSifre);
    session.gVeritabaniYolu = kDatabasePath;
}

void IlkEkranSec(Session& session) {
    RecordsetPtr rs;
    KayitSetiAc(session, rs, "SELECT DEGER FROM  FIRMABILGISI", adodb::CursorLocation::Client);
    if (rs->eof()) return;
    rs->moveFirst();
    const bool firstUse = joinText(rs->value("DEGER")) == "0";
    KayitSetiKapat(rs);
    showScreen(session, firstUse ? "frmAntetBilgisi" : "frmMainVeldona", Kip::Modeless);
}

bool startSession(Session& session) {
    session.forms.onUncaught = [&session](const RuntimeError& error) { uncaughtError(session, error); };
    session.forms.onEventEnd = [&session] { untoldError(session); };
    session.forms.beginAct = [](const std::string& screen, const std::string& words) {
        return std::make_shared<store::ActScope>(screen, words);
    };
    session.forms.nameAct = store::nameAct;
    try {
        TarihFormatiAyarla(session);
        OturumBaslat(session);
        IlkEkranSec(session);
        return true;
    } catch (const RuntimeError& error) {
        uncaughtError(session, error);
        return false;
    } catch (const std::bad_alloc&) {
        uncaughtError(session, RuntimeError(ErrorNumber::OutOfMemory));
        return false;
    }
}

} // namespace veldona
