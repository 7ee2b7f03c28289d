#include "sales/planarithmetic.h"

#include "platform/runtime/conversion.h"

namespace veldona {

double installmentCount(double kalan, double tutar) {
    return roundHalfEven(divide(kalan, tutar));
}

Currency lastInstallment(Currency tutar, Currency kalan, std::uint8_t adet) {
    return tutar + kalan - Currency::ofWhole(adet) * tutar;
}

DateTime installmentDue(DateTime from, int ay) {
    return addMonths(from, ay);
}

int rowsWithDownPayment(std::uint8_t adet) {
    return adet == 1 ? 3 : adet + 2;
}

} // namespace veldona
