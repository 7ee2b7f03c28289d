// The export itself: the report on show into a file of the chosen format.
#pragma once

#include <string>

#include "platform/report/page.h"
#include "reports/exportpanel.h"

namespace veldona {

struct Session;

// Runs the export of the panel's choices. Its message boxes carry a text where the number of the style
// belongs, so each ends the routine with the report of error 13, the one of success too: the file stands by
// then, and the box to open it has no effect.
void StartExport(ExportPanel& p);

// What stands before the last "\"; "" where there is none.
[[nodiscard]] std::string getExportDirectory(const std::string& route);

// Writes `document` by `options`, into the file that they name. Error 445 for a destination that is no file
// or for no format, 75 where the file cannot be written.
void exportReport(const Session& session, const report::Document& document, const ExportOptions& options);

} // namespace veldona
