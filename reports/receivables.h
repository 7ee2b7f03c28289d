// What the overdue and the expected report share: the range of dates, the sales with what is left on them,
// the scratch table GUNUGECENODM between computation and paper, and the paper.
//
// The scratch table is empty between runs; only a row that could not be written leaves the ones before it.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "platform/runtime/datetime.h"
#include "platform/runtime/storedamount.h"
#include "platform/store/faces/adodb.h"
#include "reports/receivablesscreen.h"

namespace veldona {

// The days of the two pickers as the store's literals read them; "" for one that is not set.
struct TarihAraligi {
    std::string baslangic;
    std::string son;
    bool baslangicSecili = false;
    bool sonSecili = false;
};

struct GecikmeKaydi {
    std::string MUSTNO;
    std::string AD;
    std::string SOYAD;
    std::int16_t ISLEMNO = 0;
    DateTime ODTRH;     // the latest due date counted
    DateTime MIN_ODTRH; // the earliest
    StoredAmount KALAN;
};

// One element a sale, counted in 16 bits. An element that is passed over stays empty.
class GecikmeDizisi {
public:
    void ilerle();        // error 6 behind element 32767
    GecikmeKaydi& uzat(); // the array reaches to the current element from now on
    [[nodiscard]] std::vector<GecikmeKaydi>& kayitlar() { return kayitlar_; }

private:
    std::int16_t sira_ = 0;
    std::vector<GecikmeKaydi> kayitlar_;
};

// How one of the two reports differs.
struct RaporKurallari {
    // What is left on each sale. False where there is no sale, or a query failed and the operator was told.
    bool (*hesapla)(RaporEkrani& f, const TarihAraligi& aralik, GecikmeDizisi& dizi);
    // Takes the rows away again where the detailed report is asked for, which nobody prints.
    void (*ayrintiyiBosalt)(RaporEkrani& f, const TarihAraligi& aralik);
    // The rows of the paper.
    std::string (*raporSorgusu)(const RaporEkrani& f, const TarihAraligi& aralik);
};

void RaporCalistir(RaporEkrani& f, const RaporKurallari& kurallar);

bool GunuGecenBosalt(Session& session);
// The schedule's sum and first and last date of each sale, in the columns MUSTNO, ISLEMNO, sum, last, first.
[[nodiscard]] std::string TaksitGruplari(const std::string& kosul);
// Puts the group's sale and dates into `kayit`. Error 94 for a sale without a number, 6 for one above 32767.
void GrubuAl(const adodb::Recordset& rs, GecikmeKaydi& kayit);
// The columns of the paper, with `ara` between the two telephone numbers, up to the join with the customers.
[[nodiscard]] std::string RaporSutunlari(const std::string& ara);

} // namespace veldona
