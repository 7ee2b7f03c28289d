// Reads a command line: the options that a tool names, and the words that are none.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>

namespace veldona {

// What cannot be read on the command line, in a sentence.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

class OptionReader {
public:
    // `usage`: the page that stands behind the sentence where a word is not known.
    explicit OptionReader(std::string usage) : usage_(std::move(usage)) {}

    // What is written into has to stand until read() is through. A value is never empty.
    OptionReader& flag(const std::string& name, bool& into);
    OptionReader& value(const std::string& name, std::optional<std::string>& into);
    OptionReader& value(const std::string& name, std::function<void(const std::string&)> take);
    // A word that is no option; false: it is one too many.
    OptionReader& word(std::function<bool(const std::string&)> take);

    void read(std::span<const char* const> arguments) const;

private:
    [[noreturn]] void refuse(const std::string& word) const;

    std::string usage_;
    std::map<std::string, bool*> flags_;
    std::map<std::string, std::function<void(const std::string&)>> values_;
    std::function<bool(const std::string&)> word_;
};

} // namespace veldona
