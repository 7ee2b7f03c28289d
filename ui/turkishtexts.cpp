#include "ui/turkishtexts.h"

#include <map>
#include <string_view>

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

} // namespace

QString TurkishTexts::translate(const char*, const char* source, const char*, int) const {
    const auto found = kTexts.find(source);
    return found == kTexts.end() ? QString() : QString::fromUtf8(found->second);
}

} // namespace veldona
