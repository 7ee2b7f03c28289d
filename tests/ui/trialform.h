// A screen with one control of every kind, drawn by code, and a log of what it was told.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/controls/controls.h"
#include "platform/controls/forms.h"
#include "platform/controls/lists.h"
#include "platform/controls/menus.h"
#include "platform/desktop/clock.h"
#include "ui/host.h"

namespace veldona::test {

// 20,000 rows that count how often a cell is asked for.
class ManyRows : public RowSource {
public:
    [[nodiscard]] int rowCount() const override { return 20'000; }
    [[nodiscard]] std::string cell(int row, std::string_view field) const override {
        ++asked;
        return std::string(field) + std::to_string(row);
    }
    [[nodiscard]] int currentRow() const override { return current; }
    void moveTo(int row) override { current = row; }

    mutable long asked = 0;
    int current = -1;
};

struct TrialForm : Form {
    explicit TrialForm(Forms& forms) : Form(forms, "frmDeneme", "Deneme") {}

    Label Yazi{*this, "Yazi", "A&d Soyad "};
    TextBox Text{*this, "Metin"};
    TextBox Ikinci{*this, "Ikinci"};
    CommandButton Button{*this, "Dugme", "&Kaydet"};
    CheckBox Kutu{*this, "Kutu", "Kutu"};
    Frame ToolOptions{*this, "Secenekler", "Seçenekler"};
    OptionButton Bir{*this, "Bir", "Bir"};
    OptionButton Iki{*this, "Iki", "İki"};
    ListBox Sol{*this, "Sol"};
    ListBox Sag{*this, "Sag"};
    ComboBox Yazilan{*this, "Yazilan"};
    ComboBox Secilen{*this, "Secilen", ComboBox::Style::ListOnly};
    DateBox Gun{*this, "Gun"};
    DateBox Varsa{*this, "Varsa", DateBox::Style::PickerWithCheck};
    DateBox Bos{*this, "Bos", DateBox::Style::Combo};
    DataGrid Grid{*this, "Izgara"};
    FlexGrid Tablo{*this, "Tablo", 3, 3};
    ToolBar Bar{*this, "Cubuk"};
    TabControl Tabs{*this, "Sekmeler"};
    Frame Sayfa1{*this, "Sayfa1", "Bir"};
    Frame Sayfa2{*this, "Sayfa2", "İki"};
    TextBox OnPage{*this, "Sayfadaki"};
    WebPane Page{*this, "Belge"};
    Menu mnuListe{*this, "mnuListe", "Liste"};
    MenuItem mnuSil{mnuListe, "mnuSil", "Satır Sil", "Ctrl+D"};
    Timer Saat{*this, "Saat", 1};
    TextBox Hidden{*this, "Gizli"};
};

void drawTrialForm(QWidget& window);

class TrialWindow : public ::testing::Test {
protected:
    TrialWindow();
    ~TrialWindow() override;

    template <class Widget> Widget& at(const char* name) {
        auto* found = dynamic_cast<Widget*>(host.window(*form)->findChild<QWidget*>(name));
        if (!found) qFatal("no such widget: %s", name);
        return *found;
    }
    // What was told since the last call.
    std::vector<std::string> told() { return std::exchange(log, {}); }
    void note(std::string what) { log.push_back(std::move(what)); }

    ManualClock clock;
    WindowHost host{clock};
    Forms forms{host};
    TrialForm* form = nullptr;
    ManyRows rows;
    std::vector<std::string> log;
};

} // namespace veldona::test
