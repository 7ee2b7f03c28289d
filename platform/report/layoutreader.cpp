#include "platform/report/layoutreader.h"

#include <algorithm>
#include <filesystem>
#include <fstream>

#include <utility>

#include "platform/report/fontmetrics.h"
#include "platform/report/layoutcheck.h"
#include "platform/report/layouttext.h"
#include "platform/report/layoutxml.h"
#include "platform/runtime/text.h"

namespace veldona::report {

namespace {

constexpr std::size_t kMostBytes = 1 << 20;
constexpr std::size_t kMostElements = 5000; // sections, elements, and the signs in their texts
constexpr std::size_t kMostQueries = 100;
constexpr double kMostMillimetres = 1000;

class Reader {
public:
    Reader(std::string_view xml, const std::string& file) : lines_(xml, file) { layout_.file = file; }

    Layout read(std::string_view xml);

private:
    void readReport(Element report);
    void readPage(Element& report);
    void readPart(Element& part);
    void readOnce(Element& part, std::optional<Section>& into);
    void readQuery(Element& part);
    void readData(Element& part);
    void takeQuery(const Element& part, Query query);
    [[nodiscard]] std::optional<Part> findPart(Element& part); // nothing where it is no part of a body
    [[nodiscard]] Group readGroup(Element& part);
    [[nodiscard]] Table readTable(Element& part);
    [[nodiscard]] SideBySide readSideBySide(Element& part);
    [[nodiscard]] Section readSection(Element& part);
    void readItem(Element& item, Section& section);
    void readText(Element& item, Section& section, std::vector<Piece> pieces);
    void readLine(Element& item, Section& section);
    void readChart(Element& item, Section& section) const;
    void readBox(Element& item, Section& section);
    [[nodiscard]] static Place readPlace(Element& item, double leastHeight, std::optional<double> height);
    [[nodiscard]] static Piece readColumnPiece(Element& item, Piece::Kind kind);
    void count(const Element& element, std::size_t more) {
        if ((elements_ += more) > kMostElements) element.fail("dosyada çok fazla etiket var.");
    }
    [[noreturn]] static void refuse(const Element& part) {
        part.fail("<" + std::string(part.name()) + "> etiketi burada kullanılamaz.");
    }

