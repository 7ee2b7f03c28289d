#include "platform/report/layoutcheck.h"

#include <algorithm>

#include "platform/report/reporterror.h"

namespace veldona::report {

namespace {

constexpr double kTolerance = 0.01; // millimetres: sums of decimals

// What is allowed where a section stands.
struct Standing {
    double width;
    bool onEveryPage = false; // page header and footer know the page's number
    bool onEveryRow = false;
};

class Check {
public:
    explicit Check(const Layout& layout) : layout_(layout) {}
    void run();

private:
    void section(const Section& checked, const Standing& standing) const;
    void place(const Place& checked, const Section& around, const Standing& standing, int line) const;
    void text(const TextElement& checked, const Standing& standing) const;
    void query(const std::string& name, int line) const;
    void table(const Table& checked) const;
    void heights() const;
    [[noreturn]] void fail(int line, const std::string& what) const {
        throw ReportError(layout_.file, line, what);
    }
    [[nodiscard]] double bodyWidth() const {
        return layout_.pageWidth - layout_.margins.left - layout_.margins.right;
    }

    const Layout& layout_;
};

void Check::run() {
    const Standing once{bodyWidth()};
    const Standing paged{bodyWidth(), true};
    if (layout_.reportHeader) section(*layout_.reportHeader, once);
    if (layout_.reportFooter) section(*layout_.reportFooter, once);
    if (layout_.pageHeader) section(*layout_.pageHeader, paged);
    if (layout_.pageFooter) section(*layout_.pageFooter, paged);
    eachPart(
        layout_.body, [&](const Section& band) { section(band, once); },
        [&](const Table& each) { table(each); });
    for (const Block& block : layout_.body)
        if (const auto* group = std::get_if<Group>(&block)) query(group->query, group->line);
    heights();
}

void Check::table(const Table& checked) const {
    const Standing standing{bodyWidth() - checked.x};
    query(checked.query, checked.detail.line);
    if (checked.header) section(*checked.header, standing);
    if (checked.footer) section(*checked.footer, standing);
    section(checked.detail, {standing.width, false, true});
}

void Check::section(const Section& checked, const Standing& standing) const {
    query(checked.query, checked.line);
    for (const BoxElement& box : checked.boxes)
        place(box.place, checked, standing, box.line);
    for (const LineElement& line : checked.lines)
        place(line.place, checked, standing, line.line);
    for (const ChartElement& chart : checked.charts)
        place(chart.place, checked, standing, chart.line);
    for (auto each = checked.texts.begin(); each != checked.texts.end(); ++each) {
        place(each->place, checked, standing, each->line);
        text(*each, standing);
        const auto same = [&](const TextElement& other) { return other.name == each->name; };
        if (!each->name.empty() && std::any_of(checked.texts.begin(), each, same))
            fail(each->line, "\"" + each->name + "\" adı bu bölümde iki kez kullanılmış.");
    }
}

void Check::place(const Place& checked, const Section& around, const Standing& standing, int line) const {
    if (checked.right() > standing.width + kTolerance)
        fail(line, "bir öğe sayfanın sağına taşıyor (x + width en çok " +
                       std::to_string(static_cast<int>(standing.width)) + " mm).");
    if (checked.bottom() > around.height + kTolerance)
        fail(line, "bir öğe bölümün altına taşıyor (y + height, bölümün height değerini aşıyor).");
}

void Check::text(const TextElement& checked, const Standing& standing) const {
    for (const Piece& piece : checked.pieces) {
        query(piece.from.query, checked.line);
        const bool isPage = piece.kind == Piece::Kind::PageNumber || piece.kind == Piece::Kind::PageCount;
        if (isPage && !standing.onEveryPage)
            fail(checked.line, "%p ve %P yalnız pageHeader ve pageFooter içinde kullanılabilir.");
        if (piece.kind == Piece::Kind::RowNumber && !standing.onEveryRow)
            fail(checked.line, "%n yalnız detail içinde kullanılabilir.");
        if (piece.kind == Piece::Kind::Sum && (standing.onEveryPage || standing.onEveryRow))
            fail(checked.line,
                 "<sum> yalnız footer, reportHeader, reportFooter ve band içinde kullanılabilir.");
    }
}

void Check::query(const std::string& name, int line) const {
    if (name.empty()) return;
    const auto same = [&](const Query& query) { return query.name == name; };
    if (std::none_of(layout_.queries.begin(), layout_.queries.end(), same))
        fail(line, "\"" + name + "\" adında bir sorgu yok.");
}

void Check::heights() const {
    const auto heightOf = [](const std::optional<Section>& section) { return section ? section->height : 0; };
    const double room = layout_.pageHeight - layout_.margins.top - layout_.margins.bottom -
                        heightOf(layout_.pageHeader) - heightOf(layout_.pageFooter);
    double tallest = std::max(heightOf(layout_.reportHeader), heightOf(layout_.reportFooter));
    eachPart(
        layout_.body, [&](const Section& band) { tallest = std::max(tallest, band.height); },
        [&](const Table& each) {
            tallest = std::max(tallest,
                               heightOf(each.header) + std::max(each.detail.height, heightOf(each.footer)));
        });
    if (bodyWidth() < 10 || tallest > room + kTolerance)
        fail(0, "bölümler sayfaya sığmıyor; kenar boşluklarını ya da yükseklikleri küçültünüz.");
}

} // namespace

void checkLayout(const Layout& layout) {
    Check(layout).run();
}

} // namespace veldona::report
