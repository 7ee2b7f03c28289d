// What an operator waits for in front of the windows: from the act until the window that shows it is painted.
//
// The real windows without a display (Qt's offscreen platform), as large as a shop's small screen: the
// widgets lay out and paint as they do in front of an operator, into memory.
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include <QAbstractItemView>
#include <QApplication>
#include <QEvent>

#include "apps/screens.h"
#include "bench/overshops.h"
#include "bench/shopcopy.h"
#include "core/formframe.h"
#include "core/session.h"
#include "core/showscreen.h"
#include "core/startup.h"
#include "customers/customerfinder.h"
#include "ledger/mainscreen.h"
#include "platform/controls/forms.h"
#include "platform/controls/userinput.h"
#include "platform/store/faces/adodb.h"
#include "ui/host.h"
#include "ui/housestyle.h"
#include "ui/screens.h"
#include "ui/windowdesktop.h"

namespace veldona::bench {
namespace {

using Clock = std::chrono::steady_clock;

constexpr int kScreenWidth = 1366;
constexpr int kScreenHeight = 730; // below a panel

double millisecondsSince(Clock::time_point begun) {
    return std::chrono::duration<double, std::milli>(Clock::now() - begun).count();
}

// When the widget was painted last.
class Painted : public QObject {
public:
    explicit Painted(QWidget& widget) : widget_(widget) { widget.installEventFilter(this); }
    // Lets the windows come round until the widget has been painted and nothing waits to be painted any more.
    void wait() {
        while (!seen_)
            QCoreApplication::processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents, 10);
        QCoreApplication::sendPostedEvents();
        QCoreApplication::processEvents();
        seen_ = false;
    }
    void forget() { seen_ = false; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched == &widget_ && event->type() == QEvent::Paint) seen_ = true;
        return QObject::eventFilter(watched, event);
    }

private:
    QWidget& widget_;
    bool seen_ = false;
};

class Shown {
public:
    Shown(const std::string& root, DateTime now)
        : desktop_{clock_, dialogs_, pump_, opener_, Paths(root), {}, DataSources(root + "/ODBC.INI")},
          forms_(std::make_unique<Forms>(host_)), session_(std::make_unique<Session>(desktop_, *forms_)) {
        clock_.set(now);
        drawScreens(host_);
        host_.timersRun = false;
        registerScreens(*forms_, *session_);
        if (!startSession(*session_)) throw std::runtime_error("the start failed");
    }
    ~Shown() { forms_.reset(); }
    Shown(const Shown&) = delete;
    Shown& operator=(const Shown&) = delete;

    WindowHost& host() { return host_; }
    Session& session() { return *session_; }
    Form& form(const char* name) {
        Form* found = forms_->loaded(name);
        if (found == nullptr) throw std::runtime_error(std::string("not open: ") + name);
        return *found;
    }
    FormWindow& window(const char* name) { return *host_.window(form(name)); }
    QWidget& grid(const char* name, const char* control = "grdList") {
        auto* view = window(name).findChild<QAbstractItemView*>(control);
        if (view == nullptr) throw std::runtime_error("no grid in the window");
        return *view->viewport();
    }

private:
    class NoOpener : public Opener {
        bool open(const std::string&) override { return false; }
    };
    ManualClock clock_;
    RecordingDialogs dialogs_;
    WindowHost host_{clock_};
    WindowPump pump_{host_};
    NoOpener opener_;
    Desktop desktop_;
    std::unique_ptr<Forms> forms_;
    std::unique_ptr<Session> session_;
};

void print(const char* step, std::vector<double> times, double goal) {
    std::sort(times.begin(), times.end());
    std::printf("  %-44s %9.1f ms   (longest %.1f ms; to reach: %.0f ms)\n", step, times[times.size() / 2],
                times.back(), goal);
}

// A letter into the name, gone again, and the next: each narrows the grid or opens it to all customers.
void timeLetters(Shown& shop) {
    Form& main = shop.form("frmMainVeldona");
    Painted grid(shop.grid("frmMainVeldona"));
    QWidget* name = shop.window("frmMainVeldona").findChild<QWidget*>("txtAd");
    name->setFocus();
    std::vector<double> letters, all;
    for (const char32_t letter : std::u32string(U"aemhszfgbnctodikuy")) {
        for (const bool typed : {true, false}) {
            QCoreApplication::processEvents();
            grid.forget();
            const auto begun = Clock::now();
            KeyEvent key;
            if (typed)
                key.character = letter;
            else
                key.key = Key::Backspace;
            shop.host().typeKey(main, key);
            grid.wait();
            (typed ? letters : all).push_back(millisecondsSince(begun));
        }
    }
    print("the customer grid after a letter", letters, 50);
    print("the customer grid, all customers again", all, 50);
}

