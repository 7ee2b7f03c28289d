#include "core/session.h"

#include <new>
#include <utility>

#include "core/database.h"
#include "platform/runtime/conversion.h"
#include "platform/store/faces/daoerror.h"
#include "schema/tables.h"

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

bool inTransaction(const Session& session) {
    return session.gBaglanti && session.gBaglanti->isOpen() && session.gBaglanti->inTransaction();
}

} // namespace

Session::Session(Desktop& itsDesktop, Forms& itsForms)
    : desktop(itsDesktop), forms(itsForms),
      workspace(
          {.toNativePath = [&itsDesktop](std::string_view path) { return itsDesktop.paths.toNative(path); },
           .place = store::placeOf,
           .dataSource = [&itsDesktop](std::string_view name) { return itsDesktop.dataSources.find(name); },
           .clock = [&itsDesktop] { return itsDesktop.clock.now(); },
           .delivered = schema::delivered(),
           .goOnWaiting = [&itsDesktop](auto waited) { return itsDesktop.events.goOnWaiting(waited); }}),
      dbEngine(workspace) {}

void TarihFormatiAyarla(Session& session) {
    session.gLCID = session.desktop.locale.defaultLcid();
    session.desktop.locale.setInfo(session.gLCID, SystemLocale::kShortDate, "dd/MM/yyyy");
}

void OturumBaslat(Session& session) {
    session.gDosyaAdi = "vorel";
    session.gDsnAdi = "vorel";
    session.gSifre = kDeliveredPassword;
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

void tell(Session& session, Message message) {
    if (inTransaction(session))
        session.deferredBoxes.push_back(std::move(message));
    else
        session.desktop.dialogs.show(message);
}

void tellDeferred(Session& session) {
    for (const Message& message : std::exchange(session.deferredBoxes, {}))
        session.desktop.dialogs.show(message);
}

void uncaughtError(Session& session, const RuntimeError& error) {
    if (inTransaction(session)) {
        Err ignored; // the surface below tells of the error that matters
        attempt(ignored, [&] { session.gBaglanti->rollbackTrans(); });
    }
    tellDeferred(session);
    session.desktop.dialogs.runtimeError(error);
}

void untoldError(Session& session) {
    session.workspace.endAct();
    const auto failure = session.workspace.takeDiskFailure();
    const bool told = !failure || session.desktop.dialogs.hasShown(failure->description());
    session.desktop.dialogs.forgetShown();
    if (!told)
        session.desktop.dialogs.runtimeError(
            RuntimeError(dao::numberOf(failure->kind()), failure->description()));
}

void showScreen(Session& session, std::string_view name, Kip kip) {
    session.forms.show(name, kip);
}

} // namespace veldona
