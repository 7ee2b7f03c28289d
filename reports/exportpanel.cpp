#include "reports/exportpanel.h"

#include "reports/startexport.h"

namespace veldona {

namespace {

enum class Ad { Stays, Visible, Hidden }; // what a format does to the field of the file's name

struct Format {
    const char* text;
    FormatType tip;
    const char* file;
    const char* folder;
    int panel = -1;
    Ad ad = Ad::Stays;
    bool datesAndNumbers = false; // it decides whether the formats of dates and numbers are seen
};

constexpr int panelNo(OptionPanel panel) {
    return static_cast<int>(panel);
}

constexpr int kDelimiters = panelNo(OptionPanel::Delimiters);
constexpr int kExcel = panelNo(OptionPanel::Excel);
constexpr int kHtml = panelNo(OptionPanel::Html);
constexpr int kPages = panelNo(OptionPanel::Pages);
constexpr int kXml = panelNo(OptionPanel::Xml);

constexpr std::array<Format, 17> kFormats = {{
    {"Karakter ile Ayrılmış", FormatType::Delimited, "aktar.txt", "Karakter Ayrılmış", kDelimiters,
     Ad::Visible, true},
    {"Virgül ile Ayrılmış (CSV)", FormatType::Csv, "aktar.csv", "Virgül Ayrılmış"},
    {"Crystal Reports (RPT)", FormatType::OwnForm, "aktar.rpt", "Crystal Report", -1, Ad::Visible},
    {"Data Interchange (DIF)", FormatType::Dif, "aktar.dif", "Data Interchange"},
    {"Zengin Metinli Biçim (RTF)", FormatType::RichText, "aktar.rtf", "Zengin Metin"},
    {"MS Excel 97-2000 (XLS)", FormatType::Excel, "aktar.xls", "MSExcel", kExcel, Ad::Visible, true},
    {"MS Excel 97-2000,(Formatsız) (XLS)", FormatType::ExcelPlain, "aktar.xls", "MSExcel", kExcel,
     Ad::Visible, true},
    {"HTML 32, Standard (HTM)", FormatType::Html32, "aktar.htm", "HTML", kHtml, Ad::Hidden, true},
    {"HTML 4 (HTM)", FormatType::Html4, "aktar.htm", "HTML", kHtml, Ad::Hidden, true},
    {"Acrobat Format (PDF)", FormatType::Pdf, "aktar.pdf", "PDF", kPages, Ad::Visible, true},
    {"Kayıt Deseni (REC)", FormatType::Record, "aktar.rec", "Kayıt Deseni"},
    {"Rapor Tanımı (DEF)", FormatType::Definition, "aktar.def", "Rapor Tanımı"},
    {"Tab ile Ayrılmış Metin", FormatType::TabbedText, "aktar.txt", "Tab Ayrılmış Metin"},
    {"Tab ile Ayrılmış Değerler", FormatType::TabbedValues, "aktar.txt", "Tab Ayrılmış Değerler"},
    {"Metin (TXT)", FormatType::Text, "aktar.txt", "Metin"},
    {"MS Word (DOC)", FormatType::Word, "aktar.doc", "MSWord", -1, Ad::Visible},
    {"XML", FormatType::Xml, "aktar.xml", "XML", kXml, Ad::Hidden, true},
}};

constexpr std::array<const char*, 6> kTargets = {"Dosya",       "e-Mail (MAPI)", "e-Mail (VIM)",
                                                 "MS Exchange", "Lotus Domino",  "Belge"};
constexpr std::array<const char*, 7> kAreas = {"Detay",         "Grup Dipnotu",  "Grup Başlığı",
                                               "Sayfa Dipnotu", "Sayfa Başlığı", "Rapor Dipnotu",
                                               "Rapor Başlığı"};

Frame& panelOf(ExportPanel& p, OptionPanel panel) {
    return p.fraOptions[static_cast<std::size_t>(panel)];
}

void place(Frame& holder, std::initializer_list<Control*> controls) {
    for (Control* control : controls)
        control->placeIn(holder);
}

void arrange(ExportPanel& p) {
    place(p.picExport,
          {&p.cmbFormat, &p.cmbDestination, &p.frmDiskFile, &p.lblDateFormat, &p.cmbDateFormat,
           &p.lblNumFormat, &p.cmbNumFormat, &p.chkOpenFile, &p.cmdExport, &p.cmdClose, &p.cmdSifirla});
    for (Frame& panel : p.fraOptions)
        panel.placeIn(p.picExport);
    place(p.frmDiskFile, {&p.lblInfo, &p.txtDiskFile});
    place(panelOf(p, OptionPanel::Exchange),
          {&p.cmbDestinationType, &p.txtProfile, &p.txtFolderPath, &p.txtPassword});
    place(panelOf(p, OptionPanel::Domino), {&p.txtDatabaseName, &p.txtFormName, &p.txtComments});
    place(panelOf(p, OptionPanel::Delimiters), {&p.txtFieldDel, &p.txtStringDel});
    place(panelOf(p, OptionPanel::Html), {&p.txtHTMLFileName, &p.cmbSepPages, &p.cmbPageNav});
    place(panelOf(p, OptionPanel::Pages), {&p.cmbAllPages, &p.txtFirstPage, &p.txtLastPage});
    place(panelOf(p, OptionPanel::Excel), {&p.cmbAreaType, &p.txtAreaGroup, &p.txtColWidth, &p.cmbColHeading,
                                           &p.cmbUseConWidth, &p.cmbUseTabFormat, &p.cmbUseWorkFunc});
    place(panelOf(p, OptionPanel::Xml), {&p.txtXMLFileName, &p.cmbMultFiles});
    place(panelOf(p, OptionPanel::Mail),
          {&p.txtToList, &p.txtCCList, &p.txtBCCList, &p.txtSubject, &p.txtMessage, &p.cmdAdresBook});
}

void writeFileName(ExportPanel& p, const Format& formatName) {
    TextBox& alan = formatName.panel == kHtml  ? p.txtHTMLFileName
                    : formatName.panel == kXml ? p.txtXMLFileName
                                               : p.txtDiskFile;
    alan.setText(formatName.file);
}

} // namespace

ExportPanel::ExportPanel(Form& itsForm, Session& itsSession)
    : form(itsForm), session(itsSession), fraOptions{Frame{form, "fraOptions0", "Ms Exchange Seçenekleri "},
                                                     Frame{form, "fraOptions1", "Lotus Domino Seçenekleri"},
                                                     Frame{form, "fraOptions2", "Character Seperated"},
                                                     Frame{form, "fraOptions3", "HTML"},
                                                     Frame{form, "fraOptions4", "PDF"},
                                                     Frame{form, "fraOptions5", "Excel"},
                                                     Frame{form, "fraOptions6", "XML"},
                                                     Frame{form, "fraOptions7", "e-Mail Seçenekleri"}} {
    arrange(*this);
    picExport.setVisible(false);
    cmbFormat.onClick = [this] { SetFormatView(*this); };
    cmbDestination.onClick = [this] { cmbDestination_Click(*this); };
    cmdSifirla.onClick = [this] { FormuSifirla(*this); };
    cmdClose.onClick = [this] { picExport.setVisible(false); };
    cmdExport.onClick = [this] { StartExport(*this); };
}

void GorunumAyarla(ExportPanel& p) {
    for (const Format& formatName : kFormats)
        p.cmbFormat.add(formatName.text);
    for (const char* target : kTargets)
        p.cmbDestination.add(target);
    for (ComboBox* combo :
         {&p.cmbDateFormat, &p.cmbNumFormat, &p.cmbColHeading, &p.cmbUseConWidth, &p.cmbUseTabFormat,
          &p.cmbUseWorkFunc, &p.cmbSepPages, &p.cmbPageNav, &p.cmbAllPages, &p.cmbMultFiles}) {
        combo->add("Evet");
        combo->add("Hayır");
    }
    for (const char* alan : kAreas)
        p.cmbAreaType.add(alan);
    p.cmbAreaType.setText("Tümü");
    p.cmbDestinationType.add("Klasör");
}

void FormuSifirla(ExportPanel& p) {
    p.cmbFormat.setText(kChooseFormat);
    p.cmbFormat.setEnabled(true);
    p.cmbDestination.setText(kChooseTarget);
    p.cmbDestination.setEnabled(false);
    p.options = {};
    p.chkOpenFile.setChecked(false);
    p.chkOpenFile.setVisible(false);
    SetDateNumVisible(p, false);
    MakePicsInvisible(p);
    MakeFilenameVisible(p, false);
}

void SetFormatView(ExportPanel& p) {
    const int index = p.cmbFormat.listIndex();
    if (index < 0) return;
    const Format& formatName = kFormats[static_cast<std::size_t>(index)];
    p.options.format = formatName.tip;
    MakePicsInvisible(p);
    writeFileName(p, formatName);
    if (formatName.panel >= 0) p.fraOptions[static_cast<std::size_t>(formatName.panel)].setVisible(true);
    // Formats of dates and numbers concern separated characters alone.
    if (formatName.datesAndNumbers) SetDateNumVisible(p, formatName.tip == FormatType::Delimited);
    if (formatName.ad != Ad::Stays) MakeFilenameVisible(p, formatName.ad == Ad::Visible);
    p.cmbDestination.setEnabled(true);
}

void cmbDestination_Click(ExportPanel& p) {
    const int index = p.cmbDestination.listIndex();
    if (index < 0) return;
    p.options.destination = static_cast<DestinationType>(index);
    const bool file = p.options.destination == DestinationType::DiskFile;
    p.chkOpenFile.setVisible(file);
    if (file) return;
    p.chkOpenFile.setChecked(false);
    SetDateNumVisible(p, false);
    MakePicsInvisible(p);
    MakeFilenameVisible(p, false);
    switch (p.options.destination) {
    case DestinationType::Mapi:
    case DestinationType::Vim:
        return panelOf(p, OptionPanel::Mail).setVisible(true);
    case DestinationType::Exchange:
        return panelOf(p, OptionPanel::Exchange).setVisible(true);
    case DestinationType::Domino:
        return panelOf(p, OptionPanel::Domino).setVisible(true);
    default:
        return;
    }
}

void MakePicsInvisible(ExportPanel& p) {
    for (Frame& panel : p.fraOptions) {
        panel.setVisible(false);
        panel.setBackColor(Colour::WindowBackground);
    }
}

void MakeFilenameVisible(ExportPanel& p, bool visible) {
    p.txtDiskFile.setVisible(visible);
    p.lblInfo.setVisible(visible);
}

void SetDateNumVisible(ExportPanel& p, bool visible) {
    for (Control* control : {static_cast<Control*>(&p.lblDateFormat), static_cast<Control*>(&p.lblNumFormat),
                             static_cast<Control*>(&p.cmbDateFormat), static_cast<Control*>(&p.cmbNumFormat)})
        control->setVisible(visible);
}

std::string GetExportDir(std::string_view formatName) {
    for (const Format& each : kFormats)
        if (formatName == each.text) return each.folder;
    return "Export";
}

} // namespace veldona
