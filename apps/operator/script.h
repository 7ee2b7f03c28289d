// A scenario as it is written: one action or expectation a line, a verb and its words.
//
// Words are parted by blanks; a text stands in double quotes, where \" \\ and \n are escapes and any other
// backslash is itself, so that a path may be written as it is read. A "#" at the start of a line is a
// comment. What cannot be read is an UnreadableLine, never a guess.
#pragma once

#include <istream>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace veldona::console {

class UnreadableLine : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Word {
    std::string text;
    bool quoted = false;
};

struct Line {
    std::string verb;
    std::vector<Word> words;
};

// Nothing for a blank line or a comment.
[[nodiscard]] std::optional<Line> readLine(std::string_view text);

class Script {
public:
    // `name` is what messages call it; `text` must outlive the script.
    Script(std::string name, std::istream& text) : name_(std::move(name)), text_(&text) {}

    // The next line that says something; nothing at the end.
    [[nodiscard]] std::optional<Line> next();
    // Whatever is left is not read any more.
    void stop() { stopped_ = true; }
    [[nodiscard]] const std::string& name() const { return name_; }
    // "file:line" of the line read last.
    [[nodiscard]] std::string place() const { return name_ + ":" + std::to_string(number_); }

private:
    std::string name_;
    std::istream* text_;
    int number_ = 0;
    bool stopped_ = false;
};

// The readings that verbs ask of a word; an UnreadableLine where it is none.
[[nodiscard]] int wholeNumber(const Word& word);
[[nodiscard]] bool choice(const Word& word, std::string_view yes, std::string_view no);

} // namespace veldona::console
