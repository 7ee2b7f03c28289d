#include "reports/startexport.h"

#include "core/exportfolders.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/error.h"
#include "platform/runtime/text.h"

namespace veldona {

namespace {

constexpr int kHayir = 1; // the second entry of the yes and no lists

// The second argument of a box is the number of its style. Given a title there, no box appears.
void kutu(Session& session, const std::string& metin, const char* bicimYerine) {
    const auto bicim = static_cast<Icon>(toLong(Value(bicimYerine)));
    session.desktop.dialogs.show({metin, kProgramTitle, bicim, Buttons::Ok});
}

// A step that runs on where its folder stands already.
template <class Step> void adim(const Step& step) {
    try {
        step();
    } catch (const RuntimeError& error) {
        if (error.number() != static_cast<std::int32_t>(ErrorNumber::PathFileAccess)) throw;
    }
}

bool surucuAdiVar(const std::string& dosya) {
    return mid(dosya, 2, 1) == ":";
}

void dosyaHedefi(AktarPaneli& p) {
    const std::string uyari =
        "Aktarılacak dosyanın dizini otomatik olarak belirtilecektir.\nDosyanın sadece adını giriniz";
    for (const TextBox* alan : {&p.txtDiskFile, &p.txtHTMLFileName})
        if (surucuAdiVar(alan->text())) kutu(p.session, uyari, "Hata Oluştu");
    const std::string klasor = aktarKlasoru(p.session, GetExportDir(p.cmbFormat.text()));
    adim([&] { klasorAc(p.session, aktarKlasoru(p.session)); });
    adim([&] { klasorAc(p.session, klasor); });
    p.options.DiskFileName = klasor + "\\" + p.txtDiskFile.text();
}

void digerHedefler(AktarPaneli& p) {
    ExportOptions& o = p.options;
    o.MailToList = p.txtToList.text();
    o.MailCcList = p.txtCCList.text();
    o.MailBccList = p.txtBCCList.text();
    o.MailSubject = p.txtSubject.text();
    o.MailMessage = p.txtMessage.text();
    o.Profile = p.txtProfile.text();
    o.FolderPath = p.txtFolderPath.text();
    o.Password = p.txtPassword.text();
    o.DatabaseName = p.txtDatabaseName.text();
    o.FormName = p.txtFormName.text();
    o.Comments = p.txtComments.text();
}

void excelSecenekleri(AktarPaneli& p) {
    ExportOptions& o = p.options;
    o.areaGroup = toLong(val(p.txtAreaGroup.text()));
    o.areaType = p.cmbAreaType.listIndex();
    o.columnHeadings = p.cmbColHeading.listIndex() != kHayir;
    o.tabular = p.cmbUseTabFormat.listIndex() != kHayir;
    o.worksheetFunctions = p.cmbUseWorkFunc.listIndex() == 0;
    o.constantColumnWidth = p.cmbUseConWidth.listIndex() == 0 ? val(p.txtColWidth.text()) : 0;
}

void bicimSecenekleri(AktarPaneli& p) {
    ExportOptions& o = p.options;
    const std::string klasor = aktarKlasoru(p.session, GetExportDir(p.cmbFormat.text())) + "\\";
    switch (o.format) {
    case FormatType::Delimited:
        o.fieldDelimiter = p.txtFieldDel.text();
        o.stringDelimiter = p.txtStringDel.text();
        break;
    case FormatType::Html32:
    case FormatType::Html4:
        o.DiskFileName = klasor + p.txtHTMLFileName.text();
        o.pageNavigator = p.cmbPageNav.listIndex() == 0;
        break;
    case FormatType::Excel:
    case FormatType::ExcelPlain:
        excelSecenekleri(p);
        break;
    case FormatType::Pdf:
        o.firstPage = toLong(val(p.txtFirstPage.text()));
        o.lastPage = toLong(val(p.txtLastPage.text()));
        o.allPages = p.cmbAllPages.listIndex() != kHayir;
        break;
    case FormatType::Xml:
        o.DiskFileName = klasor + p.txtXMLFileName.text();
        o.multipleFiles = p.cmbMultFiles.listIndex() == 0;
        break;
    default:
        break;
    }
}

void sonucuAc(AktarPaneli& p) {
    const FormatType tip = p.options.format;
    const bool klasor = tip == FormatType::Html32 || tip == FormatType::Html4 || tip == FormatType::Xml;
    const std::string& dosya = p.options.DiskFileName;
    p.session.desktop.opener.open(
        p.session.desktop.paths.toNative(klasor ? getExportDirectory(dosya) : dosya));
}

void aktar(AktarPaneli& p) {
    if (p.cmbDestination.text() == kHedefSeciniz) kutu(p.session, "Hedefi seçmelisiniz", "Hata Oluştu");
    const bool dosya = p.options.destination == DestinationType::DiskFile;
    dosya ? dosyaHedefi(p) : digerHedefler(p);
    bicimSecenekleri(p);
    if (!p.session.rapor) raise(ErrorNumber::ObjectNotSet);
    adim([&] { raporuAktar(p.session, *p.session.rapor, p.options); });
    if (!dosya) return;
    kutu(p.session, "Rapor Dosya Adı : " + p.options.DiskFileName + "\n", "Rapor Başarı ile aktarıldı");
    if (p.chkOpenFile.checked()) sonucuAc(p);
}

} // namespace

void StartExport(AktarPaneli& p) {
    try {
        aktar(p);
    } catch (const RuntimeError& error) {
        p.session.desktop.dialogs.tell("Hata Oluştu\nHata No : " + std::to_string(error.number()) +
                                       "Hata Tanımı :" + error.description());
    }
}

std::string getExportDirectory(const std::string& yol) {
    const std::size_t at = yol.rfind('\\');
    return at == std::string::npos ? "" : yol.substr(0, at);
}

} // namespace veldona