void timeFinder(Shown& shop) {
    Session& session = shop.session();
    std::vector<double> times;
    for (int run = 0; run < 9; ++run) {
        showScreen(session, "frmCarihesapSec", Kip::Modeless);
        auto& finder = dynamic_cast<FrmCarihesapSec&>(shop.form("frmCarihesapSec"));
        shop.host().flush();
        QCoreApplication::processEvents();
        Painted grid(shop.grid("frmCarihesapSec"));
        const auto begun = Clock::now();
        if (!user::click(finder.cmdBul)) throw std::runtime_error("the finder does not search");
        shop.host().flush();
        grid.wait();
        times.push_back(millisecondsSince(begun));
        session.forms.unload(finder);
        QCoreApplication::processEvents();
    }
    print("the finder's full list", times, 100);
}

// What is looked for by one letter, by words of both sides and by a telephone; the index is made at the first
// opening, and again where a sale was written since.
void timeSearch(Shown& shop) {
    Session& session = shop.session();
    std::vector<double> openings, keys;
    for (int run = 0; run < 5; ++run) {
        session.gBaglanti->execute("UPDATE MUSTKAYIT SET YAS = '" + std::to_string(run) +
                                   "' WHERE HSTNO = '1'");
        const auto begun = Clock::now();
        showScreen(session, "frmArama", Kip::Modeless);
        Form& search = shop.form("frmArama");
        Painted grid(shop.grid("frmArama", "grdSonuc"));
        shop.host().flush();
        grid.wait();
        openings.push_back(millisecondsSince(begun));
        for (const std::string_view typed : {"a", "hacer camasir", "0532 12", "5123", "e i u o"}) {
            for (const char letter : typed) {
                QCoreApplication::processEvents();
                grid.forget();
                const auto pressed = Clock::now();
                shop.host().typeKey(search, {.character = static_cast<unsigned char>(letter)});
                grid.wait();
                keys.push_back(millisecondsSince(pressed));
            }
            for (std::size_t i = 0; i < typed.size(); ++i)
                shop.host().typeKey(search, {.key = Key::Backspace});
        }
        session.forms.unload(search);
        QCoreApplication::processEvents();
    }
    print("the search opened, all read anew", openings, 500);
    print("the search after a key", keys, 50);
}

long residentMegabytes() {
    std::ifstream status("/proc/self/statm");
    long size = 0, resident = 0;
    status >> size >> resident;
    return resident * sysconf(_SC_PAGESIZE) / (1024L * 1024);
}

void benchShop(const std::string& root, DateTime now) {
    const Copy copy(root);
    std::printf("%s\n", root.c_str());
    std::vector<double> starts;
    std::unique_ptr<Shown> shop;
    for (int run = 0; run < 5; ++run) {
        shop.reset();
        const auto begun = Clock::now();
        shop = std::make_unique<Shown>(copy.root(), now);
        FormWindow& window = shop->window("frmMainVeldona");
        window.showNormal();
        window.resize(kScreenWidth, kScreenHeight);
        shop->host().flush();
        Painted grid(shop->grid("frmMainVeldona"));
        grid.wait();
        starts.push_back(millisecondsSince(begun));
    }
    print("the start to the first painted window", starts, 1000);
    timeLetters(*shop);
    timeFinder(*shop);
    timeSearch(*shop);
    std::printf("  %-44s %6ld MB\n", "memory of the whole program", residentMegabytes());
}

} // namespace
} // namespace veldona::bench

int main(int count, char** arguments) {
    setenv("QT_QPA_PLATFORM", "offscreen", 0);
    QApplication application(count, arguments);
    QApplication::setQuitOnLastWindowClosed(false);
    veldona::applyHouseStyle(application, 1);
    return veldona::bench::overShops("bench_windows", count, arguments, veldona::bench::benchShop);
}
