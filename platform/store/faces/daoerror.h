// What this face makes of a failure below it.
#pragma once

#include <cstdint>

#include "platform/runtime/error.h"
#include "platform/store/dialect/storeerror.h"

namespace veldona::dao {

inline constexpr std::int32_t kOtherError = 3000;
inline constexpr std::int32_t kNoEditOpen = 3020;
inline constexpr std::int32_t kConstraint = 3022;
inline constexpr std::int32_t kNoSuchFile = 3024;
inline constexpr std::int32_t kDiskFull = 3026;
inline constexpr std::int32_t kNotUpdatable = 3027;
inline constexpr std::int32_t kWrongPassword = 3031;
inline constexpr std::int32_t kInputOutput = 3043;
inline constexpr std::int32_t kReadOnlyFile = 3051;
inline constexpr std::int32_t kUnknownName = 3061;
inline constexpr std::int32_t kSyntax = 3075;
inline constexpr std::int32_t kNoSuchRelation = 3078;
inline constexpr std::int32_t kFieldNotWritable = 3164;
inline constexpr std::int32_t kLocked = 3260;
inline constexpr std::int32_t kNoDatabase = 3343;
inline constexpr std::int32_t kClosed = 3420;
inline constexpr std::int32_t kTypeMismatch = 3464;

[[nodiscard]] inline std::int32_t numberOf(store::StoreError::Kind kind) {
    using Kind = store::StoreError::Kind;
    switch (kind) {
    case Kind::Syntax:
        return kSyntax;
    case Kind::UnknownName:
        return kUnknownName;
    case Kind::TypeMismatch:
        return kTypeMismatch;
    case Kind::Constraint:
        return kConstraint;
    case Kind::FileMissing:
        return kNoSuchFile;
    case Kind::WrongPassword:
        return kWrongPassword;
    case Kind::Damaged:
        return kNoDatabase;
    case Kind::Locked:
        return kLocked;
    case Kind::DiskFull:
        return kDiskFull;
    case Kind::NetworkDisk:
    case Kind::InputOutput:
        return kInputOutput;
    case Kind::ReadOnly:
        return kReadOnlyFile;
    case Kind::TooLarge:
    case Kind::GivenUp:
    case Kind::Injected:
    case Kind::Other:
        break;
    }
    return kOtherError;
}

// Runs `step`; a failure of the store leaves with a number of this face.
template <class Step> decltype(auto) withNumbers(Step&& step) {
    try {
        return step();
    } catch (const store::StoreError& error) {
        throw RuntimeError(numberOf(error.kind()), error.description());
    }
}

} // namespace veldona::dao
