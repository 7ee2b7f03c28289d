// A typed text as an amount, a number, a date and plain letters. The input's first line is the text, the rest
// the mask that it is shown under, and the keys that edit it.
#include "tests/fuzz/fuzzing.h"
#include "tests/fuzz/text_parts.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace veldona::fuzz;
    const auto [text, mask] = cutAt({reinterpret_cast<const char*>(data), size}, "\n");
    amountsHold(text, mask);
    datesHold(text, mask);
    lettersHold(text, mask);
    return 0;
}
