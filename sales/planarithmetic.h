// The arithmetic of an installment plan, apart from the screen.
//
// By count every installment is the same rounded quotient and the cents that are lost stay lost; by amount
// the last installment takes all of the difference, up or down.
#pragma once

#include <cstdint>

#include "platform/runtime/value.h"

namespace veldona {

// How many installments of `tutar` the remainder makes, rounded half to even; may leave 8 bits. Error 11 for
// an amount of 0.
[[nodiscard]] double installmentCount(double kalan, double tutar);
// (tutar + kalan) - adet × tutar.
[[nodiscard]] Currency lastInstallment(Currency tutar, Currency kalan, std::uint8_t adet);
// Counted from the start each time: the 31st comes back behind the shorter months.
[[nodiscard]] DateTime installmentDue(DateTime from, int ay);
// The rows that the schedule's grid is given for a plan with a down payment, its heading counted.
[[nodiscard]] int rowsWithDownPayment(std::uint8_t adet);

} // namespace veldona
