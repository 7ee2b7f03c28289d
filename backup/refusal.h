// Why nothing was done, in a sentence for the operator.
#pragma once

#include <stdexcept>
#include <string>
#include <system_error>

namespace veldona::backup {

class Refusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// The end of such a sentence: what the disk answered.
[[nodiscard]] std::string reasonOf(const std::error_code& code);
[[nodiscard]] std::string lastReason(); // of the last call that failed here

} // namespace veldona::backup
