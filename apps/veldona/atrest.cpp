#include "apps/veldona/atrest.h"

#include <algorithm>
#include <chrono>
#include <utility>

#include <QApplication>
#include <QEvent>

#include "platform/runtime/error.h"

namespace veldona {

namespace {

using std::chrono::milliseconds;
using std::chrono::steady_clock;

constexpr milliseconds kStep(8); // a key that comes meanwhile is not missed
constexpr int kPauses = 3;       // as long as the step, which leaves a server to the others
constexpr milliseconds kLongest(250);

bool isInput(const QEvent& event) {
    switch (event.type()) {
    case QEvent::KeyPress:
    case QEvent::MouseButtonPress:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::InputMethod:
        return true;
    default:
        return false;
    }
}

} // namespace

AtRest::AtRest(WindowHost& windows, Session& session, std::shared_ptr<ShopReckoning> shop, milliseconds rest)
    : windows_(windows), session_(session), shop_(std::move(shop)), rest_(rest) {
    next_.setSingleShot(true);
    QObject::connect(&next_, &QTimer::timeout, this, [this] { step(); });
    next_.start(rest_);
    qApp->installEventFilter(this);
}

bool AtRest::eventFilter(QObject*, QEvent* event) {
    if (isInput(*event)) next_.start(rest_);
    return false;
}

// The main screen is in front, and nothing is under way.
bool AtRest::rests() const {
    const Form* front = session_.forms.active();
    return front && front->name() == "frmMainVeldona" && !windows_.asks() && !windows_.keepsInputOut() &&
           !windows_.waitsForLock() && session_.gBaglanti && session_.gBaglanti->isOpen() &&
           !session_.gBaglanti->inTransaction();
}

// What fails here fails nobody: whoever opens the list hears of it. It is tried again behind the next rest.
void AtRest::step() {
    if (!rests()) return next_.start(rest_);
    const auto begun = steady_clock::now();
    bool isMore = false;
    session_.forms.dispatch([&] {
        Err untold;
        if (!attempt(untold, [&] {
                isMore = shop_->readAhead(*session_.gBaglanti,
                                          [&] { return steady_clock::now() - begun < kStep; });
            }))
            static_cast<void>(session_.workspace.takeDiskFailure());
    });
    const auto taken = std::chrono::duration_cast<milliseconds>(steady_clock::now() - begun);
    if (isMore) next_.start(std::clamp(kPauses * taken, kStep, kLongest));
}

} // namespace veldona
