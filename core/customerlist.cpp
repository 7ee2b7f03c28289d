#include "core/customerlist.h"

namespace veldona {

std::vector<DataGrid::Column> customerListColumns() {
    return {{"CariNo", "HSTNO", 70},    {"Adı", "AD", 120},
            {"Soyadı", "SOYAD", 120},   {"Ev Telefonu", "EVTEL", 100},
            {"GSM", "GSM", 100},        {"İş Telefonu", "ISTEL", 100},
            {"Mahalle", "EVMH", 120},   {"Cadde / Sokak", "EVCD", 120},
            {"Apt. / No", "EVAPT", 80}, {"İlçe", "EVILCE", 90},
            {"İl", "EVIL", 90},         {"Doğum Tarihi", "DOGTRH", 90}};
}

} // namespace veldona
