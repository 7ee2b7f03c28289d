// Text as a Jet 4 file keeps it: UTF-16, or one byte a letter where all letters allow it.
#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace veldona::aktar {

// As UTF-8. Nothing where the bytes are no text: half a letter, half a pair, a control sign. The reader of
// the file would put a "?" there and say nothing.
[[nodiscard]] std::optional<std::string> decodeJetText(std::string_view bytes);

// The first letter of a UTF-8 text that Turkish Windows (code page 1254) has not, else nothing. The old
// programs wrote by that page, so another letter is a sign of damage, though no proof.
[[nodiscard]] std::optional<std::string> foreignLetter(std::string_view text);

} // namespace veldona::aktar
