#include "bench/headless.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

#include "apps/screens.h"
#include "core/delivered.h"
#include "core/session.h"
#include "core/startup.h"
#include "platform/controls/userinput.h"

namespace veldona::bench {
namespace {

void mustHold(bool held, const char* what) {
    if (!held) throw std::runtime_error(std::string("the program did not take the operator's act: ") + what);
}

} // namespace

void Headless::Nobody::runModal(Form& form) {
    if (work) std::exchange(work, {})(form);
    if (!form.isUnloaded()) form.forms().unload(form);
}

Headless::Headless(const std::string& root, DateTime now)
    : desktop_{clock_, dialogs_, events_, opener_, Paths(root), {}, DataSources(root + "/ODBC.INI")},
      forms_(std::make_unique<Forms>(host_)), session_(std::make_unique<Session>(desktop_, *forms_)) {
    clock_.set(now);
    shop_ = registerScreens(*forms_, *session_);
    forms_->dispatch([this] { static_cast<void>(startSession(*session_)); });
    expectSaid("");
    screen_ = dynamic_cast<FrmMainVeldona*>(forms_->loaded("frmMainVeldona"));
    if (screen_ == nullptr) throw std::runtime_error("the main screen did not open");
    database_ = session_->workspace.open(kDatabasePath, kDeliveredPassword);
}

// Screens hold recordsets of the session, so they go first.
Headless::~Headless() {
    forms_.reset();
}

void Headless::type(const std::string& account) {
    mustHold(user::put(screen_->Text1, account), "Text1");
}

void Headless::select(const std::string& sale) {
    const auto& sales = screen_->L3.rows();
    const auto found = std::find(sales.begin(), sales.end(), sale);
    if (found == sales.end()) throw std::runtime_error("the account does not list its sale " + sale);
    mustHold(user::clickRow(screen_->L3, static_cast<int>(found - sales.begin())), "L3");
}

void Headless::pressEnter() {
    mustHold(user::pressKey(*screen_, {.key = Key::Enter}), "Enter");
}

void Headless::collect() {
    mustHold(user::click(screen_->Command1), "Command1");
}

void Headless::openCorrection() {
    mustHold(user::dblClickRow(screen_->L4, screen_->L4.count() - 1), "L4");
}

void Headless::inModal(const std::function<void(Form&)>& work, const std::function<bool()>& open) {
    bool opened = false;
    host_.work = [&](Form& form) {
        const Forms::Hold hold(*forms_);
        opened = true;
        work(form);
    };
    mustHold(open() && opened, "the screen that was to open");
}

void Headless::inSaleScreen(const std::function<void(FrmSatis&)>& work) {
    inModal([&](Form& form) { work(dynamic_cast<FrmSatis&>(form)); },
            [&] { return user::click(screen_->cmdSatis); });
}

void Headless::inPaymentCorrection(const std::function<void(Form&)>& work) {
    inModal(work, [&] { return user::dblClickRow(screen_->L1, 0); });
}

void Headless::expectSaid(const std::string& expected) {
    const bool asExpected = expected.empty() ? dialogs_.said.empty()
                                             : dialogs_.said.size() == 1 && dialogs_.said[0].text == expected;
    if (!asExpected)
        throw std::runtime_error("the program said: " +
                                 (dialogs_.said.empty() ? "nothing" : dialogs_.said[0].text));
    dialogs_.said.clear();
}

void Headless::expectBlankBoxes() {
    std::erase_if(dialogs_.said, [](const auto& box) { return box.text.empty(); });
    expectSaid("");
}

} // namespace veldona::bench
