// Files that the program must not take for its books, and whether what it says of them is of use.
#pragma once

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "tests/faults/till.h"

namespace veldona::faults {

inline constexpr std::size_t kPage = 4096;

using test::bytesOf;
using test::writeBytes;

// What the file may be, and its bytes: from an empty one to ours with a changed first page.
[[nodiscard]] std::vector<std::pair<std::string, std::string>> damagedBooks();
// One bit of each page, from the byte `from` on.
[[nodiscard]] std::string flipped(std::string bytes, std::size_t from);
// Our books with what `statements` of the engine put into them.
[[nodiscard]] std::string booksWith(const std::vector<std::string>& statements);
// Five thousand customers, so that pages are left that no start reads.
void addCustomers(const Drive& drive);

// What happened, what may be wrong, and what to do.
[[nodiscard]] bool isHelpful(const std::string& text);

} // namespace veldona::faults
