#include "core/startpassword.h"

#include <string>

#include "core/bookpasswords.h"
#include "core/delivered.h"
#include "core/session.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/password.h"
#include "platform/store/engine/passwordfit.h"

namespace veldona {
namespace {

constexpr int kTries = 3;
constexpr const char* kWrong = "Parola yanlış.";
constexpr const char* kThreeWrong =
    "Parola üç kez yanlış yazıldı. Program kapanıyor; defter olduğu gibi duruyor.\n\nParoladan eminseniz "
    "defterin "
    "dosyası bozulmuş olabilir: bir yedeğe dönün. Parola yitirildiyse onu kimse geri getiremez; yalnız eski "
    "parolayla alınmış bir yedek açılır.";

bool isTaken(Session& session, const std::string& books, const Secret& password) {
    if (!opensBy(books, password)) return false;
    passwords::learn(password);
    session.gSifre = password.text();
    return true;
}

void keep(Session& session, const std::string& books, const Secret& password) {
    const std::string failure = session.desktop.keys->keep(books, password);
    if (!failure.empty()) session.desktop.dialogs.tell(failure, Icon::Exclamation);
}

// The operator who gives it up is told nothing.
bool isTyped(Session& session, const std::string& books, const char* prompt) {
    Dialogs& dialogs = session.desktop.dialogs;
    for (int left = kTries; left > 0; --left) {
        const auto answer = dialogs.password(prompt, kProgramTitle, session.desktop.keys != nullptr);
        if (!answer) return false;
        const Secret password = passwordOf(answer->password.text());
        if (isTaken(session, books, password)) {
            if (answer->keep) keep(session, books, password);
            return true;
        }
        dialogs.tell(left == 1 ? std::string(kThreeWrong)
                               : std::string(kWrong) + " Kalan deneme: " + std::to_string(left - 1),
                     Icon::Exclamation);
    }
    return false;
}

} // namespace

bool knowPassword(Session& session) {
    const std::string books = session.desktop.paths.toNative(kDatabasePath);
    if (!isNotedAsOwn(books)) return true;
    if (const auto known = passwordOfBooks(books)) {
        session.gSifre = known->text();
        return true;
    }
    KeyStore* keys = session.desktop.keys;
    const auto kept = keys == nullptr ? std::nullopt : keys->find(books);
    return (kept && isTaken(session, books, *kept)) || isTyped(session, books, "Defterin parolası:");
}

bool askForUnnotedPassword(Session& session) {
    const std::string books = session.desktop.paths.toNative(kDatabasePath);
    if (isNotedAsOwn(books) || passwordOfBooks(books) || !store::looksSealed(books)) return false;
    return isTyped(session, books, "Defterin kendi parolası varsa yazın; yoksa Vazgeç deyin:") &&
           noteAsOwn(books, true);
}

} // namespace veldona
