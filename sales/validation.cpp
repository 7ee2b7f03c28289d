#include "sales/validation.h"

#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"

namespace veldona {

namespace {

std::vector<std::string> missingFields(const FrmSatis& f) {
    std::vector<std::string> etiketler;
    if (trim(f.txtIslemNo.text()).empty()) etiketler.push_back(f.lblInfo0.caption());
    if (trim(f.txtKod.text()).empty()) etiketler.push_back(f.lblInfo2.caption());
    if (!f.chkOtomatikTaksitHesapla.checked()) return etiketler;
    const std::string& adet = f.MskTaksitAdedi.text();
    if ((f.chkTaksitAdetGir.checked() && val(adet) < 1) || adet.empty()) etiketler.push_back("Taksit Adeti");
    if (f.dtTaksitBaslangicTarihi.value().isNull()) etiketler.push_back("Taksit Başlangıç Tarihi ");
    return etiketler;
}

} // namespace

bool MinimumInputKontrolu(FrmSatis& f) {
    const auto etiketler = missingFields(f);
    if (etiketler.empty()) return true;
    f.session.desktop.dialogs.show(
        {BosAlanSozu(etiketler, ", ", " ve "), f.caption(), Icon::Exclamation, Buttons::Ok});
    return false;
}

bool MantikliInputKontrolu(FrmSatis&) {
    return true;
}

} // namespace veldona
