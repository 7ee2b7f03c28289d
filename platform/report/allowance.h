// What one report may take of memory and pages, and whether its operator still wants it.
//
// A shop edits its layouts: a forgotten join, or a long label on a line of no width, would else fill the
// machine's memory and end the program with everything that is open in it.
#pragma once

#include <cstddef>
#include <functional>
#include <string>

#include "platform/report/reporterror.h"

namespace veldona::report {

inline constexpr std::size_t kMostPages = 10'000;
inline constexpr std::size_t kMostRows = 500'000; // of one query
inline constexpr std::size_t kMostRowBytes = std::size_t{128} << 20;
inline constexpr std::size_t kMostPageBytes = std::size_t{512} << 20;
inline constexpr std::size_t kMostTextBytes = std::size_t{1} << 20; // of one shown text
inline constexpr std::size_t kMostLines = 10'000;                   // of one wrapped text

// Asked often while a report is made, with how far it is; false gives it up.
using GoOn = std::function<bool(const std::string& howFar)>;

// Error 18 where the operator gave the report up.
class Allowance {
public:
    Allowance(const std::string& file, const GoOn& goOn) : file_(file), goOn_(goOn) {}

    void goOn() {
        if (goOn_ && !goOn_(pages_ == 0 ? std::string() : std::to_string(pages_) + ". sayfa"))
            raise(ErrorNumber::UserInterrupt);
    }
    void takePage() {
        if (++pages_ > kMostPages)
            throw ReportError(file_, 0, "rapor " + std::to_string(kMostPages) + " sayfadan uzun. " + kAdvice);
        goOn();
    }
    void takeBytes(std::size_t bytes) {
        bytes_ += bytes;
        if (bytes_ > kMostPageBytes)
            throw ReportError(file_, 0, std::string("rapor belleğe sığmıyor. ") + kAdvice);
    }

private:
    static constexpr const char* kAdvice = "Sorguyu daraltınız, uzun yazıları kısaltınız.";

    const std::string& file_;
    const GoOn& goOn_;
    std::size_t pages_ = 0;
    std::size_t bytes_ = 0;
};

} // namespace veldona::report
