#include "customers/cardfields.h"

#include "core/database.h"
#include "core/money.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

using F = FrmCariEkle;

std::string shownText(const FrmCariEkle& f, const CustomerColumn& s) {
    if (s.text) return (f.*s.text).text();
    if (s.list) return (f.*s.list).text();
    return {};
}

void setText(FrmCariEkle& f, const CustomerColumn& s, const std::string& text) {
    if (s.text) (f.*s.text).setText(text);
    if (s.list) (f.*s.list).setText(text);
}

void showGroup(FrmCariEkle& f) {
    const std::string id = joinText(f.record.rs->value("GURUP_ID"));
    f.cboGrup.setText("");
    f.txtGrupID.setText(id);
    if (id.empty()) return;
    RecordsetPtr rs;
    KayitSetiAc(f.session, rs, "SELECT ID,GRUP_ADI FROM GRUPLAR WHERE ID = " + id,
                adodb::CursorLocation::Client);
    if (!rs->eof()) f.cboGrup.setText(joinText(rs->value("GRUP_ADI")));
}

// While a record fills the fields, their changes are not the operator's.
class FillingGuard {
public:
    explicit FillingGuard(FrmCariEkle& f) : f_(f) { f_.fillingFields = true; }
    ~FillingGuard() { f_.fillingFields = false; }
    FillingGuard(const FillingGuard&) = delete;
    FillingGuard& operator=(const FillingGuard&) = delete;

private:
    FrmCariEkle& f_;
};

} // namespace

const std::vector<CustomerColumn>& customerColumns() {
    static const std::vector<CustomerColumn> all = {
        {CustomerField::HSTNO, "HSTNO", &F::txtKod, nullptr},
        {2, "AD", &F::txtAd, nullptr},
        {3, "SOYAD", &F::txtSoyad, nullptr},
        {4, "BARKOD_KODU", nullptr, nullptr},
        {5, "YAS", &F::txtYas, nullptr},
        {CustomerField::DOGTRH, "DOGTRH", nullptr, nullptr},
        {7, "MEDENIHAL", nullptr, &F::cboMedeniHali},
        {8, "MESLEK", &F::txtMeslek, nullptr},
        {9, "CINS", nullptr, &F::cboCinsiyet},
        {10, "VERGIDAIRE", &F::txtVergiDairesi, nullptr},
        {11, "VERGIDAIRENO", &F::txtVergiNo, nullptr},
        {CustomerField::GURUP_ID, "GURUP_ID", &F::txtGrupID, nullptr},
        {13, "ISMH", nullptr, &F::cboIsMahalle},
        {14, "ISCD", &F::txtCdSk, nullptr},
        {15, "ISAPT", &F::txtIsApt, nullptr},
        {16, "ISIL", &F::txtIsIl, nullptr},
        {17, "ISILCE", &F::txtIsIlce, nullptr},
        {18, "ISPOSTAKOD", &F::txtIsPostaKodu, nullptr},
        {19, "ISTEL", &F::txtIsTelefon, nullptr},
        {20, "FAX", &F::txtFax, nullptr},
        {21, "EVMH", nullptr, &F::cboEvMahalle},
        {22, "EVCD", nullptr, &F::cboEvCdSk},
        {23, "EVAPT", &F::txtEvApt, nullptr},
        {24, "EVIL", &F::txtil, nullptr},
        {25, "EVILCE", &F::txtIlce, nullptr},
        {26, "EVPOSTAKOD", &F::txtPostaKodu, nullptr},
        {27, "EVTEL", &F::txtEvTel, nullptr},
        {28, "GSM", &F::txtGSM, nullptr},
        {29, "UYARI", nullptr, nullptr},
        {30, "RESIM_AD", nullptr, nullptr},
        {CustomerField::EVTEL2, "EVTEL2", &F::txtEvTel2, nullptr},
    };
    return all;
}

Value CariAlanDegeri(const FrmCariEkle& f, int kod) {
    const CustomerColumn& s = customerColumns().at(static_cast<std::size_t>(kod - 1));
    if (kod == CustomerField::GURUP_ID) return SifirIseNull(val(f.txtGrupID.text()));
    const std::string text = trim(shownText(f, s));
    return kod == CustomerField::EVTEL2 ? replaceAll(text, " ", "") : text;
}

void AlanlariTemizle(FrmCariEkle& f) {
    const FillingGuard filling(f);
    for (const CustomerColumn& s : customerColumns())
        if (s.kod != CustomerField::HSTNO || f.record.durum != FormModu::Yeni) setText(f, s, "");
    f.cboGrup.setText("");
    f.dtYas.setValue(Null{});
}

void showFields(FrmCariEkle& f) {
    const FillingGuard filling(f);
    const adodb::Recordset& rs = *f.record.rs;
    for (const CustomerColumn& s : customerColumns())
        setText(f, s, joinText(rs.value(s.column)));
    f.dtYas.setValue(format(rs.value("DOGTRH"), "dd/mm/yyyy"));
    showGroup(f);
}

void fillList(Session& session, ComboBox& combo, const std::string& sql, const char* shown, const char* key) {
    RecordsetPtr rs;
    KayitSetiAc(session, rs, sql, adodb::CursorLocation::Client);
    combo.clear();
    for (; !rs->eof(); rs->moveNext())
        combo.add(joinText(rs->value(shown)), rs->value(key));
}

void groupList(Session& session, ComboBox& cboGrup, TextBox& txtGrupID) {
    fillList(session, cboGrup, "SELECT ID, GRUP_ADI FROM  GRUPLAR ORDER BY GRUP_ADI", "GRUP_ADI", "ID");
    cboGrup.onClick = [&] { txtGrupID.setText(cboGrup.boundText()); };
    cboGrup.onChange = [&] {
        if (cboGrup.text().empty()) txtGrupID.setText("");
    };
}

void ListeleriYukle(FrmCariEkle& f) {
    groupList(f.session, f.cboGrup, f.txtGrupID);
    for (ComboBox* mahalle : {&f.cboEvMahalle, &f.cboIsMahalle})
        fillList(f.session, *mahalle, "SELECT NO,MAHALLE FROM  ADRES ORDER BY MAHALLE", "MAHALLE", "NO");
    fillList(f.session, f.cboEvCdSk, "SELECT NO,SK FROM  ADRESSOK ORDER BY SK", "SK", "NO");
    for (const char* hal : {"EVLİ", "BEKAR"})
        f.cboMedeniHali.add(hal);
    for (const char* cins : {"ERKEK", "BAYAN"})
        f.cboCinsiyet.add(cins);
}

} // namespace veldona
