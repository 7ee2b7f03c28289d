// The numbers by which the data access interface names the types of columns.
#pragma once

#include <cstdint>

namespace veldona::columntype {

inline constexpr std::int32_t kSmall = 2;
inline constexpr std::int32_t kWhole = 3;
inline constexpr std::int32_t kNumber = 5;
inline constexpr std::int32_t kMoney = 6;
inline constexpr std::int32_t kBoolean = 11;
inline constexpr std::int32_t kTiny = 16;
inline constexpr std::int32_t kByte = 17;
inline constexpr std::int32_t kUnsignedWhole = 19;
inline constexpr std::int32_t kFixedText = 129;
inline constexpr std::int32_t kDecimal = 131;
inline constexpr std::int32_t kDay = 133;
inline constexpr std::int32_t kDate = 135;
inline constexpr std::int32_t kByteText = 200;
inline constexpr std::int32_t kByteMemo = 201;
inline constexpr std::int32_t kText = 202;
inline constexpr std::int32_t kMemo = 203;
inline constexpr std::int32_t kBinary = 205;

} // namespace veldona::columntype
