// Why nothing was done, in a sentence for the operator.
#pragma once

#include <stdexcept>

namespace veldona::backup {

class Refusal : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace veldona::backup
