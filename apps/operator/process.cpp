#include "apps/operator/process.h"
#include "core/delivered.h"
#include "core/session.h"
#include "core/startup.h"
#include "platform/store/faces/adodb.h"

#include <filesystem>
#include <iostream>

#include "core/bookpasswords.h"
#include "core/startpassword.h"

namespace veldona::console {

bool Process::PrintingOpener::open(const std::string& nativePath) {
    std::cout << "opened: " << nativePath << '\n';
    return true;
}

Process::Process(const std::string& folder, const RegisterScreens& screens, Clock& clock, Dialogs& dialogs,
                 FormHost& host)
    : desktop_{clock, dialogs, events_, opener_, Paths(folder), {}, DataSources(folder + "/ODBC.INI")},
      forms_(std::make_unique<Forms>(host)), session_(std::make_unique<Session>(desktop_, *forms_)) {
    // The program is installed there, whether or not a database lies beside it.
    std::filesystem::create_directories(desktop_.paths.toNative(kInstallFolder));
    screens(*forms_, *session_);
}

// Screens hold recordsets of the session, so they go first.
Process::~Process() {
    forms_.reset();
}

void Process::start() {
    started_ = true;
    passwords::forget(); // what an earlier run was told, this one isn't
    forms_->dispatch([this] { failed_ = !knowPassword(*session_) || !startSession(*session_); });
    if (session_->gBaglanti && session_->gBaglanti->isOpen()) early_.reset();
}

void Process::quit() {
    // At most as many steps as there are screens: one that cannot unload must not hold up the end.
    for (std::size_t left = forms_->loadedForms().size(); left > 0 && forms_->active() != nullptr; --left) {
        forms_->dispatch([this] { forms_->unload(*forms_->active()); });
    }
    forms_->dispatch([this] { forms_->endProcess(); });
}

bool Process::hasEnded() const {
    return started_ && (failed_ || forms_->ended() || forms_->loadedForms().empty());
}

adodb::Connection& Process::connection() {
    if (session_->gBaglanti && session_->gBaglanti->isOpen()) return *session_->gBaglanti;
    if (!early_) {
        auto connection = std::make_unique<adodb::Connection>(session_->workspace);
        const auto password = passwordOfBooks(desktop_.paths.toNative(kDatabasePath));
        connection->openFile(kDatabasePath, password.value_or(deliveredPassword()).text());
        early_ = std::move(connection);
    }
    return *early_;
}

} // namespace veldona::console
