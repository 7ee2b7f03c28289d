#include "reports/income.h"

#include <initializer_list>

#include "core/money.h"
#include "core/reporting.h"
#include "core/session.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/format.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

struct Limits {
    std::string from;
    std::string son;
};

// Whether the two days are read again, month first, is decided by the first of them alone: where it lies
// behind the 12th and the last day does not, the store takes that one's day for the month.
Limits limits(const RptGelirGider& f) {
    const bool looksLikeMonth = val(left(f.dtTarih.text(), 2)) < 13;
    const auto limit = [looksLikeMonth](const DateBox& box, const char* timeOfDay) {
        const DateTime gun = toDate(box.value());
        const DateTime readDay = looksLikeMonth ? toDate(format(gun, "mm,dd,yyyy")) : gun;
        return toText(toDate(toText(readDay) + timeOfDay));
    };
    return {limit(f.dtTarih, kDayBegin), limit(f.dtSonTarih, kDayEnd)};
}

std::string range(const char* alan, const Limits& s) {
    return std::string(alan) + ">=# " + s.from + "# AND " + alan + "<=# " + s.son + "#  ";
}

std::string incomeQuery(const Limits& s) {
    return "SELECT  Mid(ODTRH,4,2) AS GURUP,UNVAN,ODTRH AS G_TARIH,round(ODMIKTAR/1000000,2) AS "
           "G_TUTAR,'Taksit Ödemesi' AS G_ACIKLAMA,'1' AS ISLEM_TURU,'Gelir' as "
           "G_GELIR_GIDER,KONTROL_KIM,KASA_ID From S_TAKSITODENEN WHERE " +
           range("ODTRH", s) +
           " Union SELECT    Mid(TARIH,4,2) AS GURUP,UNVAN, TARIH AS "
           "G_TARIH,round(ALACAK_TUTAR/1000000,2)  AS G_TUTAR,(ISLEM_TUR+' -  '+ACIKLAMA) AS "
           "G_ACIKLAMA,'2' AS ISLEM_TURU,'Gelir' as G_GELIR_GIDER,KONTROL_KIM,KASA_ID From "
           "S_T_KASA_HAREKETLERI WHERE " +
           range("TARIH", s) + " AND  S_T_KASA_HAREKETLERI.ISLEM_ID in (3,1) ORDER BY G_TARIH";
}

void incomeReport(RptGelirGider& f) {
    if (f.cboIslemTuru.text().empty())
        return f.session.desktop.dialogs.tell("İşlem Türü Seçiniz", Icon::Information);
    if (f.cboIslemTuru.text() != "Gelir") return;
    if (!f.cboKullanici.boundText().empty() || !trim(f.txtKasaID.text()).empty()) return;
    KayitSetiAc(f.session, f.rsIncome, incomeQuery(limits(f)), adodb::CursorLocation::Client);
    if (f.rsIncome->eof())
        return f.session.desktop.dialogs.tell("Kriterlere Uygun Kayıt Bulunamadı", Icon::Information);
    showBandedReport(f.session, "rprGelirDetay", f.rsIncome.get());
}

void cboKasa_Click(RptGelirGider& f) {
    if (val(f.cboKasa.boundText()) > 0) f.txtKasaID.setText(trim(f.cboKasa.boundText()));
}

void cboKasa_Change(RptGelirGider& f) {
    if (f.cboKasa.text().empty()) f.txtKasaID.setText("");
    cboKasa_Click(f);
}

void Form_Load(RptGelirGider& f) {
    const DateTime today = f.session.desktop.clock.today();
    f.dtTarih.setValue(today);
    f.dtSonTarih.setValue(today);
    f.frmGider.setVisible(false);
    f.chkTaksitOdemesi.setChecked(false);
    f.chkTaksitOdemesi.setVisible(false);
    f.cboKullanici.setText("");
    f.cboKasa.setText("");
}

void enterMoves(Control& from, Control& to) {
    from.onKeyDown = [&to](KeyEvent& event) {
        if (event.key != Key::Enter) return;
        event.swallowed = true;
        to.setFocus();
    };
}

void placeControls(RptGelirGider& f) {
    f.cboKullanici.placeIn(f.fraKullanici);
    for (CheckBox* box :
         {&f.chkCariTahsilat, &f.chkAlinanCek, &f.chkStokGirisAlisFaturasi, &f.chkTaksitOdemesi})
        box->placeIn(f.frmGelir);
    for (CheckBox* box : {&f.ChkStokCikisSatisFaturasi, &f.ChkKesilenCek, &f.ChkCariOdenen})
        box->placeIn(f.frmGider);
}

} // namespace

void cmdTamam_Click(RptGelirGider& f) {
    Err err;
    attempt(err, [&] { incomeReport(f); });
    if (err.number != 0) f.session.desktop.dialogs.tell(err.description);
}

RptGelirGider::RptGelirGider(Forms& forms, Session& itsSession)
    : Form(forms, "rptGelirGider", "Tahsilat Listesi"), session(itsSession) {
    placeControls(*this);
    cboIslemTuru.add("Gelir");
    cboIslemTuru.add("Gider");
    cboIslemTuru.setListIndex(0);
    enterMoves(dtTarih, dtSonTarih);
    enterMoves(dtSonTarih, cboIslemTuru);
    enterMoves(cboIslemTuru, cboKullanici);
    enterMoves(cboKullanici, cmdTamam);
    cboKasa.onClick = [this] { cboKasa_Click(*this); };
    cboKasa.onChange = [this] { cboKasa_Change(*this); };
    cmdTamam.onClick = [this] { cmdTamam_Click(*this); };
    cmdCikis.onClick = [this] { this->forms().unload(*this); };
    onLoad = [this] { Form_Load(*this); };
    onUnload = [this] { KayitSetiKapat(rsIncome); };
}

std::unique_ptr<Form> makeRptGelirGider(Forms& forms, Session& session) {
    return std::make_unique<RptGelirGider>(forms, session);
}

} // namespace veldona
