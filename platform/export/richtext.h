// The pages for a word processor (.rtf, and .doc, which word processors know by its content).
#pragma once

#include <string>

#include "platform/report/page.h"

namespace veldona::exports {

// Each line a paragraph, its texts at tab stops where they stand on the page.
[[nodiscard]] std::string richText(const report::Document& document);

} // namespace veldona::exports
