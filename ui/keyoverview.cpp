#include "ui/keyoverview.h"

#include <algorithm>
#include <map>
#include <string>

#include <QDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QVBoxLayout>

#include "platform/controls/form.h"
#include "platform/controls/keynames.h"
#include "platform/controls/menus.h"
#include "ui/binder.h"
#include "ui/host.h"
#include "ui/housestyle.h"

namespace veldona {

namespace {

using Lines = std::vector<KeyLine>;

constexpr int kGuideAsked = 2; // how the dialog ends

const std::map<std::string_view, Lines> kScreens = {
    {"frmMainVeldona",
     {{Key::None, "Rakam (boş satış listesinde)", "Müşteri numarasına yazılır"},
      {Key::F2, "F2", "Yazılan tutarı tahsil eder"},
      {Key::F6, "F6", "Açık satışı siler"},
      {Key::F9, "F9", "Tahsilat makbuzunu hazırlar"},
      {Key::F10, "F10", "Müşteriyi ayrıntılı arar"},
      {Key::Left, "←  →", "Önceki ve sonraki müşteriye geçer"},
      {Key::Up, "↑  ↓", "Satış listesine geçer; müşteri listesinde müşteriler arasında gezer"},
      {Key::None, "Enter (satış listesinde)", "Satışı açar ve tutar alanına geçer"},
      {Key::None, "Enter (müşteri listesinde)", "Müşterinin satışlarına geçer"},
      {Key::None, "Enter (yapılacak ödemelerde)", "Taksidin tarihini ve tutarını düzeltir"},
      {Key::None, "Enter (satış satırının tarihinde)", "Satışın tarihini düzeltir"},
      {Key::Escape, "Esc", "Programı kapatır"}}},
    {"frmArama",
     {{Key::None, "↑  ↓  Page Up  Page Down", "Alanda kalarak sonuçlarda gezer"},
      {Key::None, "Enter", "Seçili hesabı ya da satışı açar"},
      {Key::Escape, "Esc", "Açmadan kapatır"}}},
    {"frmBugun",
     {{Key::F2, "F2", "Yazılan görüşme notunu kaydeder"},
      {Key::F3, "F3", "Görüşme notuna geçer"},
      {Key::F5, "F5", "Listeyi yeniler"},
      {Key::F7, "F7", "Sıralamayı tersine çevirir"},
      {Key::F9, "F9", "Gösterilen listeyi yazdırır"},
      {Key::None, "Enter (listede)", "Hesabı en eski borçlu satışıyla açar"},
      {Key::None, "Enter (süzgeçlerde)", "Listeye geçer"},
      {Key::None, "Enter (notta)", "Sonraki alana geçer, sonunda notu kaydeder"},
      {Key::Escape, "Esc", "Ekranı kapatır"}}},
    {"frmCariEkle",
     {{Key::F2, "F2", "Kartı kaydeder"},
      {Key::F3, "F3", "Yeni kart açar"},
      {Key::F4, "F4", "Değişiklikten vazgeçer"},
      {Key::F5, "F5", "Kartı değiştirmeye açar"},
      {Key::F6, "F6", "Kartı siler"},
      {Key::Enter, "Enter", "Sonraki alana geçer"},
      {Key::Escape, "Esc", "Ekranı kapatır; kart yazılırken vazgeçer"}}},
    {"frmAntetBilgisi", {{Key::F2, "F2", "Antedi kaydeder"}}},
    {"frmCarihesapSec",
     {{Key::F3, "F3", "Yeni müşteri kartı açar"},
      {Key::F5, "F5", "Seçili müşterinin kartını değiştirmeye açar"},
      {Key::F6, "F6", "Seçili müşteriyi siler"},
      {Key::Enter, "Enter (arama alanında)", "Arar ve bulunanlara geçer"},
      {Key::None, "Enter (listede)", "Müşteriyi seçer"},
      {Key::Escape, "Esc", "Seçmeden kapatır"}}},
    {"frmSatis",
     {{Key::F2, "F2", "Satışı kaydeder"},
      {Key::F3, "F3", "Yeni satışa başlar"},
      {Key::F4, "F4", "Değişiklikten vazgeçer"},
      {Key::F5, "F5", "Satışı değiştirmeye açar"},
      {Key::F6, "F6", "Satışı siler"},
      {Key::None, "F10 (müşteri numarasında)", "Müşteriyi ayrıntılı arar"},
      {Key::Enter, "Enter", "Sonraki alana geçer"},
      {Key::None, "Enter (ödeme tablosunda)", "Hücreyi yazar ve sonraki sütuna geçer"}}},
    {"frmSonIslemler",
     {{Key::F4, "F4", "Seçili işlemi geri alır"},
      {Key::F5, "F5", "Listeyi yeniler"},
      {Key::None, "Enter (süzgeçlerde)", "Listeye geçer"},
      {Key::None, "Enter (listede)", "Seçili işlemin ayrıntısına geçer"},
      {Key::Escape, "Esc", "Ekranı kapatır"}}},
    {"frmYedek",
     {{Key::None, "Enter (listede)", "Seçili yere yedek alır"}, {Key::Escape, "Esc", "Ekranı kapatır"}}},
    {"frmGunluk", {{Key::Escape, "Esc", "Ekranı kapatır"}}},
    {"frmParola", {{Key::Escape, "Esc", "Ekranı kapatır"}}},
    {"frmGrafik", {{Key::F9, "F9", "Grafikleri yazdırır"}, {Key::Escape, "Esc", "Ekranı kapatır"}}},
    {"frmCrNesne",
     {{Key::None, "Page Up  Page Down", "Sayfayı kaydırır; sonunda öteki sayfaya geçer"},
      {Key::None, "Enter (büyütmede)", "Yazılan büyütmeyi uygular"},
      {Key::None, "Ctrl+P", "Yazdırır"},
      {Key::None, "Ctrl+S", "PDF olarak kaydeder"},
      {Key::None, "Ctrl+F", "Raporda arar"},
      {Key::Escape, "Esc", "Raporu kapatır"}}},
    {"rprbeklenentahsilat",
     {{Key::None, "Enter", "Raporu hazırlar"}, {Key::Escape, "Esc", "Ekranı kapatır"}}},
    {"rprodemesigecen", {{Key::None, "Enter", "Raporu hazırlar"}, {Key::Escape, "Esc", "Ekranı kapatır"}}},
    {"rptGelirGider",
     {{Key::Enter, "Enter (tarihte)", "Sonraki alana geçer"},
      {Key::None, "Enter (öteki alanlarda)", "Listeyi hazırlar"}}},
};

void addLines(QGridLayout& grid, const QString& heading, const Lines& lines) {
    if (lines.empty()) return;
    int row = grid.rowCount();
    auto* head = new QLabel(heading);
    head->setProperty("role", "total");
    grid.addWidget(head, row++, 0, 1, 2);
    for (const KeyLine& line : lines) {
        grid.addWidget(new QLabel(toQt(line.shown)), row, 0);
        grid.addWidget(new QLabel(toQt(line.does)), row++, 1);
    }
}

bool isOfEveryWindow(const std::string& key) {
    const Lines& lines = keysOfEveryWindow();
    return std::any_of(lines.begin(), lines.end(), [&](const KeyLine& line) { return line.shown == key; });
}

std::string wordsOf(const MenuItem& item) {
    return item.toolTip().empty() ? item.caption() : item.toolTip();
}

} // namespace

Lines keysOfScreen(const Form& form) {
    const auto found = kScreens.find(form.name());
    Lines lines = found == kScreens.end() ? Lines() : found->second;
    const auto end =
        std::find_if(lines.begin(), lines.end(), [](const KeyLine& line) { return line.key == Key::Escape; });
    Lines entries;
    for (const Control* each : form.controls()) {
        const auto* item = dynamic_cast<const MenuItem*>(each);
        if (!item || !item->visible() || item->keyName().empty() || isOfEveryWindow(item->keyName()))
            continue;
        entries.push_back({keyNamed(item->keyName())->key, item->keyName(), wordsOf(*item)});
    }
    lines.insert(end, entries.begin(), entries.end());
    return lines;
}

const Lines& keysOfPreview() {
    static const Lines lines = {
        {Key::None, "Page Up  Page Down", "Sayfayı kaydırır; sonunda öteki sayfaya geçer"},
        {Key::None, "Ctrl+Home  Ctrl+End", "İlk ve son sayfaya geçer"},
        {Key::None, "Ctrl+P", "Yazdırır"},
        {Key::None, "Ctrl+S", "PDF olarak kaydeder"},
        {Key::Escape, "Esc", "Önizlemeyi kapatır"}};
    return lines;
}

const Lines& keysOfEveryWindow() {
    static const Lines lines = {
        {Key::F1, "F1", "Bu listeyi gösterir"},
        {Key::None, "Tab  Shift+Tab", "Sonraki ve önceki alana geçer"},
        {Key::None, "Alt + altı çizili harf", "O alana geçer, o düğmeye basar"},
        {Key::None, "Boşluk", "Kutuyu işaretler, düğmeye basar"},
        {Key::None, "Boşluk (kutulu tarihte)", "Tarihin işaretini koyar ya da kaldırır"},
        {Key::None, "Alt+↓ (tarihte)", "Takvimi açar"}};
    return lines;
}

void showKeys(WindowHost& host, QWidget* parent, const QString& windowTitle, const Lines& own,
              const std::string& screen) {
    QDialog dialog(parent);
    dialog.setWindowTitle("Tuşlar");
    auto* page = new QWidget;
    auto* grid = new QGridLayout(page);
    grid->setColumnStretch(1, 1);
    grid->setHorizontalSpacing(scaled(24));
    addLines(*grid, windowTitle, own);
    addLines(*grid, "Her pencerede", keysOfEveryWindow());
    auto* area = new QScrollArea;
    area->setWidget(page);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setFocusPolicy(Qt::NoFocus);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    area->setMinimumWidth(page->sizeHint().width() + scaled(20));
    auto* close = new QPushButton("&Kapat");
    close->setDefault(true);
    QObject::connect(close, &QPushButton::clicked, &dialog, &QDialog::accept);
    auto* guide = new QPushButton("K&ılavuz");
    guide->setVisible(static_cast<bool>(host.showGuide));
    guide->setAutoDefault(false);
    QObject::connect(guide, &QPushButton::clicked, &dialog, [&dialog] { dialog.done(kGuideAsked); });
    auto* row = new QHBoxLayout;
    row->addWidget(guide);
    row->addStretch();
    row->addWidget(close);
    auto* column = new QVBoxLayout(&dialog);
    column->addWidget(area, 1);
    column->addLayout(row);
    const int rest = column->contentsMargins().top() * 3 + close->sizeHint().height();
    const int room = dialog.screen()->availableSize().height() * 4 / 5;
    dialog.resize(dialog.minimumSizeHint().width(), std::min(page->sizeHint().height() + rest, room));
    if (host.run(dialog) == kGuideAsked) host.showGuide(parent, screen);
}

} // namespace veldona
