#include "sales/validation.h"

#include "core/session.h"
#include "platform/desktop/desktop.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/text.h"

namespace veldona {

namespace {

std::vector<std::string> missingFields(const FrmSatis& f) {
    std::vector<std::string> captions;
    if (trim(f.txtIslemNo.text()).empty()) captions.push_back(f.lblInfo0.caption());
    if (trim(f.txtKod.text()).empty()) captions.push_back(f.lblInfo2.caption());
    if (!f.chkOtomatikTaksitHesapla.checked()) return captions;
    const std::string& adet = f.MskTaksitAdedi.text();
    if ((f.chkTaksitAdetGir.checked() && val(adet) < 1) || adet.empty()) captions.push_back("Taksit Adeti");
    if (f.dtTaksitBaslangicTarihi.value().isNull()) captions.push_back("Taksit Başlangıç Tarihi ");
    return captions;
}

} // namespace

bool MinimumInputKontrolu(FrmSatis& f) {
    const auto captions = missingFields(f);
    if (captions.empty()) return true;
    f.session.desktop.dialogs.show(
        {emptyFieldWords(captions, ", ", " ve "), f.caption(), Icon::Exclamation, Buttons::Ok});
    return false;
}

bool MantikliInputKontrolu(FrmSatis&) {
    return true;
}

} // namespace veldona
