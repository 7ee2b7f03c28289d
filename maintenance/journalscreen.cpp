#include "maintenance/journalscreen.h"

#include <array>
#include <chrono>
#include <string>
#include <variant>

#include "core/books.h"
#include "core/delivered.h"
#include "core/formframe.h"
#include "core/session.h"
#include "platform/desktop/desktop.h"
#include "platform/store/dialect/storeerror.h"
#include "platform/store/engine/act.h"

namespace veldona {

namespace {

constexpr const char* kTitle = "Günlüğü İncelt";
constexpr std::array<int, 6> kMonths = {6, 12, 24, 36, 60, 120};
constexpr int kProposed = 2; // of them
constexpr std::chrono::seconds kWait(15);
constexpr const char* kNotOfTills =
    "Defter sunucuda: kasalar günlükten kayıt silemez. Sunucuya bakan kişi tabloların sahibi olarak siler:";

store::Place placeOf(const FrmGunluk& f) {
    return store::placeOf(f.session.desktop.paths.toNative(kDatabasePath));
}

int monthsOf(const FrmGunluk& f) {
    return kMonths[static_cast<std::size_t>(f.cboSure.listIndex())];
}

void tellFailure(FrmGunluk& f, const store::StoreError& error) {
    f.session.desktop.dialogs.tell(error.description() + "\n\nHiçbir kayıt silinmedi.", Icon::Exclamation);
}

void look(FrmGunluk& f) {
    const BusyGuard busy(f);
    f.cmdIncelt.setEnabled(false);
    const auto books = openBooksToRead(placeOf(f), kWait);
    const DateTime before = journal::monthsBefore(f.session.desktop.clock.now(), monthsOf(f));
    f.plan = journal::planThinning(*books, before);
    f.lblDurum.setCaption(journal::describe(f.plan));
    f.lblEski.setCaption(f.plan.entries > 0
                             ? journal::lossOf(f.plan)
                             : std::to_string(monthsOf(f)) + " aydan eski kayıt yok, silinecek bir şey yok.");
    f.cmdIncelt.setEnabled(f.plan.entries > 0);
}

bool mayThin(const FrmGunluk& f) {
    const store::Place place = placeOf(f);
    return std::holds_alternative<store::FilePlace>(place) || journal::mayThin(*openBooks(place, kWait));
}

// Runs beside the windows, on a connection of its own. How many entries went; none where it was given up.
std::int64_t thinBeside(FrmGunluk& f) {
    std::int64_t gone = 0;
    runBeside(f.session.desktop.sideWork, kTitle,
              [place = placeOf(f), &plan = f.plan, &screen = f.name(), &gone](const Progress& progress) {
                  const auto books = openBooks(place, kWait);
                  const store::ActScope act(screen, journal::kThinningName);
                  gone = journal::thin(*books, plan, [&](std::int64_t done, std::int64_t all) {
                      return progress("Eski kayıtlar siliniyor…", static_cast<int>(100 * done / all));
                  });
              });
    return gone;
}

void thin(FrmGunluk& f) {
    Dialogs& dialogs = f.session.desktop.dialogs;
    if (!mayThin(f))
        return dialogs.tell(std::string(kNotOfTills) + "\n\nvorel-gunluk --incelt " +
                                std::to_string(monthsOf(f)) + " --evet",
                            Icon::Information);
    if (!dialogs.confirmDeleting("Günlüğün eski kayıtları silinsin mi?\n\n" + journal::lossOf(f.plan),
                                 kTitle))
        return;
    const std::int64_t gone = thinBeside(f);
    dialogs.tell(gone > 0 ? journal::thinnedWords(gone) : "Vazgeçildi. Hiçbir kayıt silinmedi.",
                 Icon::Information);
    look(f);
}

void reported(FrmGunluk& f, void (*act)(FrmGunluk&)) {
    try {
        act(f);
    } catch (const store::StoreError& error) {
        tellFailure(f, error);
    }
}

void Form_Load(FrmGunluk& f) {
    for (const int months : kMonths)
        f.cboSure.add(std::to_string(months) + " aydan eski");
    f.cboSure.setListIndex(kProposed);
    reported(f, look);
}

} // namespace

FrmGunluk::FrmGunluk(Forms& itsForms, Session& itsSession)
    : Form(itsForms, "frmGunluk", kTitle), session(itsSession) {
    onLoad = [this] { Form_Load(*this); };
    onActivate = [this] { cboSure.setFocus(); };
    closeOnEscape(*this);
    cboSure.onClick = [this] { reported(*this, look); };
    cmdIncelt.onClick = [this] { reported(*this, thin); };
    cmdCikis.onClick = [this] { forms().unload(*this); };
}

std::unique_ptr<Form> makeFrmGunluk(Forms& forms, Session& session) {
    return std::make_unique<FrmGunluk>(forms, session);
}

} // namespace veldona
