#include "maintenance/backupscreen.h"

#include <algorithm>
#include <filesystem>
#include <optional>

#include "backup/lastbackup.h"
#include "backup/taking.h"
#include "core/delivered.h"
#include "core/formframe.h"
#include "core/session.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/format.h"
#include "platform/store/dialect/storeerror.h"

namespace veldona {

namespace {

namespace fs = std::filesystem;

std::string booksOf(const FrmYedek& f) {
    return f.session.desktop.paths.toNative(kDatabasePath);
}

std::string freeRoom(FrmYedek& f, const std::string& folder) {
    constexpr double kGigabyte = 1e9;
    Media* const media = f.session.desktop.media;
    const auto room = media != nullptr ? media->freeRoom(folder) : std::nullopt;
    return room ? "   ·   " + format(static_cast<double>(*room) / kGigabyte, "#,##0.0") + " GB boş" : "";
}

// -1: not in the list.
int placeOf(const FrmYedek& f, const std::string& folder) {
    const auto found = std::ranges::find_if(f.shownFolders, [&](const std::string& known) {
        std::error_code unreachable;
        return known == folder || fs::equivalent(known, folder, unreachable);
    });
    return found == f.shownFolders.end() ? -1 : static_cast<int>(found - f.shownFolders.begin());
}

void addPlace(FrmYedek& f, const std::string& name, const std::string& folder) {
    if (placeOf(f, folder) >= 0) return;
    f.shownFolders.push_back(folder);
    f.lstYer.add(name + freeRoom(f, folder));
}

void choosePlace(FrmYedek& f, int row) {
    if (f.lstYer.listIndex() != row) f.lstYer.setListIndex(row);
    f.lblKlasor.setCaption(row < 0 ? "" : "Klasör: " + f.shownFolders[static_cast<std::size_t>(row)]);
}

// Where the last backup went, as long as it can be reached, else the usual folder.
void fillPlaces(FrmYedek& f) {
    const std::string usual = backup::usualFolder(f.session.desktop.paths);
    addPlace(f, "Bu bilgisayar", usual);
    if (f.session.desktop.media != nullptr)
        for (const Medium& medium : f.session.desktop.media->pluggedIn())
            addPlace(f, "Takılı disk: " + medium.name, backup::folderOn(medium.folder));
    const auto last = backup::findLastBackup(booksOf(f), usual);
    f.lblSonYedek.setCaption(backup::ageText(last, f.session.desktop.clock.now()));
    choosePlace(f, 0);
    if (!last) return;
    const std::string before = fs::path(last->file).parent_path().string();
    std::error_code unreachable;
    if (!fs::is_directory(before, unreachable)) return;
    addPlace(f, fs::path(before).filename().string(), before);
    choosePlace(f, placeOf(f, before));
}

void cmdBaskaKlasor_Click(FrmYedek& f) {
    const int row = std::max(f.lstYer.listIndex(), 0);
    const auto folder = f.session.desktop.dialogs.folder("Yedek klasörünü seçin",
                                                         f.shownFolders[static_cast<std::size_t>(row)]);
    if (!folder) return;
    std::error_code failed;
    if (!fs::is_directory(*folder, failed))
        return f.session.desktop.dialogs.tell("Böyle bir klasör yok: " + *folder, Icon::Exclamation);
    addPlace(f, fs::path(*folder).filename().string(), *folder);
    choosePlace(f, placeOf(f, *folder));
    f.cmdYedekAl.setFocus();
}

std::string describe(const backup::Taken& taken, DateTime now) {
    const std::string warning = backup::warningOf(taken);
    const std::string& last = taken.fingerprint.newestPayment;
    return "Yedek alındı ve denetlendi.\n\nDosya: " + taken.file +
           "\nZaman: " + format(now, "dd/mm/yyyy hh:mm") +
           "\nİçinde: " + backup::countsOf(taken.fingerprint) +
           "\nSon ödeme: " + (last.empty() ? "yok" : backup::shownDate(last)) +
           (warning.empty() ? "" : "\n\n" + warning);
}

backup::Onlooker onlookerOf(const Progress& progress) {
    return [&progress](backup::Step step, std::int64_t done, std::int64_t all) {
        if (step == backup::Step::Proving) return progress("Kopya denetleniyor…", -1);
        return progress("Defter kopyalanıyor…", all == 0 ? -1 : static_cast<int>(100 * done / all));
    };
}

// Nothing where it failed or was given up, which has been told then.
std::optional<backup::Taken> takeInto(FrmYedek& f, const std::string& folder, DateTime now) {
    std::optional<backup::Taken> taken;
    std::string failure;
    const std::string books = booksOf(f);
    try {
        runBeside(f.session.desktop.sideWork, "Yedek alınıyor", [&](const Progress& progress) {
            taken = backup::takeBackup(books, folder, now, onlookerOf(progress));
        });
        return taken;
    } catch (const backup::GivenUp&) {
        f.session.desktop.dialogs.tell("Yedekten vazgeçildi. Yarım kalan kopya silindi.", Icon::Information);
        return std::nullopt;
    } catch (const backup::Refusal& refusal) {
        failure = refusal.what();
    } catch (const store::StoreError& error) {
        failure = error.description();
    }
    f.session.desktop.dialogs.tell(failure + "\n\nYedek alınmadı; defter olduğu gibi duruyor.",
                                   Icon::Exclamation);
    return std::nullopt;
}

void cmdYedekAl_Click(FrmYedek& f) {
    const int row = f.lstYer.listIndex();
    if (row < 0) return f.session.desktop.dialogs.tell("Yedeğin gideceği yeri seçin.", Icon::Exclamation);
    const DateTime now = f.session.desktop.clock.now();
    const auto taken = takeInto(f, f.shownFolders[static_cast<std::size_t>(row)], now);
    if (!taken) return;
    f.session.desktop.dialogs.tell(describe(*taken, now),
                                   taken->newer ? Icon::Exclamation : Icon::Information);
    f.forms().unload(f);
}

} // namespace

FrmYedek::FrmYedek(Forms& itsForms, Session& itsSession)
    : Form(itsForms, "frmYedek", "Yedek Al"), session(itsSession) {
    onLoad = [this] { fillPlaces(*this); };
    onActivate = [this] { lstYer.setFocus(); };
    closeOnEscape(*this);
    lstYer.onClick = [this] { choosePlace(*this, lstYer.listIndex()); };
    lstYer.onDblClick = [this] { cmdYedekAl_Click(*this); };
    lstYer.onKeyDown = [this](KeyEvent& event) {
        if (event.key == Key::Enter) cmdYedekAl_Click(*this);
    };
    cmdBaskaKlasor.onClick = [this] { cmdBaskaKlasor_Click(*this); };
    cmdYedekAl.onClick = [this] { cmdYedekAl_Click(*this); };
    cmdCikis.onClick = [this] { forms().unload(*this); };
}

std::unique_ptr<Form> makeFrmYedek(Forms& forms, Session& session) {
    return std::make_unique<FrmYedek>(forms, session);
}

} // namespace veldona
