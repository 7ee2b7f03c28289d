// The two report screens on open sales: what is overdue, and what is expected to come in.
//
// They are one record: the expected one has no choice of the order. Both fill the same scratch table, so only
// one of them can be computing at a time; the report in front of them sees to that.
#pragma once

#include <cstdint>
#include <memory>

#include "platform/controls/forms.h"
#include "platform/controls/lists.h"
#include "reports/reportrange.h"

namespace veldona {

struct Session;

enum class ReportScreenKind { Overdue, Expected };

struct ReportScreen : Form {
    ReportScreen(Forms& forms, Session& itsSession, ReportScreenKind itsKind);

    Session& session;
    const ReportScreenKind kind;

    // Day, or Null while unchecked.
    DateBox dtRaporTarihi{*this, "dtRaporTarihi", DateBox::Style::PickerWithCheck};
    DateBox dtRaporTarihiSon{*this, "dtRaporTarihiSon", DateBox::Style::PickerWithCheck};
    ComboBox cboRapor{*this, "cboRapor", ComboBox::Style::ListOnly};
    std::unique_ptr<ComboBox> cboSiralamaKriteri; // of the overdue one alone
    CommandButton cmdRapor{*this, "cmdRapor", "&Tamam"};
    CommandButton cmdCikis{*this, "cmdCikis", "&Çıkış"};
    CommandButton Command1{*this, "Command1", "ÇIKI&Ş"};
    ReportRange range{*this, session};

    std::int32_t reportMode = 0; // 1 expected, else overdue: the title on the paper
    bool computing = false;      // a run is under way; a second press waits for nothing and starts nothing
};

[[nodiscard]] std::unique_ptr<Form> makeRprOdemesiGecen(Forms& forms, Session& session);
[[nodiscard]] std::unique_ptr<Form> makeRprBeklenenTahsilat(Forms& forms, Session& session);

} // namespace veldona
