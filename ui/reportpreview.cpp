#include "ui/reportpreview.h"

#include <algorithm>
#include <utility>

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QScreen>
#include <QToolBar>
#include <QVBoxLayout>

#include "ui/dialogs.h"
#include "ui/host.h"
#include "ui/housestyle.h"
#include "ui/keyoverview.h"
#include "ui/pageview.h"
#include "ui/printing.h"

namespace veldona {

namespace {

constexpr const char* kPageWidth = "Sayfa Genişliği";
constexpr const char* kWholePage = "Tüm Sayfa";
constexpr int kSmallestZoom = 10;
constexpr int kLargestZoom = 400;

// What printing fails of is told; the window that asked for it goes on.
void tellFailure(WindowHost& host, const std::function<void()>& print) {
    try {
        print();
    } catch (const RuntimeError& error) {
        WindowDialogs(host).runtimeError(error);
    }
}

} // namespace

ReportPreview::ReportPreview(WindowHost& host, const report::Document& document, QWidget* parent)
    : QDialog(parent), host_(host), document_(document), pages_(new PageView(this)) {
    setWindowTitle(QString::fromStdString(document.title));
    setObjectName("onizleme"); // by which its size and place are kept
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    auto* bar = new QToolBar(this);
    addTools(*bar);
    auto* column = new QVBoxLayout(this);
    column->addWidget(bar);
    column->addWidget(pages_, 1);
    pages_->setDocument(&document_);
    pages_->onTurn = [this](int direction) { showPage(page_ + direction); };
    pages_->setFocus();
    applyZoom(kPageWidth);
    showPage(0);
    resize(QSize(scaled(940), scaled(720)).boundedTo(screen()->availableSize()));
}

void ReportPreview::addTools(QToolBar& bar) {
    const auto add = [&](const QString& words, const QKeySequence& key, auto act) {
        QAction* action = bar.addAction(words);
        action->setShortcut(key);
        bar.widgetForAction(action)->setFocusPolicy(Qt::TabFocus);
        QObject::connect(action, &QAction::triggered, this, act);
        return action;
    };
    first_ = add("İlk", QKeySequence("Ctrl+Home"), [this] { showPage(0); });
    previous_ = add("Önceki", {}, [this] { showPage(page_ - 1); });
    place_ = new QLabel(&bar);
    place_->setMinimumWidth(scaled(64));
    place_->setAlignment(Qt::AlignCenter);
    bar.addWidget(place_);
    next_ = add("Sonraki", {}, [this] { showPage(page_ + 1); });
    last_ = add("Son", QKeySequence("Ctrl+End"),
                [this] { showPage(static_cast<int>(document_.pages.size()) - 1); });
    addZoom(bar);
    add("Yazdır", QKeySequence::Print,
        [this] { tellFailure(host_, [this] { askAndPrint(host_, this, document_); }); });
    add("PDF olarak kaydet", QKeySequence::Save,
        [this] { tellFailure(host_, [this] { askAndWritePdf(host_, this, document_); }); });
    add("Kapat", {}, [this] { close(); });
    auto* keys = new QAction(this);
    keys->setShortcut(QKeySequence::HelpContents);
    QObject::connect(keys, &QAction::triggered, this,
                     [this] { showKeys(host_, this, windowTitle(), keysOfPreview(), "frmCrNesne"); });
    addAction(keys);
}

void ReportPreview::addZoom(QToolBar& bar) {
    zoom_ = new QComboBox(&bar);
    zoom_->setEditable(true);
    zoom_->setInsertPolicy(QComboBox::NoInsert);
    zoom_->setMinimumWidth(scaled(140));
    zoom_->addItems(
        {kPageWidth, kWholePage, "25 %", "50 %", "75 %", "100 %", "150 %", "200 %", "300 %", "400 %"});
    QObject::connect(zoom_, &QComboBox::textActivated, this, &ReportPreview::applyZoom);
    QObject::connect(zoom_->lineEdit(), &QLineEdit::returnPressed, this,
                     [this] { applyZoom(zoom_->currentText()); });
    bar.addWidget(zoom_);
}

void ReportPreview::showPage(int page) {
    const int last = static_cast<int>(document_.pages.size()) - 1;
    page_ = std::clamp(page, 0, last);
    pages_->showPage(page_);
    place_->setText(QString("%1 / %2").arg(page_ + 1).arg(last + 1));
    for (QAction* back : {first_, previous_})
        back->setEnabled(page_ > 0);
    for (QAction* on : {next_, last_})
        on->setEnabled(page_ < last);
}

void ReportPreview::applyZoom(const QString& text) {
    if (text == kPageWidth) return pages_->setZoom(PageView::Fit::Width);
    if (text == kWholePage) return pages_->setZoom(PageView::Fit::Page);
    bool isNumber = false;
    const int percent = QString(text).remove('%').trimmed().toInt(&isNumber);
    if (!isNumber) return;
    const int applied = std::clamp(percent, kSmallestZoom, kLargestZoom);
    pages_->setZoom(PageView::Fit::Scale, applied);
    zoom_->setEditText(QString("%1 %").arg(applied));
}

void offerPdf(WindowHost& host, QWidget& viewer) {
    auto* button = viewer.findChild<QAbstractButton*>("pdfOlarakKaydet");
    const auto* pages = viewer.findChild<PageView*>("CRViewer1");
    QObject::connect(button, &QAbstractButton::clicked, &viewer, [&host, &viewer, pages] {
        if (pages->document()) tellFailure(host, [&] { askAndWritePdf(host, &viewer, *pages->document()); });
    });
}

void WindowReportDesk::preview(const report::Document& document) {
    ReportPreview shown(host_, document, host_.frontWindow());
    host_.run(shown);
}

bool WindowReportDesk::print(const report::Document& document) {
    return askAndPrint(host_, host_.frontWindow(), document);
}

void WindowReportDesk::writeFile(const report::Document& document, const std::string& nativePath) {
    writePages(document, nativePath);
}

} // namespace veldona
