#include "reports/unpaidmonths.h"

#include <algorithm>
#include <cmath>

#include "platform/runtime/conversion.h"
#include "platform/runtime/error.h"

namespace veldona {

namespace {

using Hareketler = std::span<const Hareket>;

// Sums of fractions leave a residue in the last bits, which is no money.
StoredAmount net(StoredAmount sum) {
    constexpr int decimals = 4;
    const double column = sum.column();
    return column == std::nearbyint(column) ? sum : StoredAmount::ofColumn(roundHalfEven(column, decimals));
}

template <class Test> StoredAmount topla(Hareketler rows, const Test& test) {
    StoredAmount sum;
    for (const Hareket& row : rows)
        if (row.ODTRH && test(*row.ODTRH)) sum += row.ODMIKTAR;
    return net(sum);
}

StoredAmount tariheKadar(Hareketler rows, DateTime son) {
    return topla(rows, [&](DateTime date) { return date <= son; });
}

struct Pencere {
    DateTime bas, son; // the second is outside
    [[nodiscard]] bool holds(DateTime date) const { return date >= bas && date < son; }
};

// From the first of the date's month to the first of the next.
Pencere ayi(DateTime date) {
    const DateTime bas = DateTime::of(date.year(), date.month(), 1);
    return {bas, addMonths(bas, 1)};
}

const Hareket* ilki(Hareketler rows, const Pencere& pencere) {
    const auto found = std::ranges::find_if(
        rows, [&](const Hareket& row) { return row.ODTRH && pencere.holds(*row.ODTRH); });
    return found == rows.end() ? nullptr : &*found;
}

struct Uclar {
    std::optional<DateTime> ilk, son;
    void genislet(Hareketler rows) {
        for (const Hareket& row : rows) {
            if (!row.ODTRH) continue;
            ilk = ilk ? std::min(*ilk, *row.ODTRH) : *row.ODTRH;
            son = son ? std::max(*son, *row.ODTRH) : *row.ODTRH;
        }
    }
};

} // namespace

bool tamamenOdenmis(StoredAmount topBorc, std::span<const Hareket> odenen) {
    StoredAmount sum;
    for (const Hareket& row : odenen)
        sum += row.ODMIKTAR;
    return topBorc.rounded() == sum.rounded();
}

std::vector<AcikAy> acikAylar(std::span<const Hareket> taksit, std::span<const Hareket> odenen) {
    Uclar uclar;
    uclar.genislet(taksit);
    uclar.genislet(odenen);
    std::vector<AcikAy> aylar;
    if (!uclar.ilk) return aylar;
    const int aySayisi = toByte(monthsBetween(*uclar.ilk, *uclar.son));
    DateTime tarih = *uclar.ilk;
    for (int i = 0; i <= aySayisi; ++i, tarih = addMonths(tarih, 1)) {
        const StoredAmount borc = tariheKadar(taksit, tarih), odeme = tariheKadar(odenen, tarih);
        if (borc == odeme) break;
        if (odeme > borc) continue;
        const Pencere ay = ayi(tarih);
        const auto icinde = [&](DateTime date) { return ay.holds(date); };
        const StoredAmount ayinBorcu = topla(taksit, icinde), ayinOdemesi = topla(odenen, icinde);
        if (ayinBorcu == ayinOdemesi) continue;
        const Hareket* ilk = ilki(taksit, ay);
        if (!ilk) ilk = ilki(odenen, ay);
        aylar.push_back({*ilk->ODTRH, ayinBorcu - ayinOdemesi});
    }
    return aylar;
}

} // namespace veldona
