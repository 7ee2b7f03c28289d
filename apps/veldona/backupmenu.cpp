#include "apps/veldona/backupmenu.h"

#include <filesystem>

#include <QMessageBox>
#include <QPushButton>

#include "apps/veldona/restoredialog.h"
#include "apps/veldona/waiting.h"
#include "backup/keeping.h"
#include "backup/lastbackup.h"
#include "backup/refusal.h"
#include "backup/restore.h"
#include "backup/taking.h"
#include "core/bookpasswords.h"
#include "core/delivered.h"
#include "core/tell.h"
#include "platform/runtime/password.h"
#include "platform/store/dialect/storeerror.h"
#include "ui/dialogs.h"
#include "ui/filechoice.h"
#include "ui/host.h"

namespace veldona {

namespace {

namespace fs = std::filesystem;

} // namespace

BackupMenu::BackupMenu(WindowHost& host, Clock& clock, const Paths& paths, Media* media)
    : host_(host), clock_(clock), media_(media), books_(paths.toNative(kDatabasePath)),
      folder_(backup::usualFolder(paths)) {}

template <class Act> bool BackupMenu::attemptReported(Act act, const char* kept) {
    std::string failure;
    try {
        act();
        return true;
    } catch (const backup::Refusal& refusal) {
        failure = refusal.what();
    } catch (const store::StoreError& error) {
        failure = error.description();
    }
    tell(failure + "\n\n" + kept, true);
    return false;
}

// The usual one, the one that the last backup went to, and those of the disks that are plugged in.
std::set<std::string> BackupMenu::folders() const {
    std::set<std::string> all = {folder_};
    if (const auto last = backup::findLastBackup(books_, folder_)) {
        const fs::path folder = fs::path(last->file).parent_path();
        std::error_code unreachable;
        if (!fs::equivalent(folder, folder_, unreachable)) all.insert(folder.string());
    }
    if (media_ != nullptr)
        for (const Medium& medium : media_->pluggedIn())
            all.insert(backup::folderOn(medium.folder));
    return all;
}

bool BackupMenu::choose() {
    chosen_.reset();
    std::vector<backup::Restorable> all;
    if (!attemptReported([&] { all = backup::listRestorable(folders(), books_); }, "Hiçbir şey değişmedi."))
        return false;
    std::optional<std::string> wanted;
    {
        RestoreDialog dialog(host_.frontWindow(), folder_, std::move(all), [this] {
            return askForFile(host_, "Yedek dosyasını seçin", "Yedekler ve defterler (*.mdb)",
                              QString::fromStdString(folder_));
        });
        if (host_.run(dialog) == QDialog::Accepted) wanted = dialog.chosen();
    }
    if (wanted && agrees(*wanted)) chosen_ = wanted;
    return chosen_.has_value();
}

void BackupMenu::knowPasswordOf(const std::string& backup) {
    WindowDialogs dialogs(host_);
    while (!passwordOfBooks(backup)) {
        const auto typed = dialogs.password(
            "Yedeğin başka bir parolası varsa yazın; yoksa yedek bozuktur:", "Yedekten Dön", false);
        if (!typed) return;
        const Secret password = passwordOf(typed->password.text());
        if (opensBy(backup, password))
            passwords::learn(password);
        else
            tell("Parola yanlış.", true);
    }
}

bool BackupMenu::agrees(const std::string& backup) {
    knowPasswordOf(backup);
    backup::Loss loss;
    const bool looked = attemptReported(
        [&] {
            runBeside(host_, "Yedek denetleniyor…", [&] { loss = backup::lossOfRestoring(backup, books_); });
        },
        "Bu yedeğe dönülemez. Hiçbir şey değişmedi.");
    if (!looked) return false;
    QMessageBox box(QMessageBox::Warning, "Yedekten Dön", "Bu yedeğe dönülsün mü?", QMessageBox::NoButton,
                    host_.frontWindow());
    box.setTextFormat(Qt::PlainText);
    box.setInformativeText(QString::fromStdString(
        fs::path(backup).filename().string() + "\n\n" + loss.text +
        "\nŞimdiki defter silinmez, yanında başka bir adla saklanır. Program yeniden açılır; öteki "
        "bilgisayarlarda program kapalı olmalıdır."));
    const QPushButton* yes = box.addButton("&Evet, Yedeğe Dön", QMessageBox::YesRole);
    QPushButton* no = box.addButton("&Hayır", QMessageBox::NoRole);
    box.setDefaultButton(no);
    box.setEscapeButton(no);
    host_.run(box);
    return box.clickedButton() == yes;
}

void BackupMenu::putBack() {
    const std::string from = *std::exchange(chosen_, std::nullopt);
    std::vector<std::string> setAside;
    const DateTime now = clock_.now();
    const bool done = attemptReported(
        [&] {
            runBeside(host_, "Yedek yerine konuyor…", [&] { setAside = backup::restore(from, books_, now); });
        },
        "Yedeğe dönülmedi; defter olduğu gibi duruyor.");
    if (!done) return;
    tell("Yedek yerine kondu ve denetlendi: " + fs::path(from).filename().string() +
             (setAside.empty() ? "" : "\n\n" + backup::describe(setAside)),
         false);
}

bool BackupMenu::hasBackups() const {
    try {
        return !backup::listRestorable(folders(), books_).empty();
    } catch (const backup::Refusal&) {
        return false; // the start has told of the books, and there is nothing to offer
    }
}

bool BackupMenu::offerAfterFailedStart() {
    if (!backup::areDamaged(books_) || !hasBackups()) return false;
    QMessageBox box(QMessageBox::Warning, kProgramTitle,
                    "Defter okunamıyor. Alınmış yedeklerden birine dönülsün mü?", QMessageBox::NoButton);
    const QPushButton* yes = box.addButton("&Yedekleri Göster", QMessageBox::YesRole);
    QPushButton* no = box.addButton("&Hayır", QMessageBox::NoRole);
    box.setDefaultButton(no);
    box.setEscapeButton(no);
    host_.run(box);
    return box.clickedButton() == yes && choose();
}

void BackupMenu::tell(const std::string& text, bool isFailure) {
    WindowDialogs(host_).tell(text, isFailure ? Icon::Exclamation : Icon::Information);
}

} // namespace veldona
