// The guide's pictures of what stands only around the screens: questions, menus, the preview, the backups.
// The screens themselves are pictured by the operator console (screens.op).
//
//   guide_pictures take ROOT FOLDER     on the books below ROOT; where there are none, the first start
//   guide_pictures compare OLD NEW      pixel by pixel; 1 where they differ, with their names
//
// ROOT is best a relative path: it stands in some of the messages.
#include <cstdlib>
#include <deque>
#include <filesystem>
#include <iostream>
#include <optional>
#include <set>
#include <string>

#include <QAbstractButton>
#include <QApplication>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QPainter>
#include <QProgressBar>
#include <QTableWidget>
#include <QTimer>

#include "apps/screens.h"
#include "apps/veldona/backupmenu.h"
#include "apps/veldona/firststart.h"
#include "apps/veldona/menus.h"
#include "core/delivered.h"
#include "core/session.h"
#include "core/startup.h"
#include "platform/controls/userinput.h"
#include "platform/desktop/desktop.h"
#include "platform/desktop/ownfiles.h"
#include "ui/dialogs.h"
#include "ui/host.h"
#include "ui/housestyle.h"
#include "ui/reportpreview.h"
#include "ui/screens.h"
#include "ui/turkishtexts.h"

namespace veldona::guide {

namespace {

namespace fs = std::filesystem;

void save(const QPixmap& picture, const fs::path& file) {
    if (picture.save(QString::fromStdString(file.string()), "PNG", 0)) return; // 0: packed as small as can be
    std::cerr << file.string() << ": not written\n";
    std::exit(1);
}

// Each dialog that comes up is pictured under the name that is next in line, and answered.
class Photographer {
public:
    explicit Photographer(fs::path folder) : folder_(std::move(folder)) {
        QObject::connect(&watch_, &QTimer::timeout, &watch_, [this] { look(); });
        watch_.start(20);
    }
    // The next dialog. No name: it is not pictured. A question is answered yes or no.
    void expect(const std::string& name, bool yes = true) { next_.push_back({name, yes}); }
    void take(const QPixmap& picture, const std::string& name) { save(picture, folder_ / (name + ".png")); }
    [[nodiscard]] std::optional<std::string> missed() const {
        if (next_.empty()) return std::nullopt;
        return next_.front().name;
    }

private:
    struct Shot {
        std::string name;
        bool yes;
    };

    void look() {
        auto* front = dynamic_cast<QDialog*>(QApplication::activeModalWidget());
        if (front && front->findChild<QProgressBar*>()) front = nullptr; // goes by itself
        if (front != seen_) looks_ = 0;
        seen_ = front;
        // A few rounds, so that it has its last size; a list is waited for until it is read.
        if (!front || ++looks_ < 5 || isBeingRead(*front)) return;
        if (next_.empty()) {
            const auto* box = dynamic_cast<QMessageBox*>(front);
            std::cerr << "a dialog that nobody expects: "
                      << (box ? box->text() : front->windowTitle()).toStdString() << '\n';
            std::exit(1);
        }
        const Shot shot = next_.front();
        next_.pop_front();
        if (!shot.name.empty()) take(front->grab(), shot.name);
        answer(*front, shot.yes);
    }
    static bool isBeingRead(const QDialog& dialog) {
        const auto* table = dialog.findChild<QTableWidget*>();
        return table && !table->item(table->rowCount() - 1, 3);
    }
    static void answer(QDialog& dialog, bool yes) {
        const auto* box = dynamic_cast<QMessageBox*>(&dialog);
        if (!box) return yes ? dialog.accept() : dialog.reject();
        for (QAbstractButton* button : box->buttons())
            if (box->buttons().size() == 1 || yes == (box->buttonRole(button) == QMessageBox::YesRole))
                return button->click();
    }

