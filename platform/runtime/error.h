// What the platform can raise: one exception type with a number and a Turkish description.
//
// An operator's mistake that a rule foresees is a message of that rule, never a RuntimeError; a defect of our
// own is an assertion. "Resume next" is the manner of a procedure that skips a failed step and runs the next
// one: only RuntimeError is skipped, everything else passes through.
#pragma once

#include <cstdint>
#include <exception>
#include <string>
#include <utility>

namespace veldona {

enum class ErrorNumber : std::int32_t {
    InvalidCall = 5,
    Overflow = 6,
    OutOfMemory = 7,
    SubscriptOutOfRange = 9,
    DivisionByZero = 11,
    TypeMismatch = 13,
    UserInterrupt = 18, // the operator gave long work up; there is nothing to tell him
    FileNotFound = 53,
    FileAlreadyExists = 58,
    PathFileAccess = 75,
    PathNotFound = 76,
    ObjectNotSet = 91,
    InvalidUseOfNull = 94,
    InvalidPropertyIndex = 381,
    NoCurrentRecord = 3021,
    RecordDeleted = 3167,
    NoSuchItem = 3265,
    DataTypeConversion = 3421,
};

class RuntimeError : public std::exception {
public:
    RuntimeError(std::int32_t number, std::string description)
        : number_(number), description_(std::move(description)) {}
    // With the platform's own words.
    explicit RuntimeError(ErrorNumber number);

    [[nodiscard]] std::int32_t number() const { return number_; }
    [[nodiscard]] const std::string& description() const { return description_; }
    [[nodiscard]] const char* what() const noexcept override { return description_.c_str(); }

private:
    std::int32_t number_;
    std::string description_;
};

// The platform's own words for a number; a text that names the number for one it has no words for.
[[nodiscard]] std::string standardDescription(ErrorNumber number);

// Raises `number` with its standard description.
[[noreturn]] void raise(ErrorNumber number);

// The last error that a resume-next procedure passed over; number 0 where there was none.
struct Err {
    std::int32_t number = 0;
    std::string description;

    void clear() {
        number = 0;
        description.clear();
    }
};

// Runs `step`; a RuntimeError is noted in `err` and swallowed. True where the step went through. What a
// failed step was to assign keeps its value, since the exception leaves before the assignment.
template <class Step> bool attempt(Err& err, Step&& step) {
    try {
        std::forward<Step>(step)();
        return true;
    } catch (const RuntimeError& error) {
        err.number = error.number();
        err.description = error.description();
        return false;
    }
}

// Runs the steps in order, each whether or not the one before it failed.
template <class... Steps> void resumeNext(Err& err, Steps&&... steps) {
    (static_cast<void>(attempt(err, std::forward<Steps>(steps))), ...);
}

} // namespace veldona
