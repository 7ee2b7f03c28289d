#include "platform/report/binding.h"

#include <algorithm>

#include "platform/report/reporterror.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"

namespace veldona::report {

namespace {

double extentOf(const Section& section) {
    double right = 0;
    for (const BoxElement& box : section.boxes)
        right = std::max(right, box.place.right());
    for (const LineElement& line : section.lines)
        right = std::max(right, line.place.right());
    for (const ChartElement& chart : section.charts)
        right = std::max(right, chart.place.right());
    for (const TextElement& text : section.texts)
        right = std::max(right, text.place.right());
    return right;
}

} // namespace

const DataSet* Binding::find(const std::string& query) const {
    const auto found = std::ranges::find(data_, query, &DataSet::name);
    return found == data_.end() ? nullptr : *found;
}

BoundSection Binding::section(const Section& section) const {
    BoundSection made;
    made.file = &layout_.file;
    made.section = &section;
    made.data = find(section.query);
    made.extent = extentOf(section);
    for (const TextElement& text : section.texts) {
        BoundText bound{&text, {}};
        for (const Piece& each : text.pieces)
            bound.pieces.push_back(piece(each, section, text.line));
        made.texts.push_back(std::move(bound));
    }
    return made;
}

BoundTable Binding::table(const Table& table) const {
    BoundTable made;
    made.x = table.x;
    made.data = find(table.query);
    if (!made.data)
        throw ReportError(layout_.file, table.detail.line,
                          "satırların hangi sorgudan geleceği yazılmamış (query).");
    if (table.header) made.header.push_back(section(*table.header));
    made.detail = section(table.detail);
    if (table.footer) made.footer.push_back(section(*table.footer));
    return made;
}

BoundPiece Binding::piece(const Piece& piece, const Section& around, int line) const {
    BoundPiece made{piece.kind, piece.words, nullptr, 0, piece.mask};
    if (piece.kind != Piece::Kind::Column && piece.kind != Piece::Kind::Sum) return made;
    made.data = find(piece.from.query.empty() ? around.query : piece.from.query);
    if (!made.data)
        throw ReportError(layout_.file, line, "\"" + piece.from.column + "\" sütununun sorgusu yazılmamış.");
    const int column = made.data->findColumn(piece.from.column);
    if (column < 0) throw ReportError(layout_.file, line, "veride \"" + piece.from.column + "\" sütunu yok.");
    made.column = static_cast<std::size_t>(column);
    if (piece.kind == Piece::Kind::Sum) made.words = sumOf(*made.data, made.column, piece, line);
    return made;
}

// The addends are taken as they are stored, finer than a kuruş, and summed wide, so that twenty thousand of
// them lose nothing; Null counts for nothing.
std::string Binding::sumOf(const DataSet& data, std::size_t column, const Piece& piece, int line) const {
    allowance_.goOn();
    try {
        long double sum = 0;
        for (std::size_t row = 0; row < data.rowCount(); ++row)
            if (const Value& value = data.at(row, column); !value.isNull()) sum += toDouble(value);
        return format(static_cast<double>(sum), piece.mask);
    } catch (const RuntimeError& error) {
        throw ReportError(layout_.file, line,
                          "\"" + piece.from.column + "\" sütunu toplanamadı: " + error.description());
    }
}

} // namespace veldona::report
