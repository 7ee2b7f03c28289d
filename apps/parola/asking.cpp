#include "apps/parola/asking.h"

#include <signal.h>
#include <termios.h>
#include <unistd.h>

#include <filesystem>
#include <iostream>
#include <stdexcept>

#include "core/bookpasswords.h"
#include "platform/keystore/desktopkeys.h"
#include "platform/runtime/password.h"

namespace veldona::parola {
namespace {

constexpr int kTries = 3;

termios shown{}; // the terminal as it was, for the signal that ends the program while nothing is seen

void showAgain(int signal) {
    tcsetattr(STDIN_FILENO, TCSAFLUSH, &shown);
    ::signal(signal, SIG_DFL);
    raise(signal);
}

// As long as it lives nothing that is typed is seen.
class Unseen {
public:
    Unseen() {
        tcgetattr(STDIN_FILENO, &shown);
        for (const int each : {SIGINT, SIGTERM, SIGHUP, SIGQUIT})
            ::signal(each, showAgain);
        termios hidden = shown;
        hidden.c_lflag &= ~static_cast<tcflag_t>(ECHO);
        hidden.c_lflag |= ECHONL;
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &hidden);
    }
    ~Unseen() {
        tcsetattr(STDIN_FILENO, TCSAFLUSH, &shown);
        for (const int each : {SIGINT, SIGTERM, SIGHUP, SIGQUIT})
            ::signal(each, SIG_DFL);
    }
    Unseen(const Unseen&) = delete;
    Unseen& operator=(const Unseen&) = delete;
};

bool learnWhereItFits(const std::string& file, const std::optional<Secret>& password) {
    if (!password || !opensBy(file, *password)) return false;
    passwords::learn(*password);
    return true;
}

bool askedThreeTimes(const std::string& file) {
    for (int i = 0; i < kTries; ++i) {
        const auto typed = askAtTerminal(file + "\nDefterin parolası: ");
        if (!typed || typed->isEmpty()) return false;
        if (learnWhereItFits(file, typed)) return true;
        std::cerr << "Parola bu dosyanın parolası değil.\n";
    }
    return false;
}

} // namespace

void addPasswordOption(OptionReader& reader, const char* name, bool& fromInput) {
    reader.value(name, [&fromInput](const std::string& value) {
        if (value != "-")
            throw UsageError("Parola komut satırında verilmez, orada herkes okur: --parola - ile girişten "
                             "verin ya da seçeneği bırakın, sorulur.");
        fromInput = true;
    });
}

std::optional<Secret> lineOfInput() {
    std::string line;
    if (!std::getline(std::cin, line)) return std::nullopt;
    if (line.ends_with('\r')) line.pop_back();
    const Secret typed = Secret::taken(line);
    return passwordOf(typed.text());
}

std::optional<Secret> askAtTerminal(const std::string& question) {
    if (isatty(STDIN_FILENO) == 0) return std::nullopt;
    const Unseen unseen; // before the question: somebody may type at once
    std::cerr << question << std::flush;
    return lineOfInput();
}

bool Asking::find(const std::string& file) {
    if (passwordOfBooks(file)) return true;
    if (fromInput_) return learnWhereItFits(file, lineOfInput());
    return learnWhereItFits(file, DesktopKeys().find(file)) || askedThreeTimes(file);
}

void Asking::require(const std::string& file) {
    if (find(file)) return;
    if (fromInput_) throw std::runtime_error("Girişten okunan parola bu dosyanın parolası değil: " + file);
    if (isNotedAsOwn(file))
        throw std::runtime_error(file + " kendi parolasıyla açılır, o da burada yok. Parolayı --parola - ile "
                                        "girişten verin ya da programda \"Bu makinede sorma\" deyin.");
}

} // namespace veldona::parola
