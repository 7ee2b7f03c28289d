#include "platform/report/compose.h"

#include <algorithm>
#include <map>
#include <new>
#include <optional>
#include <utility>

#include "platform/report/datause.h"
#include "platform/report/grouprows.h"
#include "platform/report/layouttext.h"
#include "platform/report/painting.h"
#include "platform/report/reporterror.h"

namespace veldona::report {

namespace {

constexpr double kTolerance = 0.01;
constexpr double kLeastRoom = 5; // millimetres that a page must have left for its body

// What the texts of a section are told by in an export.
struct Origin {
    Area area = Area::Detail;
    int table = 0;
};

// A table on its way down the pages.
struct Running {
    const BoundTable* table;
    int number; // among the tables of the report, from 1
    std::size_t row = 0;
    bool footerDone = false;
    std::optional<Painted> waiting{}; // painted, but without room yet

    Area area = Area::Detail; // of the piece painted last

    [[nodiscard]] bool isDone() const {
        return !waiting && row >= table->data->rowCount() && (footerDone || table->footer.empty());
    }
};

class Composer {
public:
    Composer(const Layout& layout, const std::vector<DataSet>& data, DateTime now, const GoOn& goOn,
             const FontMetrics& metrics)
        : layout_(layout), data_(data), allowance_(layout.file, goOn),
          binding_(layout, pointersTo(data), allowance_), now_(now), metrics_(metrics) {
        eachPart(
            layout.body, [](const Section&) {},
            [&](const Table& table) { numbers_.emplace(&table, static_cast<int>(numbers_.size()) + 1); });
    }
    std::vector<Page> compose();

private:
    void openReport();
    void newPage();
    void placePageHeader();
    void add(Page& page, Painted painted, double x, double y, Origin origin) const;
    void place(Painted painted, double x, Origin origin);
    void once(const Section& section, Area area);
    void part(const Section& band) { once(band, Area::Detail); }
    void part(const SideBySide& side) { tables(side); }
    void part(const Group& group);
    [[nodiscard]] double headOf(const Group& group);
    void tables(const SideBySide& side);
    void fillPage(Running& running);
    [[nodiscard]] std::optional<Painted> next(Running& running);
    [[nodiscard]] double headAndFirstRow(const BoundTable& table);
    void paintEdges();
    void needRoom() const;
    [[nodiscard]] Painted painted(const BoundSection& section, std::size_t row = 0) {
        return paint(section, {now_, row}, metrics_, allowance_);
    }
    [[nodiscard]] double room() const { return bottom_ - y_; }

