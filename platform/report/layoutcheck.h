// What a layout must keep beyond the form of its file: elements lie inside their sections, sections on the
// page, named queries exist, page numbers stand where they are known.
#pragma once

#include "platform/report/layout.h"

namespace veldona::report {

// Error for the first thing that is wrong.
void checkLayout(const Layout& layout);

} // namespace veldona::report
