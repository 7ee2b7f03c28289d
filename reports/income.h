// The money that came in over a range of days: payments and cash-box receipts, merged and sorted by date.
//
// Only the income side prints; "Gider" gives nothing. Choosing a user or a cash box turns the report off, and
// nothing fills those two lists. Two rows that are equal in every column are one.
#pragma once

#include <memory>

#include "core/database.h"
#include "platform/controls/forms.h"
#include "platform/controls/lists.h"

namespace veldona {

struct Session;

struct RptGelirGider : Form {
    RptGelirGider(Forms& forms, Session& itsSession);

    Session& session;

    DateBox dtTarih{*this, "dtTarih"};
    DateBox dtSonTarih{*this, "dtSonTarih"};
    ComboBox cboIslemTuru{*this, "cboIslemTuru", ComboBox::Style::ListOnly};
    Frame fraKullanici{*this, "fraKullanici"};
    ComboBox cboKullanici{*this, "cboKullanici"};
    ComboBox cboKasa{*this, "cboKasa"};
    TextBox txtKasaID{*this, "txtKasaID"};
    TextBox txtCariUnvan{*this, "txtCariUnvan"};
    Frame frmGelir{*this, "frmGelir"};
    CheckBox chkCariTahsilat{*this, "chkCariTahsilat", "Cari Tahsilat"};
    CheckBox chkAlinanCek{*this, "chkAlinanCek", "Alınan Çek"};
    CheckBox chkStokGirisAlisFaturasi{*this, "chkStokGirisAlisFaturasi", "Alış Faturası"};
    CheckBox chkTaksitOdemesi{*this, "chkTaksitOdemesi", "Taksit Ödemesi"};
    Frame frmGider{*this, "frmGider"};
    CheckBox ChkStokCikisSatisFaturasi{*this, "ChkStokCikisSatisFaturasi", "Satış Faturası"};
    CheckBox ChkKesilenCek{*this, "ChkKesilenCek", "Kesilen Çek"};
    CheckBox ChkCariOdenen{*this, "ChkCariOdenen", "Cari Ödenen"};
    CommandButton cmdTamam{*this, "cmdTamam", "&Tamam"};
    CommandButton cmdCikis{*this, "cmdCikis", "&Çıkış"};

    RecordsetPtr rsIncome;
};

[[nodiscard]] std::unique_ptr<Form> makeRptGelirGider(Forms& forms, Session& session);

void cmdTamam_Click(RptGelirGider& f);

} // namespace veldona
