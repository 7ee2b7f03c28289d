#include "apps/veldona/backupmenu.h"

#include <filesystem>

#include <QLocale>
#include <QMessageBox>
#include <QPushButton>

#include "apps/veldona/restoredialog.h"
#include "apps/veldona/waiting.h"
#include "backup/copy.h"
#include "backup/keeping.h"
#include "backup/refusal.h"
#include "backup/restore.h"
#include "backup/taking.h"
#include "core/session.h"
#include "platform/store/dialect/storeerror.h"
#include "ui/dialogs.h"
#include "ui/host.h"

namespace veldona {

namespace {

namespace fs = std::filesystem;

std::string countsOf(const backup::Picture& picture) {
    const auto count = [&picture](const char* table, const char* word) {
        const auto found = picture.rows.find(table);
        const qlonglong rows = found == picture.rows.end() ? 0 : found->second;
        return QLocale(QLocale::Turkish).toString(rows).toStdString() + word;
    };
    return count("MUSTKAYIT", " müşteri, ") + count("ISLEMNOTABLO", " satış, ") +
           count("TAKSITODENEN", " ödeme");
}

std::string timeText(DateTime at) {
    char text[32];
    std::snprintf(text, sizeof text, "%02d/%02d/%04d %02d:%02d", at.day(), at.month(), at.year(), at.hour(),
                  at.minute());
    return text;
}

} // namespace

BackupMenu::BackupMenu(WindowHost& host, Clock& clock, const Paths& paths)
    : host_(host), clock_(clock), books_(paths.toNative(kDatabasePath)), folder_(backup::usualFolder(paths)) {
}

template <class Act> bool BackupMenu::attemptTold(Act act, const char* kept) {
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

void BackupMenu::take() {
    backup::Taken taken;
    const DateTime now = clock_.now();
    const bool done = attemptTold(
        [&] {
            runBeside(host_, "Defterin yedeği alınıyor ve denetleniyor…",
                      [&] { taken = backup::takeBackup(books_, folder_, now); });
        },
        "Yedek alınmadı; defter olduğu gibi duruyor.");
    if (!done) return;
    const std::string warning = backup::warningOf(taken);
    tell("Yedek alındı ve denetlendi.\n\nDosya: " + taken.file + "\nZaman: " + timeText(now) + "\nİçinde: " +
             countsOf(taken.picture) + "\nSon ödeme: " + backup::shownDate(taken.picture.newestPayment) +
             (warning.empty() ? "" : "\n\n" + warning),
         !warning.empty());
}

bool BackupMenu::choose() {
    chosen_.reset();
    std::vector<backup::Restorable> all;
    if (!attemptTold([&] { all = backup::listRestorable(folder_, books_); }, "Hiçbir şey değişmedi."))
        return false;
    if (all.empty()) {
        tell("Alınmış yedek yok: " + folder_, false);
        return false;
    }
    std::optional<std::string> wanted;
    {
        RestoreDialog dialog(host_.frontWindow(), folder_, std::move(all));
        if (host_.run(dialog) == QDialog::Accepted) wanted = dialog.chosen();
    }
    if (wanted && agrees(*wanted)) chosen_ = wanted;
    return chosen_.has_value();
}

bool BackupMenu::agrees(const std::string& backup) {
    backup::Loss loss;
    const bool looked = attemptTold(
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
    const bool done = attemptTold(
        [&] {
            runBeside(host_, "Yedek yerine konuyor…", [&] { setAside = backup::restore(from, books_, now); });
        },
        "Yedeğe dönülmedi; defter olduğu gibi duruyor.");
    if (!done) return;
    tell("Yedek yerine kondu ve denetlendi: " + fs::path(from).filename().string() +
             (setAside.empty() ? "" : "\n\n" + backup::toldOf(setAside)),
         false);
}

bool BackupMenu::hasBackups() const {
    try {
        return !backup::listRestorable(folder_, books_).empty();
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
