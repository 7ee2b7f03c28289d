#include "ui/screens.h"

#include "ui/host.h"
#include "ui/reportpreview.h"
#include "ui_frmAntetBilgisi.h"
#include "ui_frmArama.h"
#include "ui_frmBugun.h"
#include "ui_frmCariEkle.h"
#include "ui_frmCarihesapSec.h"
#include "ui_frmCrNesne.h"
#include "ui_frmGrafik.h"
#include "ui_frmGunluk.h"
#include "ui_frmMainVeldona.h"
#include "ui_frmParola.h"
#include "ui_frmSatis.h"
#include "ui_frmSonIslemler.h"
#include "ui_frmYedek.h"
#include "ui_rprbeklenentahsilat.h"
#include "ui_rprodemesigecen.h"
#include "ui_rptGelirGider.h"
#include "ui_taksitmustduzelt.h"
#include "ui_taksitodduzelt.h"

namespace veldona {

namespace {

template <class Drawn> void drawAs(QWidget& window) {
    Drawn().setupUi(&window);
}

} // namespace

void drawScreens(WindowHost& host) {
    host.draw("frmAntetBilgisi", drawAs<Ui::frmAntetBilgisi>);
    host.draw("frmArama", drawAs<Ui::frmArama>);
    host.draw("frmBugun", drawAs<Ui::frmBugun>);
    host.draw("frmCariEkle", drawAs<Ui::frmCariEkle>);
    host.draw("frmCarihesapSec", drawAs<Ui::frmCarihesapSec>);
    host.draw("frmCrNesne", [&host](QWidget& window) {
        drawAs<Ui::frmCrNesne>(window);
        offerPdf(host, window);
    });
    host.draw("frmGrafik", drawAs<Ui::frmGrafik>);
    host.draw("frmGunluk", drawAs<Ui::frmGunluk>);
    host.draw("frmMainVeldona", drawAs<Ui::frmMainVeldona>);
    host.draw("frmSatis", drawAs<Ui::frmSatis>);
    host.draw("frmParola", drawAs<Ui::frmParola>);
    host.draw("frmSonIslemler", drawAs<Ui::frmSonIslemler>);
    host.draw("frmYedek", drawAs<Ui::frmYedek>);
    host.draw("rprbeklenentahsilat", drawAs<Ui::rprbeklenentahsilat>);
    host.draw("rprodemesigecen", drawAs<Ui::rprodemesigecen>);
    host.draw("rptGelirGider", drawAs<Ui::rptGelirGider>);
    host.draw("taksitmustduzelt", drawAs<Ui::taksitmustduzelt>);
    host.draw("taksitodduzelt", drawAs<Ui::taksitodduzelt>);
}

} // namespace veldona
