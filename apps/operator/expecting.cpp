#include <algorithm>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <sstream>

#include "apps/operator/sqlrows.h"
#include "apps/operator/verbs.h"
#include "platform/controls/lists.h"
#include "platform/controls/names.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona::console {

namespace {

using Texts = std::vector<std::string>;

std::string quote(const std::string& text) {
    return "\"" + replaceAll(text, "\n", "\\n") + "\"";
}

std::string quote(const Texts& texts) {
    std::string all;
    for (const std::string& text : texts)
        all += (all.empty() ? "" : " ") + quote(text);
    return texts.empty() ? "nothing" : all;
}

// A line ends in "\n" here, whatever stands before it.
std::string withPlainLineEnds(const std::string& text) {
    return replaceAll(text, "\r\n", "\n");
}

void requireEqual(const std::string& expected, const std::string& there) {
    if (expected != withPlainLineEnds(there))
        throw Shortfall("expected " + quote(expected) + ", there is " + quote(there));
}

void requireEqual(const Texts& expected, const Texts& there) {
    if (expected != there) throw Shortfall("expected " + quote(expected) + ", there is " + quote(there));
}

void requireEqual(int expected, int there) {
    if (expected == there) return;
    throw Shortfall("expected " + std::to_string(expected) + ", there is " + std::to_string(there));
}

void requireEqual(bool expected, bool there) {
    if (expected != there) throw Shortfall(expected ? "expected yes, it is no" : "expected no, it is yes");
}

Texts textsFrom(const Line& line, std::size_t first) {
    Texts texts;
    for (std::size_t i = first; i < line.words.size(); ++i)
        texts.push_back(line.words[i].text);
    return texts;
}

void expectText(Stage& stage, const Line& line) {
    requireEqual(line.words[1].text, stage.control(line.words[0]).shownText());
}

enum class RowKind { Any, List, Grid };

const ShownRows& rowsOf(const Stage& stage, const Word& name, RowKind kind, const char* called) {
    const ShownRows* rows = stage.control(name).shownRows();
    const bool isList = rows != nullptr && rows->columnsShown() == 0;
    if (rows == nullptr || (kind == RowKind::List && !isList) || (kind == RowKind::Grid && isList))
        throw Shortfall(name.text + " is no " + called);
    return *rows;
}

void expectList(Stage& stage, const Line& line) {
    const ShownRows& list = rowsOf(stage, line.words[0], RowKind::List, "list or combo");
    Texts there;
    for (int row = 0; row < list.countShown(); ++row)
        there.push_back(list.textShown(row, 0));
    requireEqual(textsFrom(line, 1), there);
}

void requireInside(int row, int rows) {
    if (row < 0 || row >= rows)
        throw Shortfall("row " + std::to_string(row) + " is outside, there are " + std::to_string(rows));
}

// What a row's mark says to whoever does not see it; "" without one.
void expectMark(Stage& stage, const Line& line) {
    const auto& list = stage.control<ListBox>(line.words[0], "list");
    const int row = wholeNumber(line.words[1]);
    requireInside(row, list.count());
    const RowMarks marks = list.marks ? list.marks() : RowMarks{};
    const auto at = static_cast<std::size_t>(row);
    requireEqual(line.words[2].text, at < marks.rows.size() ? marks.rows[at].words : std::string());
}

void expectSelected(Stage& stage, const Line& line) {
    const int expected = wholeNumber(line.words[1]);
    requireEqual(expected, rowsOf(stage, line.words[0], RowKind::Any, "list or grid").selectedShown());
}

void expectVisible(Stage& stage, const Line& line) {
    const bool expected = choice(line.words[1], "yes", "no");
    requireEqual(expected, stage.control(line.words[0]).isShown());
}

void expectEnabled(Stage& stage, const Line& line) {
    const bool expected = choice(line.words[1], "yes", "no");
    requireEqual(expected, stage.control(line.words[0]).isUsable());
}

// Spacers and marks stand in the bar whatever the state, and are no tools to an operator.
bool isTool(const std::string& key) {
    constexpr std::string_view marks[] = {"cmdBosluk", "cmdBoslukOzel", "lblBookmark"};
    return std::none_of(std::begin(marks), std::end(marks), [&](auto mark) { return sameName(mark, key); });
}

void expectTools(Stage& stage, const Line& line) {
    Texts expected;
    Texts there;
    for (const std::string& key : textsFrom(line, 0)) {
        if (isTool(key)) expected.push_back(nameKey(key));
    }
    for (const Control* control : stage.screen().controls()) {
        const auto* bar = dynamic_cast<const ToolBar*>(control);
        if (bar == nullptr || !bar->isShown()) continue;
        for (const ToolBar::Tool& tool : bar->tools()) {
            if (tool.visible && isTool(tool.key)) there.push_back(nameKey(tool.key));
        }
    }
    std::ranges::sort(expected);
    std::ranges::sort(there);
    requireEqual(expected, there);
}

void expectRows(Stage& stage, const Line& line) {
    const int expected = wholeNumber(line.words[1]);
    requireEqual(expected, rowsOf(stage, line.words[0], RowKind::Grid, "grid").countShown());
}

int columnOf(const ShownRows& grid, const Word& name, const Word& column) {
    const int index = column.quoted ? grid.columnNamed(column.text) : wholeNumber(column);
    if (index < 0 || index >= grid.columnsShown()) {
        throw Shortfall(name.text + " has no column " + column.text);
    }
    return index;
}

void expectCell(Stage& stage, const Line& line) {
    const int row = wholeNumber(line.words[1]);
    const Word& column = line.words[2];
    const std::string& expected = line.words[3].text;
    const ShownRows& grid = rowsOf(stage, line.words[0], RowKind::Grid, "grid");
    const int index = columnOf(grid, line.words[0], column);
    requireInside(row, grid.countShown());
    requireEqual(expected, grid.textShown(row, index));
}

// An input box is no message box: its prompt can be expected like one, and is passed over where it is not.
void passOverPrompts(Stage& stage, const std::string* expected) {
    auto& said = stage.dialogs.said;
    while (!said.empty() && said.front().isPrompt &&
           (expected == nullptr || said.front().text != *expected)) {
        said.pop_front();
    }
}

RecordingDialogs::Said takeOldest(Stage& stage, const std::string* expected) {
    passOverPrompts(stage, expected);
    auto& said = stage.dialogs.said;
    if (said.empty()) throw Shortfall("no message is waiting");
    RecordingDialogs::Said oldest = std::move(said.front());
    said.pop_front();
    return oldest;
}

void expectMessage(Stage& stage, const Line& line) {
    const auto said = takeOldest(stage, &line.words[0].text);
    if (said.errorNumber) {
        throw Shortfall("expected a message, there is the run-time error " +
                        std::to_string(*said.errorNumber) + ": " + said.text);
    }
    requireEqual(line.words[0].text, said.text);
    if (line.words.size() > 1) requireEqual(line.words[1].text, said.title);
}

// Decimal, or hexadecimal as the store's own errors are written: &H80040E14, with or without the sign in
// front.
std::int32_t errorNumber(const Word& word) {
    std::string_view digits = word.text;
    int base = 10;
    if (sameName(digits.substr(0, 2), "0x") || sameName(digits.substr(0, 2), "&H")) {
        digits.remove_prefix(2);
        base = 16;
    } else if (digits.find_first_of("abcdefABCDEF") != digits.npos) {
        base = 16;
    }
    std::int64_t number = 0;
    const auto [end, failure] = std::from_chars(digits.data(), digits.data() + digits.size(), number, base);
    if (failure != std::errc() || end != digits.data() + digits.size()) {
        throw UnreadableLine("the number of an error should stand here: " + word.text);
    }
    return static_cast<std::int32_t>(number);
}

void expectError(Stage& stage, const Line& line) {
    const std::int32_t expected = errorNumber(line.words[0]);
    const auto said = takeOldest(stage, nullptr);
    if (!said.errorNumber)
        throw Shortfall("expected a run-time error, there is the message " + quote(said.text));
    requireEqual(expected, *said.errorNumber);
}

void expectNoMessage(Stage& stage, const Line&) {
    passOverPrompts(stage, nullptr);
    if (!stage.dialogs.said.empty())
        throw Shortfall("there is the message " + quote(stage.dialogs.said.front().text));
}

void expectScreen(Stage& stage, const Line& line) {
    const Form& screen = stage.screen();
    if (!sameName(screen.name(), line.words[0].text)) requireEqual(line.words[0].text, screen.name());
}

void expectClosed(Stage& stage, const Line& line) {
    if (stage.process().forms().loaded(line.words[0].text) != nullptr) throw Shortfall("it is loaded");
}

void expectSql(Stage& stage, const Line& line) {
    adodb::Recordset rows;
    rows.cursorLocation = adodb::CursorLocation::Client;
    std::vector<std::string> answer;
    try {
        if (!isSelect(line.words[0].text)) throw Shortfall("it is no query");
        rows.open(line.words[0].text, stage.process().connection());
        answer = allRows(rows);
    } catch (const RuntimeError& error) {
        throw Shortfall("the query failed: " + error.description());
    }
    requireEqual(textsFrom(line, 1), answer);
}

void requireHeld(const std::string& expected, const std::string& text) {
    if (withPlainLineEnds(text).find(expected) == std::string::npos)
        throw Shortfall("expected " + quote(expected) + " in this text:\n" + text);
}

void expectReport(Stage& stage, const Line& line) {
    stage.reports.markSeen();
    if (!stage.reports.last()) throw Shortfall("no report has been shown");
    requireHeld(line.words[0].text, stage.reports.last()->text);
}

void expectNoReport(Stage& stage, const Line&) {
    if (stage.reports.hasUnseen()) throw Shortfall("a report has been shown:\n" + stage.reports.last()->text);
}

// Below the folder, or as the program would write it: with the drive in front.
std::string nativePath(Stage& stage, const std::string& path) {
    const std::string parted = replaceAll(path, "/", "\\");
    const bool hasDrive = parted.size() > 1 && parted[1] == ':';
    try {
        return stage.process().paths().toNative(hasDrive ? parted : "C:\\" + parted);
    } catch (const RuntimeError& error) {
        throw Shortfall(path + ": " + error.description());
    }
}

void expectFile(Stage& stage, const Line& line) {
    const std::string path = nativePath(stage, line.words[0].text);
    if (!std::filesystem::exists(path)) throw Shortfall("there is no such file");
    if (line.words.size() < 2) return;
    std::ostringstream content;
    content << std::ifstream(path, std::ios::binary).rdbuf();
    requireHeld(line.words[1].text, content.str());
}

constexpr Verb kVerbs[] = {
    {"expect", 2, 2, expectText},
    {"expect-list", 1, kAnyNumber, expectList},
    {"expect-mark", 3, 3, expectMark},
    {"expect-selected", 2, 2, expectSelected},
    {"expect-visible", 2, 2, expectVisible},
    {"expect-enabled", 2, 2, expectEnabled},
    {"expect-tools", 0, kAnyNumber, expectTools},
    {"expect-rows", 2, 2, expectRows},
    {"expect-cell", 4, 4, expectCell},
    {"expect-message", 1, 2, expectMessage},
    {"expect-error", 1, 1, expectError},
    {"expect-no-message", 0, 0, expectNoMessage},
    {"expect-screen", 1, 1, expectScreen},
    {"expect-closed", 1, 1, expectClosed},
    {"expect-sql", 1, kAnyNumber, expectSql},
    {"expect-report", 1, 1, expectReport},
    {"expect-no-report", 0, 0, expectNoReport},
    {"expect-file", 1, 2, expectFile},
};

} // namespace

std::span<const Verb> expectingVerbs() {
    return kVerbs;
}

} // namespace veldona::console
