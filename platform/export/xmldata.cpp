#include "platform/export/xmldata.h"

#include <sstream>

#include <pugixml.hpp>

#include "platform/export/cells.h"
#include "platform/runtime/format.h"

namespace veldona::exports {

namespace {

std::string xmlValue(const Value& value) {
    if (value.kind() == Value::Kind::Date) {
        std::string text = format(value, "yyyy-mm-dd hh:mm:ss");
        text[text.find(' ')] = 'T';
        return text;
    }
    return isNumber(value) ? plainNumber(value) : shownCell(value);
}

void append(pugi::xml_node report, const report::DataSet& data) {
    pugi::xml_node set = report.append_child("data");
    set.append_attribute("name") = data.name.c_str();
    for (std::size_t r = 0; r < data.rowCount(); ++r) {
        pugi::xml_node row = set.append_child("row");
        for (std::size_t c = 0; c < data.columns.size(); ++c) {
            if (data.at(r, c).isNull()) continue;
            pugi::xml_node field = row.append_child("field");
            field.append_attribute("name") = data.columns[c].name.c_str();
            field.append_child(pugi::node_pcdata).set_value(xmlValue(data.at(r, c)).c_str());
        }
    }
}

std::string xmlOf(const std::string& title, const std::vector<report::DataSet>& data) {
    pugi::xml_document document;
    pugi::xml_node declaration = document.append_child(pugi::node_declaration);
    declaration.append_attribute("version") = "1.0";
    declaration.append_attribute("encoding") = "UTF-8";
    pugi::xml_node report = document.append_child("report");
    report.append_attribute("title") = title.c_str();
    for (const report::DataSet& set : data)
        append(report, set);
    std::ostringstream out;
    document.save(out, " ", pugi::format_default, pugi::encoding_utf8);
    return out.str();
}

} // namespace

std::vector<std::string> xmlData(const report::Document& document, bool oneForEach) {
    std::vector<report::DataSet> data = tablesOf(document);
    const std::string title = withoutControls(document.title);
    if (!oneForEach) return {xmlOf(title, data)};
    std::vector<std::string> texts;
    texts.reserve(data.size());
    for (report::DataSet& set : data)
        texts.push_back(xmlOf(title, {std::move(set)}));
    return texts;
}

} // namespace veldona::exports
