#include "sales/planarithmetic.h"

#include "platform/runtime/conversion.h"

namespace veldona {

double TaksitSayisi(double kalan, double tutar) {
    return roundHalfEven(divide(kalan, tutar));
}

Currency SonTaksit(Currency tutar, Currency kalan, std::uint8_t adet) {
    return tutar + kalan - Currency::ofWhole(adet) * tutar;
}

DateTime TaksitVadesi(DateTime baslangic, int ay) {
    return addMonths(baslangic, ay);
}

int PesinatliSatirSayisi(std::uint8_t adet) {
    return adet == 1 ? 3 : adet + 2;
}

} // namespace veldona
