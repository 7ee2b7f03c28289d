#include "apps/veldona/restoredialog.h"

#include <algorithm>
#include <chrono>
#include <filesystem>

#include <QFileInfo>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTableWidget>
#include <QThread>
#include <QVBoxLayout>

#include "backup/keeping.h"
#include "backup/picture.h"
#include "core/books.h"
#include "core/session.h"
#include "platform/store/dialect/storeerror.h"
#include "ui/housestyle.h"

namespace veldona {

namespace {

// vorel-2026-11-22_143005.mdb
QString timeOf(const std::string& name) {
    const QString at = QString::fromStdString(name);
    return at.mid(14, 2) + '/' + at.mid(11, 2) + '/' + at.mid(6, 4) + ' ' + at.mid(17, 2) + ':' +
           at.mid(19, 2);
}

QString count(const backup::Picture& picture, const char* table) {
    const auto found = picture.rows.find(table);
    return QLocale(QLocale::Turkish).toString(qlonglong(found == picture.rows.end() ? 0 : found->second));
}

} // namespace

RestoreDialog::RestoreDialog(QWidget* parent, std::string folder, const std::vector<std::string>& names)
    : QDialog(parent), folder_(std::move(folder)), names_(names.rbegin(), names.rend()),
      table_(new QTableWidget(static_cast<int>(names.size()), 5)), go_(new QPushButton("Yedekten &Dön")) {
    setWindowTitle("Yedekten Dön");
    auto* words = new QLabel("Dönülecek &yedek:");
    words->setBuddy(table_);
    auto* folderLine = new QLabel("Klasör: " + QString::fromStdString(folder_));
    folderLine->setProperty("role", "hint");
    folderLine->setWordWrap(true);
    auto* cancel = new QPushButton("&Vazgeç");
    cancel->setDefault(true);
    go_->setAutoDefault(false);
    connect(go_, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(go_);
    buttons->addWidget(cancel);
    auto* column = new QVBoxLayout(this);
    column->addWidget(words);
    column->addWidget(table_, 1);
    column->addWidget(folderLine);
    column->addLayout(buttons);
    fill();
    resize(scaled(640), scaled(420));
    reader_.reset(QThread::create([this] { readAll(); }));
    reader_->start();
}

RestoreDialog::~RestoreDialog() {
    stopped_ = true;
    reader_->wait();
}

std::optional<std::string> RestoreDialog::chosen() const {
    const int row = table_->currentRow();
    if (row < 0) return std::nullopt;
    return (std::filesystem::path(folder_) / names_[static_cast<std::size_t>(row)]).string();
}

void RestoreDialog::fill() {
    table_->setHorizontalHeaderLabels({"Tarih", "Müşteri", "Satış", "Ödeme", "Son Ödeme"});
    table_->setAccessibleName("Yedekler");
    table_->verticalHeader()->hide();
    table_->setSelectionBehavior(QAbstractItemView::SelectRows);
    table_->setSelectionMode(QAbstractItemView::SingleSelection);
    table_->setEditTriggers(QAbstractItemView::NoEditTriggers);
    table_->setTabKeyNavigation(false);
    table_->setShowGrid(false);
    table_->setAlternatingRowColors(true);
    table_->horizontalHeader()->setStretchLastSection(true);
    table_->horizontalHeader()->setHighlightSections(false);
    for (const int column : {0, 4})
        table_->setColumnWidth(column, scaled(150));
    for (int row = 0; row < table_->rowCount(); ++row)
        showRow(row, {timeOf(names_[static_cast<std::size_t>(row)]), "…"});
    table_->setCurrentCell(0, 0);
}

// A backup that cannot be read stays in the list: its absence would be a riddle.
void RestoreDialog::readAll() {
    for (std::size_t i = 0; i < names_.size() && !stopped_; ++i) {
        QStringList cells{timeOf(names_[i])};
        try {
            const auto file = openBooksToRead((std::filesystem::path(folder_) / names_[i]).string(),
                                              std::chrono::seconds(1));
            const backup::Picture picture = backup::pictureOf(*file);
            for (const char* table : {"MUSTKAYIT", "ISLEMNOTABLO", "TAKSITODENEN"})
                cells << count(picture, table);
            cells << QString::fromStdString(backup::shownDate(picture.newestPayment)).left(16);
        } catch (const store::StoreError&) {
            cells << "okunamıyor";
        }
        QMetaObject::invokeMethod(
            this, [this, row = static_cast<int>(i), cells] { showRow(row, cells); }, Qt::QueuedConnection);
    }
}

void RestoreDialog::showRow(int row, const QStringList& cells) {
    for (int column = 0; column < cells.size(); ++column) {
        auto* item = new QTableWidgetItem(cells[column]);
        if (column > 0 && column < 4) item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        table_->setItem(row, column, item);
    }
}

} // namespace veldona