    fs::path folder_;
    std::deque<Shot> next_;
    QTimer watch_;
    const QDialog* seen_ = nullptr;
    int looks_ = 0;
};

class Counter {
public:
    Counter(const std::string& root, const fs::path& folder)
        : desktop_(root, windows_, clock_), camera_(folder) {
        clock_.set(DateTime::of(2026, 11, 22, 10, 30, 0));
        windows_.timersRun = false;
        drawScreens(windows_);
        session_.reportDesk = &reports_;
        registerScreens(forms_, session_);
        windows_.addTo("frmMainVeldona", [this](FormWindow& window) { bindMenus(window, backups_, [] {}); });
    }

    void takeAll() {
        const bool isFirstStart = !fs::exists(desktop_.desktop.paths.toNative(kDatabasePath));
        if (isFirstStart) camera_.expect("ilk-acilis");
        if (!FirstStart(windows_, desktop_.dialogs, desktop_.desktop.paths, backups_).findBooks() ||
            !startSession(session_)) {
            std::cerr << "the program did not start\n";
            std::exit(1);
        }
        isFirstStart ? takeLetterhead() : takeWork();
        if (const auto name = camera_.missed()) {
            std::cerr << "no dialog came for " << *name << '\n';
            std::exit(1);
        }
    }

private:
    // Made before the session and gone after it.
    struct DesktopOf {
        DesktopOf(const std::string& root, WindowHost& windows, Clock& clock)
            : dialogs(windows),
              desktop{clock,   dialogs, pump,  opener, Paths(root), {}, DataSources(root + "/ODBC.INI"),
                      nullptr, nullptr, &media} {}
        // A disk that is plugged in, and room that is the same wherever the pictures are taken.
        class Plugged : public Media {
        public:
            std::vector<Medium> pluggedIn() override { return {{"USB DİSK", "/media/kasa/USB DİSK"}}; }
            std::optional<std::uintmax_t> freeRoom(const std::string& folder) override {
                return folder.starts_with("/media") ? 14'600'000'000 : 212'400'000'000;
            }
        };
        class Shut : public Opener {
        public:
            bool open(const std::string&) override { return false; }
        };
        WindowDialogs dialogs;
        EventPump pump;
        Shut opener;
        Plugged media;
        Desktop desktop;
    };

    Form& front() { return *forms_.active(); }
    FormWindow& window() { return *windows_.window(front()); }
    void put(const char* control, std::string_view text) { user::put(*front().find(control), text); }
    void press(Key key) { windows_.typeKey(front(), {.key = key}); }
    void settle() {
        windows_.flush();
        for (int round = 0; round < 5; ++round)
            QCoreApplication::processEvents();
    }
    QPixmap look() {
        settle();
        return window().grab();
    }

