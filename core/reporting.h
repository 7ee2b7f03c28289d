// From the rules to paper: banded reports that get their rows from the caller, templates that bring their
// own.
//
// The templates are files below the program's folder that a shop may edit; a banded layout that is missing
// there is taken from the program. What the viewer shows is the session's report.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/desktop/paths.h"
#include "platform/report/layout.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

struct Session;

// Ties the layout's texts to the columns of `rows` that their names say, by place or by name: "vAlan2" and
// "vAlanTUTAR" show the value, "sBaslik2" the name of the column. A shop puts columns of its own on the paper
// so.
void RaporAlanBagla(report::Layout& layout, const adodb::Recordset& rows);

// A banded report: lays `rows` (nullptr: none) out by the layout of this name, after `hazirla` has set the
// layout's named texts, and shows it in its own preview. `bitince` runs when that has ended.
void showBandedReport(Session& session, std::string_view layoutName, const adodb::Recordset* rows,
                      const std::function<void(report::Layout&)>& hazirla = {},
                      const std::function<void()>& atEnd = {});

// The same for a layout that is given several sets of rows, each by the name that the layout knows it by.
void showReportWithData(Session& session, std::string_view layoutName,
                        std::vector<report::DataSet> reportData,
                        const std::function<void(report::Layout&)>& hazirla = {});

// The same into a file: a PDF, or a picture of the first page where the name ends in ".png".
void writeReportWithData(Session& session, std::string_view layoutName,
                         std::vector<report::DataSet> reportData, const std::string& file,
                         const std::function<void(report::Layout&)>& hazirla = {});

// What the text `ad` of the layout says for each row: messages.
[[nodiscard]] std::vector<std::string> textsWithData(Session& session, std::string_view layoutName,
                                                     const std::vector<report::DataSet>& reportData,
                                                     std::string_view ad);

// A template: reads "\Rapor\…" below the program's folder, runs its queries, and shows it in the viewer
// frmCrNesne. A missing or broken file raises an error that names it, and nothing is opened; nor is it where
// the operator gives the report up with Esc while it is made.
struct TemplateSettings {
    std::string query{};    // in the place of the template's statement of the name "liste"; empty: that one
    std::string fileName{}; // whose paper it is, as a file can be called; empty: the template's title
};
void showTemplateReport(Session& session, const std::string& templateName,
                        const TemplateSettings& settings = {});

// Puts the layouts and templates as delivered where a shop finds and edits them; those that it has stay.
void installLayouts(const Paths& paths);

} // namespace veldona