    FileLines lines_;
    Layout layout_;
    double fontSize_ = 9;
    std::size_t elements_ = 0;
};

std::string wordsOf(pugi::xml_parse_status status) {
    switch (status) {
    case pugi::status_no_document_element:
        return "dosyada etiket yok.";
    case pugi::status_end_element_mismatch:
        return "bir etiket kapanmamış, ya da başka bir adla kapanmış.";
    case pugi::status_bad_attribute:
        return "etiketin öznitelikleri bozuk; değerler tırnak içinde yazılır.";
    default:
        return "XML bozuk.";
    }
}

Layout Reader::read(std::string_view xml) {
    if (xml.size() > kMostBytes) lines_.fail(0, "dosya bir megabayttan büyük.");
    if (xml.find('\0') != std::string_view::npos || validUtf8(xml) != xml)
        lines_.fail(0, "dosya UTF-8 olarak kaydedilmemiş.");
    pugi::xml_document document;
    const auto result = document.load_buffer(xml.data(), xml.size(),
                                             pugi::parse_default | pugi::parse_doctype, pugi::encoding_utf8);
    if (!result) lines_.fail(lines_.lineAt(result.offset), wordsOf(result.status));
    for (const pugi::xml_node child : document.children())
        if (child.type() != pugi::node_element) lines_.fail(1, "belge türü tanımı (DOCTYPE) kullanılamaz.");
    const pugi::xml_node root = document.document_element();
    if (std::string_view(root.name()) != "report" || root.next_sibling())
        lines_.fail(lines_.lineAt(root.offset_debug()), "dosya tek bir <report> etiketi olmalıdır.");
    readReport(Element(root, lines_));
    checkLayout(layout_);
    return std::move(layout_);
}

void Reader::readReport(Element report) {
    readPage(report);
    report.finish();
    for (Element& part : report.children())
        readPart(part);
}

void Reader::readPage(Element& report) {
    constexpr Bounds sizes{4, 72};
    layout_.title = report.text("title");
    fontSize_ = report.number("size", sizes, fontSize_);
    if (report.choice("paper", {"A4", "A5"}) == 1) {
        layout_.pageWidth = 148;
        layout_.pageHeight = 210;
    }
    if (report.choice("orientation", {"portrait", "landscape"}) == 1)
        std::swap(layout_.pageWidth, layout_.pageHeight);
    constexpr Bounds margins{0, 60};
    Margins& m = layout_.margins;
    m.left = report.number("marginLeft", margins, m.left);
    m.top = report.number("marginTop", margins, m.top);
    m.right = report.number("marginRight", margins, m.right);
    m.bottom = report.number("marginBottom", margins, m.bottom);
}

void Reader::readPart(Element& part) {
    const std::string_view name = part.name();
    if (name == "query") return readQuery(part);
    if (name == "data") return readData(part);
    if (name == "reportHeader") return readOnce(part, layout_.reportHeader);
    if (name == "pageHeader") return readOnce(part, layout_.pageHeader);
    if (name == "pageFooter") return readOnce(part, layout_.pageFooter);
    if (name == "reportFooter") return readOnce(part, layout_.reportFooter);
    if (name == "group") return layout_.body.emplace_back(readGroup(part)), void();
    std::optional<Part> found = findPart(part);
    if (!found) refuse(part);
    std::visit([&](auto& each) { layout_.body.emplace_back(std::move(each)); }, *found);
}

std::optional<Part> Reader::findPart(Element& part) {
    const std::string_view name = part.name();
    if (name == "band") return readSection(part);
    if (name == "table") return SideBySide{readTable(part)};
    if (name == "sideBySide") return readSideBySide(part);
    if (name != "detail") return std::nullopt;
    Table table;
    table.detail = readSection(part);
    table.query = table.detail.query;
    return SideBySide{std::move(table)};
}

Group Reader::readGroup(Element& part) {
    Group group;
    group.line = part.line();
    group.query = part.neededWord("query");
    group.key = part.neededWord("key");
    group.startsPage = part.yes("newPage");
    group.room = part.number("room", {0, kMostMillimetres}, 0);
    part.finish();
    for (Element& child : part.children()) {
        std::optional<Part> found = findPart(child);
        if (!found) refuse(child);
        group.parts.push_back(*std::move(found));
    }
    if (group.parts.empty()) part.fail("<group> içinde en az bir bölüm olmalıdır.");
    return group;
}

void Reader::readOnce(Element& part, std::optional<Section>& into) {
    if (into) part.fail("<" + std::string(part.name()) + "> iki kez yazılmış.");
    into = readSection(part);
}

void Reader::readQuery(Element& part) {
    Query query{part.neededWord("name"), part.neededText("sql"), part.text("heading"), part.line()};
    part.finish();
    if (!part.children().empty()) part.fail("<query> içinde etiket olamaz.");
    if (!isSelect(query.sql)) part.fail("sorgu yalnız SELECT olabilir.");
    takeQuery(part, std::move(query));
}

void Reader::readData(Element& part) {
    Query query{part.neededWord("name"), {}, part.text("heading"), part.line()};
    part.finish();
    if (!part.children().empty()) part.fail("<data> içinde etiket olamaz.");
    takeQuery(part, std::move(query));
}

void Reader::takeQuery(const Element& part, Query query) {
    const auto same = [&](const Query& other) { return other.name == query.name; };
    if (std::any_of(layout_.queries.begin(), layout_.queries.end(), same))
        part.fail("\"" + query.name + "\" adında iki sorgu var.");
    if (layout_.queries.size() == kMostQueries) part.fail("dosyada çok fazla sorgu var.");
    layout_.queries.push_back(std::move(query));
}

Table Reader::readTable(Element& part) {
    Table table;
    table.x = part.number("x", {0, kMostMillimetres}, 0);
    table.query = part.text("query");
    table.hidesWhenEmpty = part.yes("hideEmpty");
    part.finish();
    bool hasDetail = false;
    for (Element& child : part.children()) {
        if (child.name() == "header") {
            readOnce(child, table.header);
        } else if (child.name() == "footer") {
            readOnce(child, table.footer);
        } else if (child.name() == "detail" && !hasDetail) {
            table.detail = readSection(child);
            if (!table.detail.query.empty()) child.fail("query, <table> etiketine yazılır.");
            hasDetail = true;
        } else {
            refuse(child);
        }
    }
    if (!hasDetail) part.fail("<table> içinde bir <detail> olmalıdır.");
    for (Section* section :
         {table.header ? &*table.header : nullptr, &table.detail, table.footer ? &*table.footer : nullptr})
        if (section && section->query.empty()) section->query = table.query;
    return table;
}

SideBySide Reader::readSideBySide(Element& part) {
    part.finish();
    SideBySide tables;
    for (Element& child : part.children()) {
        if (child.name() != "table") refuse(child);
        tables.push_back(readTable(child));
    }
    if (tables.empty()) part.fail("<sideBySide> içinde en az bir <table> olmalıdır.");
    return tables;
}

Section Reader::readSection(Element& part) {
    count(part, 1);
    Section section;
    section.line = part.line();
    section.name = part.text("name");
    section.query = part.text("query");
    section.height = part.number("height", {1, kMostMillimetres});
    section.stripe = part.findColor("stripe");
    part.finish();
    if (section.stripe && part.name() != "detail") part.fail("stripe yalnız <detail> içindir.");
    for (Element& item : part.children())
        readItem(item, section);
    return section;
}

void Reader::readItem(Element& item, Section& section) {
    count(item, 1);
    if (!item.children().empty()) item.fail("<" + std::string(item.name()) + "> içinde etiket olamaz.");
    if (item.name() == "label") {
        TextNotation notation = report::readText(item.text("text"));
        if (!notation.mistake.empty()) item.fail(notation.mistake);
        count(item, notation.pieces.size());
        readText(item, section, std::move(notation.pieces));
    } else if (item.name() == "field") {
        readText(item, section, {readColumnPiece(item, Piece::Kind::Column)});
    } else if (item.name() == "sum") {
        readText(item, section, {readColumnPiece(item, Piece::Kind::Sum)});
    } else if (item.name() == "line") {
        readLine(item, section);
    } else if (item.name() == "box") {
        readBox(item, section);
    } else if (item.name() == "chart") {
        readChart(item, section);
    } else {
        refuse(item);
    }
    item.finish();
}

Piece Reader::readColumnPiece(Element& item, Piece::Kind kind) {
    const std::string column = item.neededText("column");
    const auto from = readColumn(column);
    if (!from) item.fail("\"" + column + "\" bir sütun adı değil.");
    return {kind, {}, *from, item.text("format")};
}

Place Reader::readPlace(Element& item, double leastHeight, std::optional<double> height) {
    constexpr Bounds lengths{0, kMostMillimetres};
    return {item.number("x", lengths), item.number("y", lengths), item.number("width", lengths),
            std::max(item.number("height", lengths, height), leastHeight)};
}

void Reader::readText(Element& item, Section& section, std::vector<Piece> pieces) {
    TextElement text;
    text.line = item.line();
    text.pieces = std::move(pieces);
    text.name = item.text("name");
    text.size = item.number("size", {4, 72}, fontSize_);
    text.bold = item.yes("bold");
    text.wraps = item.yes("wrap");
    text.align = static_cast<Align>(item.choice("align", {"left", "center", "right"}));
    text.color = item.findColor("color").value_or(Color{});
    const double oneLine = builtInMetrics().lineHeight(text.size);
    text.place = readPlace(item, oneLine, oneLine);
    section.texts.push_back(std::move(text));
}

void Reader::readLine(Element& item, Section& section) {
    LineElement line;
    line.line = item.line();
    line.place = readPlace(item, 0, 0.0);
    line.thickness = item.number("thickness", {0.05, 5}, line.thickness);
    line.color = item.findColor("color").value_or(Color{});
    section.lines.push_back(line);
}

void Reader::readChart(Element& item, Section& section) const {
    ChartElement chart;
    chart.line = item.line();
    chart.name = item.neededWord("name");
    chart.size = item.number("size", {4, 72}, fontSize_);
    chart.place = readPlace(item, 0, std::nullopt);
    section.charts.push_back(std::move(chart));
}

void Reader::readBox(Element& item, Section& section) {
    BoxElement box;
    box.line = item.line();
    box.place = readPlace(item, 0, std::nullopt);
    box.thickness = item.number("thickness", {0, 5}, box.thickness);
    box.color = item.findColor("color").value_or(Color{});
    box.fill = item.findColor("fill");
    section.boxes.push_back(box);
}

} // namespace

Layout parseLayout(std::string_view xml, const std::string& file) {
    return Reader(xml, file).read(xml);
}

Layout readLayout(const std::string& path) {
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(path, ignored))
        throw ReportError(static_cast<std::int32_t>(ErrorNumber::FileNotFound),
                          "Rapor dosyası bulunamadı: " + path);
    std::ifstream stream(path, std::ios::binary);
    // A file beyond the limit is not read whole: one byte more than the limit tells.
    std::string bytes(kMostBytes + 1, '\0');
    stream.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (stream.bad() || !stream.is_open())
        throw ReportError(static_cast<std::int32_t>(ErrorNumber::PathFileAccess),
                          "Rapor dosyası okunamadı: " + path);
    bytes.resize(static_cast<std::size_t>(stream.gcount()));
    return parseLayout(bytes, path);
}

} // namespace veldona::report
