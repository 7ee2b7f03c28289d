#include "ledger/takenback.h"

#include <algorithm>
#include <array>

#include "core/database.h"
#include "core/formframe.h"
#include "core/session.h"
#include "journal/takenback.h"
#include "ledger/loading.h"
#include "ledger/openaccount.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/text.h"
#include "platform/store/faces/adodb.h"

namespace veldona {

namespace {

std::array<Frame*, 4> panelsOf(FrmMainVeldona& f) {
    return {&f.fraDuzelt, &f.fraIslemTarihi, &f.fraTaksitlendir, &f.frmUrunEkle};
}

bool isPanelOpen(FrmMainVeldona& f) {
    return std::ranges::any_of(panelsOf(f), [](const Frame* panel) { return panel->visible(); });
}

bool concernsShown(const FrmMainVeldona& f, const journal::Act& act) {
    const std::string account = trim(f.Text1.text());
    return !account.empty() && std::any_of(act.entries.begin(), act.entries.end(),
                                           [&](const auto& entry) { return entry.account == account; });
}

bool takesPaymentAway(const journal::Act& act) {
    return std::ranges::any_of(act.entries, [](const journal::Entry& entry) {
        return entry.table == "TAKSITODENEN" && entry.kind == journal::Entry::Kind::Removed;
    });
}

// Asked for by number: what other tills wrote is counted for all tables, what this one did is not for this.
void look(FrmMainVeldona& f) {
    TakenBackWatch& watch = f.takenBack;
    for (const journal::Act& act : journal::takenBackSince(*f.session.gBaglanti, watch.seen)) {
        watch.isPending = watch.isPending || concernsShown(f, act);
        // The line of the last collection may tell of one that is none any more.
        if (takesPaymentAway(act)) f.lblSonTahsilat.setVisible(false);
    }
}

void blankCustomer(FrmMainVeldona& f) {
    f.Label7.setCaption("");
    f.txtAdres.setText("");
    f.txtTel.setText("");
    f.m_Uyari.clear();
    f.lbluyari.setVisible(false);
    f.session.gHSTNO.clear();
}

bool hasCard(FrmMainVeldona& f, const std::string& account) {
    RecordsetPtr rs;
    KayitSetiAc(f.session, rs, "SELECT ID FROM MUSTKAYIT WHERE HSTNO = '" + account + "'",
                adodb::CursorLocation::Client);
    return !rs->eof();
}

// As if the number were typed and the sale opened; the focus stays.
void loadAnew(FrmMainVeldona& f) {
    const std::string sale = f.Text5.text();
    if (!hasCard(f, trim(f.Text1.text()))) blankCustomer(f);
    // Whether the plan adds up is for those to be told who do something to it.
    f.bTaksitKontrol = false;
    MusteriYukle(f);
    for (int row = 0; row < f.L3.count() && !sale.empty(); ++row) {
        if (f.L3.list(row) != sale) continue;
        f.L3.setListIndex(row);
        f.bTaksitKontrol = false;
        if (!L3_DblClick(f)) return;
        break;
    }
    f.bTaksitKontrol = true;
}

bool isOvertaken(FrmMainVeldona& f) {
    TakenBackWatch& watch = f.takenBack;
    if (watch.written.hasChanged(*f.session.gBaglanti)) look(f);
    if (!watch.isPending) return false;
    for (Frame* panel : panelsOf(f))
        panel->setVisible(false);
    showTakenBack(f);
    f.session.desktop.dialogs.tell("Bu hesapta bir işlem geri alındı. Kaydedilmedi; hesap defterdeki son "
                                   "hâliyle geldi. Bakın, gerekiyorsa "
                                   "yeniden yapın.",
                                   Icon::Exclamation);
    return true;
}

} // namespace

void beginWatchingForTakenBack(FrmMainVeldona& f) {
    f.takenBack = {};
    (void)f.takenBack.written.hasChanged(*f.session.gBaglanti);
    (void)journal::takenBackSince(*f.session.gBaglanti, f.takenBack.seen);
}

void showTakenBack(FrmMainVeldona& f) {
    TakenBackWatch& watch = f.takenBack;
    if (watch.written.hasChanged(*f.session.gBaglanti)) look(f);
    if (!watch.isPending || isPanelOpen(f) || f.loadsWaiting > 0) return;
    watch.isPending = false;
    loadAnew(f);
}

void guardPanels(FrmMainVeldona& f) {
    for (CommandButton* save : {&f.cmdKaydet, &f.cmdTamam, &f.cmdTaksitKaydet, &f.cmdUrunKaydet})
        save->onClick = [&f, act = std::move(save->onClick)] {
            if (!isOvertaken(f)) act();
        };
}

void openRecentActs(FrmMainVeldona& f) {
    const std::string account = trim(f.Text1.text());
    FormKayitTemizle(f.session);
    f.session.gFormKayit.HSTNO = account;
    openPicked(f, "frmSonIslemler");
    if (f.isUnloaded()) return;
    look(f);
    showTakenBack(f);
}

} // namespace veldona
