#include "core/customerfields.h"

#include <algorithm>
#include <climits>

namespace veldona {

namespace {

using enum CustomerField::Frame;
using enum CustomerField::Saved;
using enum FieldTest::Match;
using enum FieldEntry::Kind;

// clang-format off
constexpr CustomerField kFields[] = {
    {.column = "HSTNO", .isRequired = true, .frame = General, .card = {"txtKod", " Cari No "},
     .saved = OnceAsText, .savedAt = 1, .listed = {"CariNo", 70, 1, 1},
     .filter = {"txtID", " Cari No "}, .filterAt = 1, .test = {" HSTNO like ", Beginning, 2}},
    {.column = "AD", .isRequired = true, .frame = General, .card = {"txtAd", "Adı "},
     .saved = AsText, .savedAt = 2, .listed = {"Adı", 120, 2, 2},
     .filter = {"txtAd", " Cari Adı "}, .filterAt = 2, .test = {" AD like ", Beginning, 4}},
    {.column = "SOYAD", .frame = General, .card = {"txtSoyad", "Soyadı "},
     .saved = AsText, .savedAt = 3, .listed = {"Soyadı", 120, 3, 3},
     .filter = {"txtSoyad", " Cari Soyadı "}, .filterAt = 3, .test = {"SOYAD like ", Beginning, 3}},
    {.column = "DOGTRH", .frame = General, .card = {"dtYas", " Doğum Tarihi ", Date},
     .saved = AsEmpty, .savedAt = 6, .listed = {"Doğum Tarihi", 90, 12, 4}},
    {.column = "YAS", .frame = General, .card = {"txtYas", " Yaşı"}, .saved = AsText, .savedAt = 5},
    {.column = "MEDENIHAL", .frame = General, .card = {"cboMedeniHali", "Medeni Hali ", List},
     .saved = AsText, .savedAt = 7},
    {.column = "CINS", .frame = General, .card = {"cboCinsiyet", "Cinsiyeti ", List},
     .saved = AsText, .savedAt = 9},
    {.column = "MESLEK", .frame = General, .card = {"txtMeslek", " Mesleği "},
     .saved = AsText, .savedAt = 8},
    {.column = "VERGIDAIRE", .frame = General, .card = {"txtVergiDairesi", "Vergi Dairesi "},
     .saved = AsText, .savedAt = 10},
    {.column = "VERGIDAIRENO", .frame = General, .card = {"txtVergiNo", "Vergi No "},
     .saved = AsText, .savedAt = 11},
    {.column = "", .frame = General, .card = {"cboGrup", "Grup ", List}, // the name of GURUP_ID
     .filter = {"cboGrup", "Grup ", List}, .filterAt = 5},
    {.column = "GURUP_ID", .frame = General, .card = {"txtGrupID"}, .saved = AsNumber, .savedAt = 12,
     .filter = {"txtGrupID"}, .filterAt = 6, .test = {" GURUP_ID = ", Equal, 1}},

    {.column = "EVMH", .frame = Home, .card = {"cboEvMahalle", "Mahalle ", List},
     .saved = AsText, .savedAt = 21, .listed = {"Mahalle", 120, 7, 8},
     .filter = {"txtMahalle", "Mahalle "}, .filterAt = 11, .test = {" EVMH like ", Anywhere, 10}},
    {.column = "EVCD", .frame = Home, .card = {"cboEvCdSk", "Cd / Sk ", List},
     .saved = AsText, .savedAt = 22, .listed = {"Cadde / Sokak", 120, 8, 9}},
    {.column = "EVAPT", .frame = Home, .card = {"txtEvApt", "Apt. / No "},
     .saved = AsText, .savedAt = 23, .listed = {"Apt. / No", 80, 9, 10}},
    {.column = "EVILCE", .frame = Home, .card = {"txtIlce", "İlçe "},
     .saved = AsText, .savedAt = 25, .listed = {"İlçe", 90, 10, 11},
     .filter = {"txtIlce", "İlçe "}, .filterAt = 9, .test = {" EVILCE like ", Anywhere, 8}},
    {.column = "EVIL", .frame = Home, .card = {"txtil", "İl "},
     .saved = AsText, .savedAt = 24, .listed = {"İl", 90, 11, 12},
     .filter = {"txtil", "İl "}, .filterAt = 8, .test = {" EVIL like ", Anywhere, 7}},
    {.column = "EVPOSTAKOD", .frame = Home, .card = {"txtPostaKodu", "Posta Kodu "},
     .saved = AsText, .savedAt = 26},
    {.column = "EVTEL", .frame = Home, .card = {"txtEvTel", "Telefon 1 "},
     .saved = AsText, .savedAt = 27, .listed = {"Ev Telefonu", 100, 4, 5},
     .filter = {"txtEvTel", "Telefon "}, .filterAt = 4, .test = {" EVTEL like ", Anywhere, 5}},
    {.column = "EVTEL2", .frame = Home, .card = {"txtEvTel2", "Telefon 2 "},
     .saved = WithoutBlanks, .savedAt = 31},
    {.column = "GSM", .frame = Home, .card = {"txtGSM", "GSM "},
     .saved = AsText, .savedAt = 28, .listed = {"GSM", 100, 5, 7}},

    {.column = "ISMH", .frame = Work, .card = {"cboIsMahalle", "Mahalle ", List},
     .saved = AsText, .savedAt = 13},
    {.column = "ISCD", .frame = Work, .card = {"txtCdSk", "Cd / Sk "}, .saved = AsText, .savedAt = 14},
    {.column = "ISAPT", .frame = Work, .card = {"txtIsApt", "Apt. / No "}, .saved = AsText, .savedAt = 15},
    {.column = "ISILCE", .frame = Work, .card = {"txtIsIlce", "İlçe "}, .saved = AsText, .savedAt = 17},
    {.column = "ISIL", .frame = Work, .card = {"txtIsIl", "İl "}, .saved = AsText, .savedAt = 16},
    {.column = "ISPOSTAKOD", .frame = Work, .card = {"txtIsPostaKodu", "Posta Kodu "},
     .saved = AsText, .savedAt = 18},
    {.column = "ISTEL", .frame = Work, .card = {"txtIsTelefon", "Telefon "},
     .saved = AsText, .savedAt = 19, .listed = {"İş Telefonu", 100, 6, 6}},
    {.column = "FAX", .frame = Work, .card = {"txtFax", "Fax"}, .saved = AsText, .savedAt = 20},

    // No card shows them; a save empties what it names.
    {.column = "BARKOD_KODU", .saved = AsEmpty, .savedAt = 4},
    {.column = "UYARI", .saved = AsEmpty, .savedAt = 29},
    {.column = "RESIM_AD", .saved = AsEmpty, .savedAt = 30},
    {.column = "OZEL_KOD1", .filter = {"cboOzelKod1", "Özel Kod 1 ", List}, .filterAt = 7,
     .test = {" OZEL_KOD1 like ", Beginning, 6}},
    {.column = "SEMT", .filter = {"txtSemt", "Semt "}, .filterAt = 10,
     .test = {" SEMT like ", Anywhere, 9}},
};
// clang-format on

// Those that `isIn`, in the order of the places that `at` tells; 0 is none.
template <class IsIn, class At> CustomerFieldRefs ordered(IsIn isIn, At at) {
    CustomerFieldRefs fields;
    for (const CustomerField& each : kFields)
        if (isIn(each)) fields.push_back(&each);
    const auto place = [&](const CustomerField* field) { return at(*field) == 0 ? INT_MAX : at(*field); };
    std::stable_sort(fields.begin(), fields.end(),
                     [&](const auto* one, const auto* other) { return place(one) < place(other); });
    return fields;
}

bool isListed(const CustomerField& field) {
    return field.listed.width > 0;
}

} // namespace

CustomerFieldRefs cardFields(CustomerField::Frame frame) {
    return ordered([&](const CustomerField& field) { return field.frame == frame; },
                   [](const CustomerField&) { return 0; });
}

const CustomerFieldRefs& savedFields() {
    static const CustomerFieldRefs all =
        ordered([](const CustomerField& field) { return field.saved != CustomerField::Saved::No; },
                [](const CustomerField& field) { return field.savedAt; });
    return all;
}

CustomerFieldRefs filterFields() {
    return ordered([](const CustomerField& field) { return *field.filter.control != 0; },
                   [](const CustomerField& field) { return field.filterAt; });
}

const CustomerFieldRefs& testedFields() {
    static const CustomerFieldRefs all =
        ordered([](const CustomerField& field) { return *field.test.words != 0; },
                [](const CustomerField& field) { return field.test.at; });
    return all;
}

std::vector<DataGrid::Column> customerListColumns() {
    std::vector<DataGrid::Column> columns;
    for (const CustomerField* each :
         ordered(isListed, [](const CustomerField& field) { return field.listed.at; }))
        columns.push_back({each->listed.caption, each->column, each->listed.width});
    return columns;
}

const std::string& customerListQuery() {
    static const std::string query = [] {
        std::string text = "SELECT MUSTKAYIT.ID";
        for (const CustomerField* each :
             ordered(isListed, [](const CustomerField& field) { return field.listed.queriedAt; }))
            text += std::string(",MUSTKAYIT.") + each->column;
        return text + "  FROM MUSTKAYIT";
    }();
    return query;
}

} // namespace veldona
