#include <algorithm>
#include <filesystem>

#include "core/session.h"
#include "platform/desktop/desktop.h"
#include "platform/export/delimited.h"
#include "platform/export/hypertext.h"
#include "platform/export/outfile.h"
#include "platform/export/ownform.h"
#include "platform/export/richtext.h"
#include "platform/export/workbook.h"
#include "platform/export/xmldata.h"
#include "platform/report/desk.h"
#include "platform/runtime/error.h"
#include "reports/startexport.h"

namespace veldona {

namespace {

constexpr std::int32_t kUnsupported = 445; // the platform's number for an action that an object does not have

void writePdf(const Session& session, const report::Document& document, const ExportOptions& options,
              const std::string& file) {
    if (!session.reportDesk) throw RuntimeError(kUnsupported, "Burada PDF yazılamıyor.");
    if (options.allPages) return session.reportDesk->writeFile(document, file);
    const auto count = static_cast<std::int32_t>(document.pages.size());
    const std::int32_t first = std::max(options.firstPage, 1);
    const std::int32_t last = options.lastPage > 0 ? std::min(options.lastPage, count) : count;
    if (first > last) throw RuntimeError(5, "Raporda bu sayfalar yok.");
    report::Document part = document;
    part.pages = {document.pages.begin() + (first - 1), document.pages.begin() + last};
    session.reportDesk->writeFile(part, file);
}

// The second file is NAME_2, and so on.
void writeXml(const report::Document& document, const ExportOptions& options, const std::string& file) {
    const std::filesystem::path path = file;
    const std::vector<std::string> texts = exports::xmlData(document, options.multipleFiles);
    for (std::size_t i = 0; i < texts.size(); ++i) {
        const std::string number = i ? "_" + std::to_string(i + 1) : "";
        exports::writeFile(path.parent_path() / (path.stem().string() + number + path.extension().string()),
                           texts[i]);
    }
}

// The panel lists the parts of a report in their own order.
exports::WorkbookChoices workbook(const ExportOptions& options) {
    exports::WorkbookChoices choices;
    choices.formatted = options.format == FormatType::Excel;
    choices.headings = options.columnHeadings;
    choices.columnWidth = options.constantColumnWidth;
    if (options.areaType >= 0) choices.area = static_cast<report::Area>(options.areaType);
    choices.group = options.areaGroup;
    choices.tabular = options.tabular;
    choices.functions = options.worksheetFunctions;
    return choices;
}

std::string textOf(const report::Document& document, const ExportOptions& options) {
    switch (options.format) {
    case FormatType::OwnForm:
        return exports::ownForm(document);
    case FormatType::Dif:
        return exports::interchange(document);
    case FormatType::Record:
        return exports::fixedRecords(document);
    case FormatType::Csv:
        return exports::commaSeparated(document);
    case FormatType::TabbedValues:
        return exports::tabbedRows(document);
    case FormatType::Delimited:
        return exports::delimitedRows(
            document,
            {options.fieldDelimiter.empty() ? "," : options.fieldDelimiter, options.stringDelimiter});
    case FormatType::Text:
        return exports::plainText(document);
    case FormatType::TabbedText:
        return exports::tabbedPages(document);
    case FormatType::Word:
    case FormatType::RichText:
        return exports::richText(document);
    case FormatType::Html32:
        return exports::hypertext32(document, options.pageNavigator);
    case FormatType::Html4:
        return exports::hypertext4(document, options.pageNavigator);
    case FormatType::Excel:
    case FormatType::ExcelPlain:
        return exports::workbook(document, workbook(options));
    case FormatType::Definition:
        return exports::definition(document);
    default:
        throw RuntimeError(kUnsupported, "Formatı seçmelisiniz.");
    }
}

} // namespace

void exportReport(const Session& session, const report::Document& document, const ExportOptions& options) {
    if (options.destination != DestinationType::DiskFile)
        throw RuntimeError(kUnsupported, "Bu hedefe aktarım yapılamıyor. Hedef olarak Dosya seçiniz.");
    const std::string file = session.desktop.paths.toNative(options.DiskFileName);
    if (options.format == FormatType::Pdf) return writePdf(session, document, options, file);
    if (options.format == FormatType::Xml) return writeXml(document, options, file);
    exports::writeFile(file, textOf(document, options));
}

} // namespace veldona
