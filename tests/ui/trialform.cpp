#include "tests/ui/trialform.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTableView>
#include <QTextBrowser>
#include <QToolBar>
#include <QVBoxLayout>

#include "tests/ui/window_tests.h"
#include "ui/datefield.h"
#include "ui/parallellists.h"

namespace veldona::test {

namespace {

template <class Widget> Widget* named(const char* name, QWidget* parent) {
    auto* made = new Widget(parent);
    made->setObjectName(name);
    return made;
}

QWidget* drawLists(QWidget& window) {
    auto* table = new ParallelLists(&window);
    auto* grid = new QGridLayout(table);
    grid->addWidget(new QLabel("Sol", table), 0, 0);
    grid->addWidget(new QLabel("Sağ", table), 0, 1);
    grid->addWidget(named<QListView>("Sol", table), 1, 0);
    grid->addWidget(named<QListView>("Sag", table), 1, 1);
    return table;
}

QWidget* drawTabs(QWidget& window) {
    auto* tabs = named<QTabWidget>("Sekmeler", &window);
    tabs->addTab(named<QWidget>("Sayfa1", tabs), "");
    auto* second = named<QWidget>("Sayfa2", tabs);
    named<QLineEdit>("Sayfadaki", second);
    tabs->addTab(second, "");
    return tabs;
}

QWidget* drawOptions(QWidget& window) {
    auto* group = named<QGroupBox>("Secenekler", &window);
    auto* column = new QVBoxLayout(group);
    column->addWidget(named<QRadioButton>("Bir", group));
    column->addWidget(named<QRadioButton>("Iki", group));
    return group;
}

} // namespace

void drawTrialForm(QWidget& window) {
    window.resize(900, 700);
    window.setProperty("withoutWidget", "Gizli");
    auto* column = new QVBoxLayout(&window);
    auto* caption = named<QLabel>("Yazi", &window);
    column->addWidget(caption);
    column->addWidget(named<QLineEdit>("Metin", &window));
    caption->setBuddy(window.findChild<QWidget*>("Metin"));
    column->addWidget(named<QLineEdit>("Ikinci", &window));
    column->addWidget(named<QPushButton>("Dugme", &window));
    column->addWidget(named<QCheckBox>("Kutu", &window));
    column->addWidget(drawOptions(window));
    column->addWidget(drawLists(window));
    column->addWidget(named<QComboBox>("Yazilan", &window));
    column->addWidget(named<QComboBox>("Secilen", &window));
    for (const char* name : {"Gun", "Varsa", "Bos"})
        column->addWidget(named<DateField>(name, &window));
    column->addWidget(named<QTableView>("Izgara", &window));
    column->addWidget(named<QTableView>("Tablo", &window));
    column->addWidget(named<QToolBar>("Cubuk", &window));
    column->addWidget(drawTabs(window));
    column->addWidget(named<QTextBrowser>("Belge", &window));
}

TrialWindow::TrialWindow() {
    clock.set(DateTime::of(2026, 11, 22, 10, 30));
    host.timersRun = false;
    host.draw("frmDeneme", drawTrialForm);
    forms.add("frmDeneme", [this](Forms& all) {
        auto made = std::make_unique<TrialForm>(all);
        form = made.get();
        for (Control* each : {static_cast<Control*>(&made->Bir), static_cast<Control*>(&made->Iki)})
            each->placeIn(made->ToolOptions);
        made->mnuListe.setVisible(false);
        made->Sol.popupMenu = &made->mnuListe;
        made->Tabs.addPage(made->Sayfa1);
        made->Tabs.addPage(made->Sayfa2);
        made->OnPage.placeIn(made->Sayfa2);
        made->Hidden.setVisible(false);
        return made;
    });
    forms.show("frmDeneme", Kip::Modeless);
    host.flush();
    settle();
}

TrialWindow::~TrialWindow() = default;

} // namespace veldona::test
