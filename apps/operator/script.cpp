#include "apps/operator/script.h"

#include <charconv>

#include "platform/controls/names.h"

namespace veldona::console {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool isBlank(char c) {
    return c == ' ' || c == '\t' || c == '\r';
}

// Reads the words of one line from left to right.
class WordReader {
public:
    explicit WordReader(std::string_view text) : rest_(text) {}

    std::optional<Word> next() {
        while (!rest_.empty() && isBlank(rest_.front()))
            rest_.remove_prefix(1);
        if (rest_.empty()) return std::nullopt;
        return rest_.front() == '"' ? quoted() : bare();
    }

private:
    Word bare() {
        std::size_t end = 0;
        while (end < rest_.size() && !isBlank(rest_[end]))
            ++end;
        Word word{std::string(rest_.substr(0, end)), false};
        rest_.remove_prefix(end);
        if (word.text.find('"') != std::string::npos) {
            throw UnreadableLine("a quote stands in the middle of a word: " + word.text);
        }
        return word;
    }

    Word quoted() {
        Word word{{}, true};
        rest_.remove_prefix(1);
        while (!rest_.empty() && rest_.front() != '"') {
            if (!escape(word.text)) {
                word.text += rest_.front();
                rest_.remove_prefix(1);
            }
        }
        if (rest_.empty()) throw UnreadableLine("the text is not closed by a quote");
        rest_.remove_prefix(1);
        if (!rest_.empty() && !isBlank(rest_.front())) {
            throw UnreadableLine("a blank must follow the closing quote");
        }
        return word;
    }

    bool escape(std::string& out) {
        if (rest_.size() < 2 || rest_[0] != '\\') return false;
        const char c = rest_[1];
        if (c != '"' && c != '\\' && c != 'n') return false;
        out += c == 'n' ? '\n' : c;
        rest_.remove_prefix(2);
        return true;
    }

    std::string_view rest_;
};

} // namespace

std::optional<Line> readLine(std::string_view text) {
    WordReader words(text);
    if (const auto begin = text.find_first_not_of(" \t\r"); begin == text.npos || text[begin] == '#') {
        return std::nullopt;
    }
    Line line;
    const Word verb = *words.next();
    if (verb.quoted) throw UnreadableLine("a line begins with a verb, not with a text");
    line.verb = verb.text;
    while (auto word = words.next())
        line.words.push_back(std::move(*word));
    return line;
}

std::optional<Line> Script::next() {
    std::string text;
    while (!stopped_ && std::getline(*text_, text)) {
        ++number_;
        std::string_view view = text;
        if (number_ == 1 && view.starts_with(kByteOrderMark)) view.remove_prefix(kByteOrderMark.size());
        if (auto line = readLine(view)) return line;
    }
    return std::nullopt;
}

int wholeNumber(const Word& word) {
    int number = 0;
    const char* const end = word.text.data() + word.text.size();
    const auto [read, failure] = std::from_chars(word.text.data(), end, number);
    if (word.quoted || failure != std::errc() || read != end) {
        throw UnreadableLine("a whole number should stand here: " + word.text);
    }
    return number;
}

bool choice(const Word& word, std::string_view yes, std::string_view no) {
    if (sameName(word.text, yes)) return true;
    if (sameName(word.text, no)) return false;
    throw UnreadableLine(std::string(yes) + " or " + std::string(no) + " should stand here: " + word.text);
}

} // namespace veldona::console
