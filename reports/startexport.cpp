#include "reports/startexport.h"

#include "core/exportfolders.h"
#include "core/session.h"
#include "platform/desktop/desktop.h"
#include "platform/report/page.h"
#include "platform/runtime/conversion.h"
#include "platform/runtime/error.h"
#include "platform/runtime/text.h"

namespace veldona {

namespace {

constexpr int kNo = 1; // the second entry of the yes and no lists

// The second argument of a box is the number of its style. Given a title there, no box appears.
void box(Session& session, const std::string& text, const char* insteadOfFormat) {
    const auto formatName = static_cast<Icon>(toLong(Value(insteadOfFormat)));
    session.desktop.dialogs.show({text, kProgramTitle, formatName, Buttons::Ok});
}

// A step that runs on where its folder stands already.
template <class Step> void runStep(const Step& step) {
    try {
        step();
    } catch (const RuntimeError& error) {
        if (error.number() != static_cast<std::int32_t>(ErrorNumber::PathFileAccess)) throw;
    }
}

bool hasDriveName(const std::string& file) {
    return mid(file, 2, 1) == ":";
}

void fileTarget(ExportPanel& p) {
    const std::string uyari =
        "Aktarılacak dosyanın dizini otomatik olarak belirtilecektir.\nDosyanın sadece adını giriniz";
    for (const TextBox* alan : {&p.txtDiskFile, &p.txtHTMLFileName})
        if (hasDriveName(alan->text())) box(p.session, uyari, "Hata Oluştu");
    const std::string folder = exportFolder(p.session, GetExportDir(p.cmbFormat.text()));
    runStep([&] { makeFolder(p.session, exportFolder(p.session)); });
    runStep([&] { makeFolder(p.session, folder); });
    p.options.DiskFileName = folder + "\\" + p.txtDiskFile.text();
}

void otherTargets(ExportPanel& p) {
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

void spreadsheetOptions(ExportPanel& p) {
    ExportOptions& o = p.options;
    o.areaGroup = toLong(val(p.txtAreaGroup.text()));
    o.areaType = p.cmbAreaType.listIndex();
    o.columnHeadings = p.cmbColHeading.listIndex() != kNo;
    o.tabular = p.cmbUseTabFormat.listIndex() != kNo;
    o.worksheetFunctions = p.cmbUseWorkFunc.listIndex() == 0;
    o.constantColumnWidth = p.cmbUseConWidth.listIndex() == 0 ? val(p.txtColWidth.text()) : 0;
}

void formatOptions(ExportPanel& p) {
    ExportOptions& o = p.options;
    const std::string folder = exportFolder(p.session, GetExportDir(p.cmbFormat.text())) + "\\";
    switch (o.format) {
    case FormatType::Delimited:
        o.fieldDelimiter = p.txtFieldDel.text();
        o.stringDelimiter = p.txtStringDel.text();
        break;
    case FormatType::Html32:
    case FormatType::Html4:
        o.DiskFileName = folder + p.txtHTMLFileName.text();
        o.pageNavigator = p.cmbPageNav.listIndex() == 0;
        break;
    case FormatType::Excel:
    case FormatType::ExcelPlain:
        spreadsheetOptions(p);
        break;
    case FormatType::Pdf:
        o.firstPage = toLong(val(p.txtFirstPage.text()));
        o.lastPage = toLong(val(p.txtLastPage.text()));
        o.allPages = p.cmbAllPages.listIndex() != kNo;
        break;
    case FormatType::Xml:
        o.DiskFileName = folder + p.txtXMLFileName.text();
        o.multipleFiles = p.cmbMultFiles.listIndex() == 0;
        break;
    default:
        break;
    }
}

void openResult(ExportPanel& p) {
    const FormatType tip = p.options.format;
    const bool folder = tip == FormatType::Html32 || tip == FormatType::Html4 || tip == FormatType::Xml;
    const std::string& file = p.options.DiskFileName;
    p.session.desktop.opener.open(p.session.desktop.paths.toNative(folder ? getExportDirectory(file) : file));
}

void aktar(ExportPanel& p) {
    if (p.cmbDestination.text() == kChooseTarget) box(p.session, "Hedefi seçmelisiniz", "Hata Oluştu");
    const bool file = p.options.destination == DestinationType::DiskFile;
    file ? fileTarget(p) : otherTargets(p);
    formatOptions(p);
    if (!p.session.rapor) raise(ErrorNumber::ObjectNotSet);
    runStep([&] { exportReport(p.session, *p.session.rapor, p.options); });
    if (!file) return;
    box(p.session, "Rapor Dosya Adı : " + p.options.DiskFileName + "\n", "Rapor Başarı ile aktarıldı");
    if (p.chkOpenFile.checked()) openResult(p);
}

} // namespace

void StartExport(ExportPanel& p) {
    try {
        aktar(p);
    } catch (const RuntimeError& error) {
        p.session.desktop.dialogs.tell("Hata Oluştu\nHata No : " + std::to_string(error.number()) +
                                       "Hata Tanımı :" + error.description());
    }
}

std::string getExportDirectory(const std::string& route) {
    const std::size_t at = route.rfind('\\');
    return at == std::string::npos ? "" : route.substr(0, at);
}

} // namespace veldona
