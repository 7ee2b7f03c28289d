// One element of a layout file and its attributes, each read as what it has to be. Whatever is left unread
// when the element is done is an attribute that the language does not have.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <pugixml.hpp>

#include "platform/report/layout.h"
#include "platform/report/reporterror.h"

namespace veldona::report {

// Where the lines of a file begin, for messages.
class FileLines {
public:
    FileLines(std::string_view text, std::string file);
    [[nodiscard]] int lineAt(std::ptrdiff_t offset) const; // from 1
    [[noreturn]] void fail(int line, const std::string& what) const;

private:
    std::vector<std::ptrdiff_t> starts_;
    std::string file_;
};

struct Bounds {
    double least, most;
};

class Element {
public:
    Element(pugi::xml_node node, const FileLines& lines);

    [[nodiscard]] std::string_view name() const { return node_.name(); }
    [[nodiscard]] int line() const { return line_; }
    [[nodiscard]] std::vector<Element> children() const; // error for text between them
    [[noreturn]] void fail(const std::string& what) const;

    [[nodiscard]] std::optional<std::string> find(const char* attribute);
    [[nodiscard]] std::string text(const char* attribute, const char* otherwise = "");
    [[nodiscard]] std::string neededText(const char* attribute); // neither missing nor empty
    // Letters, digits and "_" only.
    [[nodiscard]] std::string neededWord(const char* attribute);
    [[nodiscard]] double number(const char* attribute, Bounds bounds, std::optional<double> otherwise = {});
    [[nodiscard]] bool yes(const char* attribute);
    [[nodiscard]] std::optional<Color> findColor(const char* attribute);
    // One of `words`, by its place; the first where the attribute is missing.
    [[nodiscard]] int choice(const char* attribute, const std::vector<std::string_view>& words);

    void finish() const; // error for an attribute that nobody read, or that stands twice

private:
    [[noreturn]] void refuse(const char* attribute, const std::string& value,
                             const std::string& wanted) const;
    pugi::xml_node node_;
    const FileLines* lines_;
    int line_;
    std::vector<std::string_view> read_;
};

} // namespace veldona::report
