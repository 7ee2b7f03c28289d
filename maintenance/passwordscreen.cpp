#include "maintenance/passwordscreen.h"

#include <optional>
#include <utility>

#include "backup/refusal.h"
#include "backup/rekey.h"
#include "core/bookpasswords.h"
#include "core/delivered.h"
#include "core/formframe.h"
#include "core/reporting.h"
#include "platform/desktop/desktop.h"
#include "platform/report/rows.h"
#include "platform/runtime/password.h"
#include "platform/store/dialect/storeerror.h"

namespace veldona {

namespace {

constexpr const char* kTitle = "Defterin Parolası";
constexpr const char* kLostWithIt =
    "Bu parolayı yitiren defteri de yitirir: parolayı kimse, programı yazan da, geri getiremez.";

std::string booksOf(const Session& session) {
    return session.desktop.paths.toNative(kDatabasePath);
}

bool hasOwn(const FrmParola& f) {
    return f.session.gSifre != kDeliveredPassword;
}

// What was chosen, for behind the end of this run.
struct Change {
    std::string books;
    Secret to;
    bool keep = false;
};

std::string failureOf(Desktop& desktop, const Change& change) {
    const DateTime now = desktop.clock.now();
    const auto work = [&](const Progress& progress) {
        backup::rekey(change.books, change.to, now,
                      [&](backup::Step step, std::int64_t done, std::int64_t all) {
                          if (step == backup::Step::Proving) return progress("Kopya denetleniyor…", -1);
                          return progress("Defter yeni parolayla yazılıyor…",
                                          all == 0 ? -1 : static_cast<int>(100 * done / all));
                      });
    };
    try {
        runBeside(desktop.sideWork, "Parola değişiyor", work);
        return {};
    } catch (const backup::Refusal& refusal) {
        return refusal.what();
    } catch (const store::StoreError& error) {
        return error.description();
    }
}

void carryOut(Desktop& desktop, const Change& change) {
    const std::string failure = failureOf(desktop, change);
    if (!failure.empty())
        return desktop.dialogs.tell(failure +
                                        "\n\nParola değişmedi; defter eski parolasıyla olduğu gibi duruyor. "
                                        "Yeni parolayı yazdırdıysanız kâğıdı yırtın.",
                                    Icon::Exclamation);
    std::string untold;
    if (desktop.keys != nullptr) {
        desktop.keys->forget(change.books);
        if (change.keep) untold = desktop.keys->keep(change.books, change.to);
    }
    const bool isOwn = change.to != deliveredPassword();
    desktop.dialogs.tell(std::string(isOwn ? "Defter artık yalnız yeni parolayla açılır."
                                           : "Defter programla gelen parolaya döndü.") +
                             "\n\nDaha önce alınmış yedekler eski parolalarıyla açılır. Yeni bir yedek alın, "
                             "eskileri ona göre "
                             "saklayın." +
                             (untold.empty() ? "" : "\n\n" + untold),
                         untold.empty() ? Icon::Information : Icon::Exclamation);
}

void endRunFor(FrmParola& f, Change change) {
    f.session.behindTheEnd = [change = std::move(change)](Desktop& desktop) { carryOut(desktop, change); };
    f.forms().unload(f);
}

void tell(FrmParola& f, const std::string& text, TextBox& at) {
    f.session.desktop.dialogs.tell(text, Icon::Exclamation);
    at.setFocus();
}

bool isPresentTyped(FrmParola& f) {
    if (!hasOwn(f) || passwordOf(f.txtSimdiki.text()).text() == f.session.gSifre) return true;
    tell(f, "Şimdiki parola bu değil.", f.txtSimdiki);
    return false;
}

bool isAgreed(FrmParola& f, const std::string& what, const std::string& question) {
    const Message message{
        what + "\n\nProgram kapanıp yeniden açılır; öteki bilgisayarlarda kapalı olmalıdır.\n\n" + question,
        kTitle, Icon::Question, Buttons::YesNo, Answer::No};
    return f.session.desktop.dialogs.show(message) == Answer::Yes;
}

// It goes to the printer as every paper does; no file of the program's keeps it.
void offerPaper(FrmParola& f, const Secret& password) {
    if (!f.session.desktop.dialogs.confirm(
            "Parola, kasaya konacak bir kâğıda yazdırılsın mı?\n\nKâğıdı önizlemede "
            "yazdırın; dosya olarak kaydetmeyin.",
            kTitle))
        return;
    report::DataSet paper{"parola", {{"PAROLA"}, {"DEFTER"}, {"UYARI"}}};
    paper.addRow({Value(std::string(password.text())), Value(booksOf(f.session)), Value(kLostWithIt)});
    showReportWithData(f.session, "Parola", {std::move(paper)});
}

void cmdKoy_Click(FrmParola& f) {
    if (!isPresentTyped(f)) return;
    const Secret wanted = passwordOf(f.txtYeni.text());
    const std::string weakness = weaknessOf(wanted);
    if (!weakness.empty()) return tell(f, weakness, f.txtYeni);
    if (passwordOf(f.txtTekrar.text()) != wanted)
        return tell(f, "Yeni parola iki kez aynı yazılmadı.", f.txtTekrar);
    if (wanted.text() == f.session.gSifre || wanted == deliveredPassword())
        return tell(f, "Bu, defterin şimdiki parolası ya da programla gelen parola; başka bir parola seçin.",
                    f.txtYeni);
    if (!isAgreed(f, std::string("Defter bundan sonra yalnız bu parolayla açılacak. ") + kLostWithIt,
                  "Parola konsun mu?"))
        return;
    offerPaper(f, wanted);
    endRunFor(f, {booksOf(f.session), wanted, f.chkSorma.checked()});
}

void cmdKaldir_Click(FrmParola& f) {
    if (!isPresentTyped(f)) return;
    if (isAgreed(f, "Defter programla gelen parolaya dönecek: programı olan herkes açabilir.",
                 "Parola kaldırılsın mı?"))
        endRunFor(f, {booksOf(f.session), deliveredPassword()});
}

void load(FrmParola& f) {
    const bool own = hasOwn(f);
    f.lblDurum.setCaption(own ? "Defterin kendi parolası var."
                              : "Defterin kendi parolası yok: programı olan herkes açabilir.");
    f.lblKural.setCaption(kPasswordRule);
    f.lblUyari.setCaption(kLostWithIt);
    f.txtSimdiki.setEnabled(own);
    f.cmdKaldir.setEnabled(own);
    f.chkSorma.setEnabled(f.session.desktop.keys != nullptr);
}

} // namespace

FrmParola::FrmParola(Forms& itsForms, Session& itsSession)
    : Form(itsForms, "frmParola", kTitle), session(itsSession) {
    onLoad = [this] { load(*this); };
    onActivate = [this] { (hasOwn(*this) ? txtSimdiki : txtYeni).setFocus(); };
    closeOnEscape(*this);
    cmdKoy.onClick = [this] { cmdKoy_Click(*this); };
    cmdKaldir.onClick = [this] { cmdKaldir_Click(*this); };
    cmdCikis.onClick = [this] { forms().unload(*this); };
}

std::unique_ptr<Form> makeFrmParola(Forms& forms, Session& session) {
    return std::make_unique<FrmParola>(forms, session);
}

} // namespace veldona
