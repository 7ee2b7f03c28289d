// The export panel of the report viewer: formats, destinations, and the options of each.
//
// The feature is switched off for the operator: the tool that opens the panel is hidden, and so is its start
// button. All of it works for whoever reaches it.
#pragma once

#include <array>
#include <string>
#include <string_view>

#include "platform/controls/controls.h"
#include "platform/controls/forms.h"
#include "platform/controls/lists.h"

namespace veldona {

struct Session;

// By the numbers of the list "cmbFormat".
enum class FormatType {
    None = 0,
    OwnForm = 1,
    Dif = 2,
    Record = 3,
    Csv = 5,
    TabbedValues = 6,
    Delimited = 7,
    Text = 8,
    TabbedText = 9,
    Word = 14,
    Html32 = 24,
    Excel = 29,
    ExcelPlain = 30,
    Pdf = 31,
    Html4 = 32,
    Definition = 34,
    RichText = 35,
    Xml = 37,
};

// By the places of the list "cmbDestination".
enum class DestinationType { None = -1, DiskFile, Mapi, Vim, Exchange, Domino, Document };

// What the panel's fields come to when an export starts.
struct ExportOptions {
    FormatType format = FormatType::None;
    DestinationType destination = DestinationType::None;
    std::string DiskFileName; // as the program writes paths
    std::string fieldDelimiter, stringDelimiter;
    bool pageNavigator = false;
    std::int32_t areaGroup = 0, areaType = -1; // 0: every table; -1: everything
    bool tabular = true, worksheetFunctions = false;
    bool columnHeadings = true;
    double constantColumnWidth = 0; // 0: as wide as needed
    bool allPages = true;
    std::int32_t firstPage = 0, lastPage = 0; // from 1
    bool multipleFiles = false;
    std::string MailToList, MailCcList, MailBccList, MailSubject, MailMessage;
    std::string Profile, FolderPath, Password;
    std::string DatabaseName, FormName, Comments;
};

enum class OptionPanel { Exchange, Domino, Delimiters, Html, Pages, Excel, Xml, Mail };

struct ExportPanel {
    ExportPanel(Form& itsForm, Session& itsSession);

    Form& form;
    Session& session;
    ExportOptions options;

    Frame picExport{form, "picExport"};
    ComboBox cmbFormat{form, "cmbFormat"};
    ComboBox cmbDestination{form, "cmbDestination"};

    Frame frmDiskFile{form, "frmDiskFile"};
    Label lblInfo{form, "lblInfo", "Dosya Adını Seçiniz"};
    TextBox txtDiskFile{form, "txtDiskFile"};
    Label lblDateFormat{form, "lblDateFormat", "Tarih için Format Kullan"};
    ComboBox cmbDateFormat{form, "cmbDateFormat"};
    Label lblNumFormat{form, "lblNumFormat", "Sayı için Format Kullan"};
    ComboBox cmbNumFormat{form, "cmbNumFormat"};

    std::array<Frame, 8> fraOptions; // by OptionPanel

    ComboBox cmbDestinationType{form, "cmbDestinationType"};
    TextBox txtProfile{form, "txtProfile"};
    TextBox txtFolderPath{form, "txtFolderPath"};
    TextBox txtPassword{form, "txtPassword"};

    TextBox txtDatabaseName{form, "txtDatabaseName"};
    TextBox txtFormName{form, "txtFormName"};
    TextBox txtComments{form, "txtComments"};

    TextBox txtFieldDel{form, "txtFieldDel"};
    TextBox txtStringDel{form, "txtStringDel"};

    TextBox txtHTMLFileName{form, "txtHTMLFileName"};
    ComboBox cmbSepPages{form, "cmbSepPages"};
    ComboBox cmbPageNav{form, "cmbPageNav"};

    ComboBox cmbAllPages{form, "cmbAllPages"};
    TextBox txtFirstPage{form, "txtFirstPage"};
    TextBox txtLastPage{form, "txtLastPage"};

    ComboBox cmbAreaType{form, "cmbAreaType"};
    TextBox txtAreaGroup{form, "txtAreaGroup"};
    TextBox txtColWidth{form, "txtColWidth"};
    ComboBox cmbColHeading{form, "cmbColHeading"};
    ComboBox cmbUseConWidth{form, "cmbUseConWidth"};
    ComboBox cmbUseTabFormat{form, "cmbUseTabFormat"};
    ComboBox cmbUseWorkFunc{form, "cmbUseWorkFunc"};

    TextBox txtXMLFileName{form, "txtXMLFileName"};
    ComboBox cmbMultFiles{form, "cmbMultFiles"};

    TextBox txtToList{form, "txtToList"};
    TextBox txtCCList{form, "txtCCList"};
    TextBox txtBCCList{form, "txtBCCList"};
    TextBox txtSubject{form, "txtSubject"};
    TextBox txtMessage{form, "txtMessage"};
    CommandButton cmdAdresBook{form, "cmdAdresBook", "Adres Defterinden Seç"};

    CheckBox chkOpenFile{form, "chkOpenFile", "Aktarım sonrasında oluşan dosyayı veya dizini aç"};
    CommandButton cmdExport{form, "cmdExport", "Aktarımı Başlat"};
    CommandButton cmdClose{form, "cmdClose", "Vazgeç"};
    CommandButton cmdSifirla{form, "cmdSifirla", "Formu Sıfırla"};
};

inline constexpr const char* kChooseFormat = "Formatı Seçiniz";
inline constexpr const char* kChooseTarget = "Hedefi Seçiniz";

// Fills the lists.
void GorunumAyarla(ExportPanel& p);
void FormuSifirla(ExportPanel& p);
void SetFormatView(ExportPanel& p);
void cmbDestination_Click(ExportPanel& p);
void MakePicsInvisible(ExportPanel& p);
void MakeFilenameVisible(ExportPanel& p, bool visible);
void SetDateNumVisible(ExportPanel& p, bool visible);
// The folder of a format by its text in the list; "Export" for any other text.
[[nodiscard]] std::string GetExportDir(std::string_view formatName);

} // namespace veldona
