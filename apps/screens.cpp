#include "apps/screens.h"

#include "customers/customercard.h"
#include "customers/customerfinder.h"
#include "daybook/bugun.h"
#include "daybook/charts.h"
#include "daybook/recentacts.h"
#include "daybook/search.h"
#include "ledger/mainscreen.h"
#include "maintenance/backupscreen.h"
#include "maintenance/journalscreen.h"
#include "maintenance/letterhead.h"
#include "maintenance/passwordscreen.h"
#include "maintenance/paymentcorrection.h"
#include "maintenance/schedulecorrection.h"
#include "reports/income.h"
#include "reports/receivablesscreen.h"
#include "reports/viewer.h"
#include "sales/salescreen.h"

namespace veldona {

std::shared_ptr<ShopReckoning> registerScreens(Forms& forms, Session& session) {
    auto shop = std::make_shared<ShopReckoning>();
    forms.add("frmMainVeldona", [&session](Forms& f) { return makeFrmMainVeldona(f, session); });
    forms.add("frmCariEkle", [&session](Forms& f) { return makeFrmCariEkle(f, session); });
    forms.add("frmCarihesapSec", [&session](Forms& f) { return makeFrmCarihesapSec(f, session); });
    forms.add("frmAntetBilgisi", [&session](Forms& f) { return makeFrmAntetBilgisi(f, session); });
    forms.add("frmArama", [&session, memory = std::make_shared<SearchMemory>()](Forms& f) {
        return makeFrmArama(f, session, memory);
    });
    forms.add("frmSatis", [&session](Forms& f) { return makeFrmSatis(f, session); });
    forms.add("frmYedek", [&session](Forms& f) { return makeFrmYedek(f, session); });
    forms.add("frmGunluk", [&session](Forms& f) { return makeFrmGunluk(f, session); });
    forms.add("frmParola", [&session](Forms& f) { return makeFrmParola(f, session); });
    forms.add("frmCrNesne", [&session](Forms& f) { return makeFrmCrNesne(f, session); });
    forms.add("rprodemesigecen", [&session](Forms& f) { return makeRprOdemesiGecen(f, session); });
    forms.add("rprbeklenentahsilat", [&session](Forms& f) { return makeRprBeklenenTahsilat(f, session); });
    forms.add("rptGelirGider", [&session](Forms& f) { return makeRptGelirGider(f, session); });
    const auto calls = std::make_shared<CallListMemory>();
    calls->shop = shop;
    forms.add("frmBugun", [&session, calls](Forms& f) { return makeFrmBugun(f, session, calls); });
    forms.add("frmGrafik", [&session, shop](Forms& f) { return makeFrmGrafik(f, session, shop); });
    forms.add("frmSonIslemler", [&session](Forms& f) { return makeFrmSonIslemler(f, session); });
    forms.add("taksitodduzelt", [&session](Forms& f) { return makeTaksitOdDuzelt(f, session); });
    forms.add("taksitmustduzelt", [&session](Forms& f) { return makeTaksitMustDuzelt(f, session); });
    return shop;
}

} // namespace veldona
