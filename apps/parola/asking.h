// How a tool comes to the password of books that have one of their own: from its standard input, from the
// desktop's key store, or from who sits at the terminal. Never from an option, which every user of the
// machine can read.
#pragma once

#include <optional>
#include <string>

#include "apps/tool/optionreader.h"
#include "platform/runtime/secret.h"

namespace veldona::parola {

// Adds `name`, whose one value is "-": the first line of the standard input. Any other value is refused
// without being repeated.
void addPasswordOption(OptionReader& reader, const char* name, bool& fromInput);

// Finds the passwords of files, books and backups of them, and makes them known to this process.
class Asking {
public:
    // `fromInput`: the standard input has one on each line, in the order in which they are needed; nobody is
    // asked then.
    explicit Asking(bool fromInput) : fromInput_(fromInput) {}

    // False where the file opens by none of those that anybody here has. True also where there is nothing to
    // be opened.
    [[nodiscard]] bool find(const std::string& file);
    // The same; raises runtime_error where the file is known to have a password of its own. Any other one is
    // rather damaged, and who opens it says so.
    void require(const std::string& file);

private:
    bool fromInput_;
};

// A line of the standard input without its end; nothing behind the last one.
[[nodiscard]] std::optional<Secret> lineOfInput();
// What is typed at the terminal, unseen; nothing where there is no terminal or it was given up.
[[nodiscard]] std::optional<Secret> askAtTerminal(const std::string& question);

} // namespace veldona::parola