    const Layout& layout_;
    const std::vector<DataSet>& data_;
    Allowance allowance_;
    Binding binding_; // within a group to the row in hand
    DateTime now_;
    const FontMetrics& metrics_;
    std::optional<BoundSection> header_, footer_;
    double headerHeight_ = 0, footerHeight_ = 0;
    std::vector<Page> pages_;
    std::vector<std::optional<double>> headerTops_; // one a page
    std::map<const Table*, int> numbers_;           // of the layout's tables, from 1
    double top_ = 0, y_ = 0, bottom_ = 0;           // of the body of the page in hand
};

std::vector<Page> Composer::compose() {
    openReport();
    for (const Block& each : layout_.body)
        std::visit([&](const auto& its) { part(its); }, each);
    if (layout_.reportFooter) once(*layout_.reportFooter, Area::ReportFooter);
    paintEdges();
    return std::move(pages_);
}

void Composer::openReport() {
    if (layout_.pageHeader) header_ = binding_.section(*layout_.pageHeader);
    if (layout_.pageFooter) footer_ = binding_.section(*layout_.pageFooter);
    // Measured before the pages are counted; the numbers in it do not change its height.
    if (header_) headerHeight_ = painted(*header_).height;
    if (footer_) footerHeight_ = painted(*footer_).height;
    bottom_ = layout_.pageHeight - layout_.margins.bottom - footerHeight_;
    pages_.emplace_back();
    headerTops_.emplace_back();
    top_ = y_ = layout_.margins.top;
    if (layout_.reportHeader) once(*layout_.reportHeader, Area::ReportHeader);
    if (pages_.size() > 1) return; // a report header of more than a page: the page header stands already
    if (room() < headerHeight_ + kLeastRoom) return newPage();
    placePageHeader();
}

void Composer::newPage() {
    allowance_.takePage();
    pages_.emplace_back();
    headerTops_.emplace_back();
    y_ = layout_.margins.top;
    placePageHeader();
}

void Composer::placePageHeader() {
    if (header_) headerTops_.back() = y_;
    y_ += headerHeight_;
    top_ = layout_.margins.top + headerHeight_;
    needRoom();
}

// Texts of data may have made headers grow until nothing is left between them.
void Composer::needRoom() const {
    if (room() < kLeastRoom) throw ReportError(layout_.file, 0, "sayfa başı ile sonu arasında yer kalmıyor.");
}

void Composer::add(Page& page, Painted painted, double x, double y, Origin origin) const {
    for (Item& item : painted.items) {
        moveItem(item, layout_.margins.left + x, y);
        if (auto* run = std::get_if<TextRun>(&item)) {
            run->area = origin.area;
            run->table = origin.table;
        }
        page.items.push_back(std::move(item));
    }
}

void Composer::place(Painted painted, double x, Origin origin) {
    const double height = painted.height;
    add(pages_.back(), std::move(painted), x, y_, origin);
    y_ += height;
}

void Composer::once(const Section& section, Area area) {
    Painted whole = painted(binding_.section(section));
    if (whole.height > room() + kTolerance && y_ > top_ + kTolerance) newPage();
    while (whole.height > room() + kTolerance) {
        Painted rest = cutAt(whole, room());
        place(std::move(whole), 0, {area});
        newPage();
        whole = std::move(rest);
    }
    place(std::move(whole), 0, {area});
}

void Composer::part(const Group& group) {
    const GroupRows rows(group, data_, layout_.file);
    for (std::size_t row = 0; row < rows.count(); ++row) {
        const GroupRows::Slice slice = rows.at(row);
        binding_.use(slice.all());
        const bool isAtTop = y_ <= top_ + kTolerance;
        const bool startsPage = row > 0 && group.startsPage;
        if (startsPage || (!isAtTop && headOf(group) > room() + kTolerance)) newPage();
        for (const Part& each : group.parts)
            std::visit([&](const auto& its) { part(its); }, each);
    }
    binding_.use(pointersTo(data_));
}

// The bands that a row of the group begins with, and the beginning of its first table: they stay together.
double Composer::headOf(const Group& group) {
    double height = 0;
    const auto atLeast = [&](double head) { return std::max(head, group.room); };
    for (const Part& each : group.parts) {
        if (const auto* band = std::get_if<Section>(&each)) {
            height += painted(binding_.section(*band)).height;
            continue;
        }
        double tallest = 0;
        for (const Table& table : std::get<SideBySide>(each))
            tallest = std::max(tallest, headAndFirstRow(binding_.table(table)));
        return atLeast(height + tallest);
    }
    return atLeast(height);
}

void Composer::tables(const SideBySide& side) {
    std::vector<BoundTable> bound;
    std::vector<Running> all;
    double needed = 0;
    bound.reserve(side.size());
    for (const Table& table : side) {
        BoundTable its = binding_.table(table);
        if (table.hidesWhenEmpty && its.data->rowCount() == 0) continue;
        needed = std::max(needed, headAndFirstRow(its));
        all.push_back({&bound.emplace_back(std::move(its)), numbers_.at(&table)});
    }
    if (all.empty()) return;
    if (needed > room() + kTolerance && y_ > top_ + kTolerance) newPage();
    for (;;) {
        const double start = y_;
        double end = start;
        for (Running& running : all) {
            y_ = start;
            if (!running.isDone()) fillPage(running);
            end = std::max(end, y_);
        }
        y_ = end;
        if (std::all_of(all.begin(), all.end(), [](const Running& r) { return r.isDone(); })) return;
        newPage();
    }
}

// A header never stands alone at the foot of a page.
double Composer::headAndFirstRow(const BoundTable& table) {
    const auto heightOf = [&](const std::vector<BoundSection>& section) {
        return section.empty() ? 0 : painted(section.front()).height;
    };
    return heightOf(table.header) +
           (table.data->rowCount() > 0 ? painted(table.detail).height : heightOf(table.footer));
}

std::optional<Painted> Composer::next(Running& running) {
    if (running.waiting) return std::exchange(running.waiting, std::nullopt);
    running.area = Area::Detail;
    if (running.row < running.table->data->rowCount()) return painted(running.table->detail, running.row++);
    if (running.footerDone || running.table->footer.empty()) return std::nullopt;
    running.footerDone = true;
    running.area = Area::GroupFooter;
    return painted(running.table->footer.front());
}

void Composer::fillPage(Running& running) {
    const double x = running.table->x;
    const bool isFresh = y_ <= top_ + kTolerance;
    if (!running.table->header.empty())
        place(painted(running.table->header.front()), x, {Area::GroupHeader, running.number});
    const double first = y_;
    while (auto piece = next(running)) {
        const bool fits = piece->height <= room() + kTolerance;
        if (!fits && isFresh && y_ <= first + kTolerance) { // taller than any page
            needRoom();
            running.waiting = cutAt(*piece, room());
        } else if (!fits) {
            running.waiting = std::move(piece);
            return;
        }
        place(std::move(*piece), x, {running.area, running.number});
        if (running.waiting) return;
    }
}

void Composer::paintEdges() {
    for (std::size_t i = 0; i < pages_.size(); ++i) {
        const auto edge = [&](const BoundSection& section, double y, Area area) {
            add(pages_[i], paint(section, {now_, 0, i + 1, pages_.size()}, metrics_, allowance_), 0, y,
                {area});
        };
        if (headerTops_[i]) edge(*header_, *headerTops_[i], Area::PageHeader);
        if (footer_) edge(*footer_, bottom_, Area::PageFooter);
    }
}

} // namespace

Document compose(const Layout& layout, std::vector<DataSet> data, DateTime now, const GoOn& goOn,
                 const FontMetrics& metrics) try {
    Document made;
    made.title = layout.title;
    made.fileName = layout.fileName;
    made.pageWidth = layout.pageWidth;
    made.pageHeight = layout.pageHeight;
    made.pages = Composer(layout, data, now, goOn, metrics).compose();
    made.data = std::move(data);
    describeData(made.data, layout);
    return made;
} catch (const std::bad_alloc&) {
    throw ReportError(layout.file, 0, standardDescription(ErrorNumber::OutOfMemory));
}

std::vector<std::string> composeTexts(const Layout& layout, const std::vector<DataSet>& data,
                                      std::string_view name, DateTime now) {
    Allowance allowance(layout.file, {});
    const Binding binding(layout, pointersTo(data), allowance);
    std::vector<std::string> texts;
    eachPart(
        layout.body, [](const Section&) {},
        [&](const Table& table) {
            const BoundTable bound = binding.table(table);
            for (const BoundText& text : bound.detail.texts)
                for (std::size_t row = 0; text.element->name == name && row < bound.data->rowCount(); ++row)
                    texts.push_back(shownText(bound.detail, text, {now, row}, allowance));
        });
    return texts;
}

Document composeTemplate(const Layout& layout, QueryRunner& queries, DateTime now, const GoOn& goOn) {
    std::vector<DataSet> data;
    for (const Query& query : layout.queries) {
        if (query.sql.empty()) throw ReportError(layout.file, query.line, "bu rapora program satır vermez.");
        if (!isSelect(query.sql)) throw ReportError(layout.file, query.line, "sorgu yalnız SELECT olabilir.");
        try {
            data.push_back(queries.run(query.name, query.sql));
        } catch (const std::bad_alloc&) {
            throw ReportError(layout.file, query.line, standardDescription(ErrorNumber::OutOfMemory));
        } catch (const RuntimeError& error) {
            if (error.number() == static_cast<std::int32_t>(ErrorNumber::UserInterrupt)) throw;
            throw ReportError(layout.file, query.line,
                              "\"" + query.name + "\" sorgusu çalışmadı: " + error.description());
        }
    }
    return compose(layout, std::move(data), now, goOn);
}

} // namespace veldona::report
