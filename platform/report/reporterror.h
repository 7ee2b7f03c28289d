// What is wrong with a report's layout or with the data it is given: which file, which line of it, and what.
//
// It reaches the operator as the run-time error surface, so the description is a whole Turkish sentence.
#pragma once

#include <string>

#include "platform/runtime/error.h"

namespace veldona::report {

inline constexpr std::int32_t kBrokenLayout = 321; // the platform's number for a file of invalid format

class ReportError : public RuntimeError {
public:
    ReportError(std::int32_t number, const std::string& description) : RuntimeError(number, description) {}
    // `line` 0 where no line is to blame.
    ReportError(const std::string& file, int line, const std::string& what)
        : RuntimeError(kBrokenLayout, "Rapor düzeni hatalı: " + file +
                                          (line > 0 ? ", satır " + std::to_string(line) : "") + ": " + what) {
    }
};

} // namespace veldona::report