    void takeLetterhead() {
        put("txtUnvan", "Örnek Mobilya ve Beyaz Eşya Ticaret");
        put("txtAdres", "Cumhuriyet Mah. Atatürk Cd. No: 1 Düzce");
        put("txtFirmaAdi", "Örnek Mobilya");
        put("txtTel", "0380 500 00 00");
        user::focus(*front().find("txtUnvan"));
        camera_.take(look(), "antet");
    }
    void takeMenu(const char* which, const std::string& name) {
        auto* menu = window().findChild<QMenu*>(which);
        const auto* bar = window().findChild<QMenuBar*>();
        const QPoint below = bar->actionGeometry(menu->menuAction()).bottomLeft();
        menu->popup(bar->mapToGlobal(below));
        settle();
        QPixmap picture = window().grab();
        QPainter(&picture).drawPixmap(below, menu->grab());
        menu->close();
        camera_.take(picture.copy(0, 0, 480, 150), name);
    }
    void takeWork() {
        settle();
        takeMenu("mnuYedek", "yedek-menusu");
        takeMenu("mnuYardim", "yardim-menusu");
        camera_.expect("tuslar");
        press(Key::F1);

        put("Text1", "160");
        for (const Key key : {Key::Down, Key::Down, Key::Enter})
            press(key);
        put("mskOdenenPara", "120,00");
        camera_.expect("tahsilat-tamam");
        press(Key::F2);
        camera_.expect("makbuz");
        press(Key::F9);
        camera_.expect("ekstre");
        press(Key::F7);
        camera_.expect("satis-sil-sorusu", false);
        press(Key::F6);
        takeReport("cmdGunuGecenOdemeler", "gunu-gecen-rapor");
        takeReport("cmdTahsilatListesi", "tahsilat-listesi-rapor");
        takeBackups();
    }
    void takeReport(const char* button, const std::string& name) {
        // A modal screen is worked on from within its own loop.
        QTimer::singleShot(0, &windows_, [this, name] {
            const char* go = front().find("cmdRapor") ? "cmdRapor" : "cmdTamam";
            camera_.expect(name);
            user::click(*front().find(go));
            user::click(*front().find("cmdCikis"));
        });
        user::click(*front().find(button));
        settle();
    }
    void takeBackups() {
        for (const int day : {22, 23, 24}) {
            clock_.set(DateTime::of(2026, 11, day, 19, 0, 0));
            QTimer::singleShot(0, &windows_, [this, day] {
                if (day == 24) camera_.take(look(), "yedek-al");
                camera_.expect(day == 24 ? "yedek-alindi" : "");
                user::click(*front().find("cmdYedekAl"));
            });
            forms_.show("frmYedek", Kip::Modal);
        }
        clock_.set(DateTime::of(2026, 11, 25, 9, 15, 0));
        user::dblClickRow(*front().find("L3"), 0);
        put("mskOdenenPara", "120,00");
        camera_.expect("");
        press(Key::F2);
        camera_.expect("parola-sorusu", false);
        static_cast<void>(desktop_.dialogs.password("Defterin parolası:", kProgramTitle, true));
        camera_.expect("yedekten-don");
        camera_.expect("yedekten-don-sorusu", false);
        if (backups_.choose()) std::exit(1);
    }

    ManualClock clock_;
    WindowHost windows_{clock_};
    DesktopOf desktop_;
    WindowReportDesk reports_{windows_};
    Forms forms_{windows_};
    Session session_{desktop_.desktop, forms_};
    BackupMenu backups_{windows_, clock_, desktop_.desktop.paths};
    Photographer camera_;
};

std::set<std::string> picturesIn(const fs::path& folder) {
    std::set<std::string> names;
    for (const auto& entry : fs::directory_iterator(folder))
        if (entry.path().extension() == ".png") names.insert(entry.path().filename().string());
    return names;
}

bool areSame(const fs::path& old, const fs::path& fresh) {
    std::set<std::string> names = picturesIn(old);
    names.merge(picturesIn(fresh));
    bool same = true;
    for (const std::string& name : names) {
        const auto read = [&name](const fs::path& folder) {
            return QImage(QString::fromStdString((folder / name).string()))
                .convertToFormat(QImage::Format_RGB32);
        };
        const QImage before = read(old);
        const QImage now = read(fresh);
        const char* verdict = before.isNull() ? "is new"
                              : now.isNull()  ? "is made no more"
                              : before == now ? nullptr
                                              : "has changed";
        if (!verdict) continue;
        std::cout << name << ' ' << verdict << '\n';
        same = false;
    }
    return same;
}

int run(int argc, char** argv) {
    const std::string verb = argc == 4 ? argv[1] : "";
    if (verb == "compare") return areSame(argv[2], argv[3]) ? 0 : 1;
    if (verb != "take") {
        std::cerr << "usage: guide_pictures take ROOT FOLDER | compare OLD NEW\n";
        return 2;
    }
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QApplication::setCursorFlashTime(0);
    applyHouseStyle(application, 1);
    TurkishTexts texts;
    QCoreApplication::installTranslator(&texts);
    Counter(argv[2], argv[3]).takeAll();
    return 0;
}

} // namespace

} // namespace veldona::guide

int main(int argc, char** argv) {
    veldona::keepToOwner();
    return veldona::guide::run(argc, argv);
}
