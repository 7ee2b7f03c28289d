#include "reports/exportpanel.h"

#include "reports/startexport.h"

namespace veldona {

namespace {

enum class Ad { Kalir, Gorunur, Gizli }; // what a format does to the field of the file's name

struct Bicim {
    const char* metin;
    FormatType tip;
    const char* dosya;
    const char* klasor;
    int panel = -1;
    Ad ad = Ad::Kalir;
    bool tarihSayi = false; // it decides whether the formats of dates and numbers are seen
};

constexpr int panelNo(SecenekPaneli panel) {
    return static_cast<int>(panel);
}

constexpr int kAyirac = panelNo(SecenekPaneli::Delimiters);
constexpr int kExcel = panelNo(SecenekPaneli::Excel);
constexpr int kHtml = panelNo(SecenekPaneli::Html);
constexpr int kSayfalar = panelNo(SecenekPaneli::Pages);
constexpr int kXml = panelNo(SecenekPaneli::Xml);

constexpr std::array<Bicim, 17> kBicimler = {{
    {"Karakter ile Ayrılmış", FormatType::Delimited, "aktar.txt", "Karakter Ayrılmış", kAyirac, Ad::Gorunur,
     true},
    {"Virgül ile Ayrılmış (CSV)", FormatType::Csv, "aktar.csv", "Virgül Ayrılmış"},
    {"Crystal Reports (RPT)", FormatType::OwnForm, "aktar.rpt", "Crystal Report", -1, Ad::Gorunur},
    {"Data Interchange (DIF)", FormatType::Dif, "aktar.dif", "Data Interchange"},
    {"Zengin Metinli Biçim (RTF)", FormatType::RichText, "aktar.rtf", "Zengin Metin"},
    {"MS Excel 97-2000 (XLS)", FormatType::Excel, "aktar.xls", "MSExcel", kExcel, Ad::Gorunur, true},
    {"MS Excel 97-2000,(Formatsız) (XLS)", FormatType::ExcelPlain, "aktar.xls", "MSExcel", kExcel,
     Ad::Gorunur, true},
    {"HTML 32, Standard (HTM)", FormatType::Html32, "aktar.htm", "HTML", kHtml, Ad::Gizli, true},
    {"HTML 4 (HTM)", FormatType::Html4, "aktar.htm", "HTML", kHtml, Ad::Gizli, true},
    {"Acrobat Format (PDF)", FormatType::Pdf, "aktar.pdf", "PDF", kSayfalar, Ad::Gorunur, true},
    {"Kayıt Deseni (REC)", FormatType::Record, "aktar.rec", "Kayıt Deseni"},
    {"Rapor Tanımı (DEF)", FormatType::Definition, "aktar.def", "Rapor Tanımı"},
    {"Tab ile Ayrılmış Metin", FormatType::TabbedText, "aktar.txt", "Tab Ayrılmış Metin"},
    {"Tab ile Ayrılmış Değerler", FormatType::TabbedValues, "aktar.txt", "Tab Ayrılmış Değerler"},
    {"Metin (TXT)", FormatType::Text, "aktar.txt", "Metin"},
    {"MS Word (DOC)", FormatType::Word, "aktar.doc", "MSWord", -1, Ad::Gorunur},
    {"XML", FormatType::Xml, "aktar.xml", "XML", kXml, Ad::Gizli, true},
}};

constexpr std::array<const char*, 6> kHedefler = {"Dosya",       "e-Mail (MAPI)", "e-Mail (VIM)",
                                                  "MS Exchange", "Lotus Domino",  "Belge"};
constexpr std::array<const char*, 7> kAlanlar = {"Detay",         "Grup Dipnotu",  "Grup Başlığı",
                                                 "Sayfa Dipnotu", "Sayfa Başlığı", "Rapor Dipnotu",
                                                 "Rapor Başlığı"};

Frame& panelOf(AktarPaneli& p, SecenekPaneli panel) {
    return p.fraOptions[static_cast<std::size_t>(panel)];
}

void place(Frame& holder, std::initializer_list<Control*> controls) {
    for (Control* control : controls)
        control->placeIn(holder);
}

void yerlestir(AktarPaneli& p) {
    place(p.picExport,
          {&p.cmbFormat, &p.cmbDestination, &p.frmDiskFile, &p.lblDateFormat, &p.cmbDateFormat,
           &p.lblNumFormat, &p.cmbNumFormat, &p.chkOpenFile, &p.cmdExport, &p.cmdClose, &p.cmdSifirla});
    for (Frame& panel : p.fraOptions)
        panel.placeIn(p.picExport);
    place(p.frmDiskFile, {&p.lblInfo, &p.txtDiskFile});
    place(panelOf(p, SecenekPaneli::Exchange),
          {&p.cmbDestinationType, &p.txtProfile, &p.txtFolderPath, &p.txtPassword});
    place(panelOf(p, SecenekPaneli::Domino), {&p.txtDatabaseName, &p.txtFormName, &p.txtComments});
    place(panelOf(p, SecenekPaneli::Delimiters), {&p.txtFieldDel, &p.txtStringDel});
    place(panelOf(p, SecenekPaneli::Html), {&p.txtHTMLFileName, &p.cmbSepPages, &p.cmbPageNav});
    place(panelOf(p, SecenekPaneli::Pages), {&p.cmbAllPages, &p.txtFirstPage, &p.txtLastPage});
    place(panelOf(p, SecenekPaneli::Excel),
          {&p.cmbAreaType, &p.txtAreaGroup, &p.txtColWidth, &p.cmbColHeading, &p.cmbUseConWidth,
           &p.cmbUseTabFormat, &p.cmbUseWorkFunc});
    place(panelOf(p, SecenekPaneli::Xml), {&p.txtXMLFileName, &p.cmbMultFiles});
    place(panelOf(p, SecenekPaneli::Mail),
          {&p.txtToList, &p.txtCCList, &p.txtBCCList, &p.txtSubject, &p.txtMessage, &p.cmdAdresBook});
}

void dosyaAdiYaz(AktarPaneli& p, const Bicim& bicim) {
    TextBox& alan = bicim.panel == kHtml  ? p.txtHTMLFileName
                    : bicim.panel == kXml ? p.txtXMLFileName
                                          : p.txtDiskFile;
    alan.setText(bicim.dosya);
}

} // namespace

AktarPaneli::AktarPaneli(Form& itsForm, Session& itsSession)
    : form(itsForm), session(itsSession), fraOptions{Frame{form, "fraOptions0", "Ms Exchange Seçenekleri "},
                                                     Frame{form, "fraOptions1", "Lotus Domino Seçenekleri"},
                                                     Frame{form, "fraOptions2", "Character Seperated"},
                                                     Frame{form, "fraOptions3", "HTML"},
                                                     Frame{form, "fraOptions4", "PDF"},
                                                     Frame{form, "fraOptions5", "Excel"},
                                                     Frame{form, "fraOptions6", "XML"},
                                                     Frame{form, "fraOptions7", "e-Mail Seçenekleri"}} {
    yerlestir(*this);
    picExport.setVisible(false);
    cmbFormat.onClick = [this] { SetFormatView(*this); };
    cmbDestination.onClick = [this] { cmbDestination_Click(*this); };
    cmdSifirla.onClick = [this] { FormuSifirla(*this); };
    cmdClose.onClick = [this] { picExport.setVisible(false); };
    cmdExport.onClick = [this] { StartExport(*this); };
}

void GorunumAyarla(AktarPaneli& p) {
    for (const Bicim& bicim : kBicimler)
        p.cmbFormat.add(bicim.metin);
    for (const char* hedef : kHedefler)
        p.cmbDestination.add(hedef);
    for (ComboBox* combo :
         {&p.cmbDateFormat, &p.cmbNumFormat, &p.cmbColHeading, &p.cmbUseConWidth, &p.cmbUseTabFormat,
          &p.cmbUseWorkFunc, &p.cmbSepPages, &p.cmbPageNav, &p.cmbAllPages, &p.cmbMultFiles}) {
        combo->add("Evet");
        combo->add("Hayır");
    }
    for (const char* alan : kAlanlar)
        p.cmbAreaType.add(alan);
    p.cmbAreaType.setText("Tümü");
    p.cmbDestinationType.add("Klasör");
}

void FormuSifirla(AktarPaneli& p) {
    p.cmbFormat.setText(kFormatSeciniz);
    p.cmbFormat.setEnabled(true);
    p.cmbDestination.setText(kHedefSeciniz);
    p.cmbDestination.setEnabled(false);
    p.options = {};
    p.chkOpenFile.setChecked(false);
    p.chkOpenFile.setVisible(false);
    SetDateNumVisible(p, false);
    MakePicsInvisible(p);
    MakeFilenameVisible(p, false);
}

void SetFormatView(AktarPaneli& p) {
    const int index = p.cmbFormat.listIndex();
    if (index < 0) return;
    const Bicim& bicim = kBicimler[static_cast<std::size_t>(index)];
    p.options.format = bicim.tip;
    MakePicsInvisible(p);
    dosyaAdiYaz(p, bicim);
    if (bicim.panel >= 0) p.fraOptions[static_cast<std::size_t>(bicim.panel)].setVisible(true);
    // Formats of dates and numbers concern separated characters alone.
    if (bicim.tarihSayi) SetDateNumVisible(p, bicim.tip == FormatType::Delimited);
    if (bicim.ad != Ad::Kalir) MakeFilenameVisible(p, bicim.ad == Ad::Gorunur);
    p.cmbDestination.setEnabled(true);
}

void cmbDestination_Click(AktarPaneli& p) {
    const int index = p.cmbDestination.listIndex();
    if (index < 0) return;
    p.options.destination = static_cast<DestinationType>(index);
    const bool dosya = p.options.destination == DestinationType::DiskFile;
    p.chkOpenFile.setVisible(dosya);
    if (dosya) return;
    p.chkOpenFile.setChecked(false);
    SetDateNumVisible(p, false);
    MakePicsInvisible(p);
    MakeFilenameVisible(p, false);
    switch (p.options.destination) {
    case DestinationType::Mapi:
    case DestinationType::Vim:
        return panelOf(p, SecenekPaneli::Mail).setVisible(true);
    case DestinationType::Exchange:
        return panelOf(p, SecenekPaneli::Exchange).setVisible(true);
    case DestinationType::Domino:
        return panelOf(p, SecenekPaneli::Domino).setVisible(true);
    default:
        return;
    }
}

void MakePicsInvisible(AktarPaneli& p) {
    for (Frame& panel : p.fraOptions) {
        panel.setVisible(false);
        panel.setBackColor(Colour::WindowBackground);
    }
}

void MakeFilenameVisible(AktarPaneli& p, bool gorunur) {
    p.txtDiskFile.setVisible(gorunur);
    p.lblInfo.setVisible(gorunur);
}

void SetDateNumVisible(AktarPaneli& p, bool gorunur) {
    for (Control* control : {static_cast<Control*>(&p.lblDateFormat), static_cast<Control*>(&p.lblNumFormat),
                             static_cast<Control*>(&p.cmbDateFormat), static_cast<Control*>(&p.cmbNumFormat)})
        control->setVisible(gorunur);
}

std::string GetExportDir(std::string_view bicim) {
    for (const Bicim& each : kBicimler)
        if (bicim == each.metin) return each.klasor;
    return "Export";
}

} // namespace veldona
