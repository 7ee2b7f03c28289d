#include "customers/cardfields.h"

#include "core/database.h"
#include "core/money.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

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

std::vector<std::string> textsOf(const FrmCariEkle& f) {
    std::vector<std::string> texts;
    for (const FieldControl* each : fieldsOf(f))
        texts.push_back(each->text());
    return texts;
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

std::vector<FieldControl*> fieldsOf(const FrmCariEkle& f) {
    std::vector<FieldControl*> all;
    for (const FieldFrame* frame : {&f.fraGenel, &f.fraEvAdresi, &f.fraIsAdresi})
        for (const auto& each : frame->fields.all())
            all.push_back(each.get());
    return all;
}

Value CariAlanDegeri(const FrmCariEkle& f, const CustomerField& field) {
    using enum CustomerField::Saved;
    if (field.saved == AsEmpty) return std::string();
    for (const FieldControl* each : fieldsOf(f)) {
        if (&each->field != &field) continue;
        if (field.saved == AsNumber) return SifirIseNull(val(each->text()));
        const std::string text = trim(each->text());
        return field.saved == WithoutBlanks ? replaceAll(text, " ", "") : text;
    }
    return std::string();
}

void AlanlariTemizle(FrmCariEkle& f) {
    const FillingGuard filling(f);
    for (FieldControl* each : fieldsOf(f))
        if (&each->control() != &f.txtKod || f.record.durum != FormModu::Yeni) each->setText("");
}

void showFields(FrmCariEkle& f) {
    const FillingGuard filling(f);
    const adodb::Recordset& rs = *f.record.rs;
    for (FieldControl* each : fieldsOf(f)) {
        if (!*each->field.column) continue;
        const Value value = rs.value(each->field.column);
        const bool isDate = each->field.card.kind == FieldEntry::Kind::Date;
        each->setText(isDate ? format(value, "dd/mm/yyyy") : joinText(value));
    }
    showGroup(f);
    f.asRead = textsOf(f);
}

void showFieldsAnew(FrmCariEkle& f) {
    const std::vector<std::string> before = f.asRead, now = textsOf(f);
    showFields(f);
    const FillingGuard filling(f);
    const auto fields = fieldsOf(f);
    for (std::size_t i = 0; i < fields.size() && i < before.size(); ++i)
        if (now[i] != before[i]) fields[i]->setText(now[i]);
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
    const FieldControls& home = f.fraEvAdresi.fields;
    for (ComboBox* mahalle :
         {&home.at<ComboBox>("cboEvMahalle"), &f.fraIsAdresi.fields.at<ComboBox>("cboIsMahalle")})
        fillList(f.session, *mahalle, "SELECT NO,MAHALLE FROM  ADRES ORDER BY MAHALLE", "MAHALLE", "NO");
    fillList(f.session, home.at<ComboBox>("cboEvCdSk"), "SELECT NO,SK FROM  ADRESSOK ORDER BY SK", "SK",
             "NO");
    for (const char* hal : {"EVLİ", "BEKAR"})
        f.fraGenel.fields.at<ComboBox>("cboMedeniHali").add(hal);
    for (const char* cins : {"ERKEK", "BAYAN"})
        f.fraGenel.fields.at<ComboBox>("cboCinsiyet").add(cins);
}

} // namespace veldona
