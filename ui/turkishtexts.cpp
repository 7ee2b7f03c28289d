#include "ui/turkishtexts.h"

#include <map>
#include <string_view>

#include <QDateTime>
#include <QFileDialog>
#include <QFileInfo>
#include <QFileSystemModel>
#include <QHeaderView>
#include <QLibraryInfo>
#include <QStyledItemDelegate>
#include <QTreeView>

namespace veldona {

namespace {

const std::map<std::string_view, const char*> kTexts = {
    {"&Undo", "&Geri Al"},
    {"&Redo", "&Yinele"},
    {"Cu&t", "Ke&s"},
    {"&Copy", "&Kopyala"},
    {"&Paste", "Ya&pıştır"},
    {"Delete", "Sil"},
    {"Select All", "Hepsini Seç"},
    {"Copy &Link Location", "&Bağlantıyı Kopyala"},
    {"Previous Month", "Önceki Ay"},
    {"Next Month", "Sonraki Ay"},
    // The question before a file is written over, and the dialog that names it.
    {"&Yes", "&Evet"},
    {"&No", "&Hayır"},
    {"Cancel", "Vazgeç"},
    {"OK", "Tamam"},
    {"%1 already exists.\nDo you want to replace it?", "%1 zaten var.\nÜzerine yazılsın mı?"},
    {"Name", "Ad"},
    {"Size", "Boyut"},
    {"Type", "Tür"},
    {"Date Modified", "Değişme Tarihi"},
    {"Computer", "Bilgisayar"},
    {"Drive", "Sürücü"},
    {"Folder", "Klasör"},
    {"Back", "Geri"},
    {"Forward", "İleri"},
    {"Parent Directory", "Üst Klasör"},
    {"Create New Folder", "Yeni Klasör Aç"},
    {"&New Folder", "&Yeni Klasör"},
    {"List View", "Liste"},
    {"Detail View", "Ayrıntılar"},
    {"&Rename", "&Yeniden Adlandır"},
    {"&Delete", "&Sil"},
    {"Show &hidden files", "&Gizli dosyaları göster"},
    // The printer's dialog.
    {"Printer", "Yazıcı"},
    {"&Name:", "&Ad:"},
    {"P&roperties", "Ö&zellikler"},
    {"Location:", "Yer:"},
    {"Type:", "Tür:"},
    {"Preview", "Önizleme"},
    {"Output &file:", "&Dosya:"},
    {"Print to File (PDF)", "Dosyaya yazdır (PDF)"},
    {"Local file", "Bu bilgisayarda dosya"},
    {"Write PDF file", "PDF dosyası yazar"},
    {"&Print", "&Yazdır"},
    {"&Options >>", "&Seçenekler >>"},
    {"&Options <<", "&Seçenekler <<"},
    {"Copies", "Kopya"},
    {"Copies:", "Kopya sayısı:"},
    {"Collate", "Takım takım"},
    {"Reverse", "Sondan başa"},
    {"Print range", "Sayfa aralığı"},
    {"Print all", "Hepsi"},
    {"Pages from", "Sayfa"},
    {"to", "–"},
    {"Pages", "Sayfalar"},
    {"Current Page", "Gösterilen sayfa"},
    {"Selection", "Seçim"},
    {"Page Set:", "Sayfa kümesi:"},
    {"All Pages", "Bütün sayfalar"},
    {"Odd Pages", "Tek sayfalar"},
    {"Even Pages", "Çift sayfalar"},
    {"Output Settings", "Çıktı ayarları"},
    {"Options", "Seçenekler"},
    {"Color Mode", "Renk"},
    {"Color", "Renkli"},
    {"Grayscale", "Gri"},
    {"Double Sided Printing", "İki yüze yazdırma"},
    {"Off", "Kapalı"},
    {"Long side binding", "Uzun kenardan"},
    {"Short side binding", "Kısa kenardan"},
    // The help of the command line.
    {"Usage: %1", "Kullanım: %1"},
    {"[options]", "[seçenekler]"},
    {"Options:", "Seçenekler:"},
    {"Unknown option '%1'.", "Bilinmeyen seçenek: %1"},
    {"Unknown options: %1.", "Bilinmeyen seçenekler: %1"},
    {"Missing value after '%1'.", "%1 bir değer ister."},
    {"Unexpected value after '%1'.", "%1 değer almaz."},
};

constexpr int kTimeColumn = 3;

class TurkishTimes : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem* option, const QModelIndex& index) const override {
        QStyledItemDelegate::initStyleOption(option, index);
        if (index.column() != kTimeColumn) return;
        const QFileInfo file(index.data(QFileSystemModel::FilePathRole).toString());
        option->text = file.lastModified().toString("dd/MM/yyyy HH:mm");
    }
};

} // namespace

void showTurkishTimes(QFileDialog& dialog) {
    dialog.setItemDelegate(new TurkishTimes(&dialog));
    if (auto* details = dialog.findChild<QTreeView*>("treeView"))
        details->header()->setSectionResizeMode(kTimeColumn, QHeaderView::ResizeToContents);
}

TurkishTexts::TurkishTexts(QObject* parent) : QTranslator(parent) {
    static_cast<void>(toolkit_.load("qtbase_tr", QLibraryInfo::path(QLibraryInfo::TranslationsPath)));
}

QString TurkishTexts::translate(const char* context, const char* source, const char* disambiguation,
                                int n) const {
    const auto found = kTexts.find(source);
    return found == kTexts.end() ? toolkit_.translate(context, source, disambiguation, n)
                                 : QString::fromUtf8(found->second);
}

} // namespace veldona
