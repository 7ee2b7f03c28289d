#include "apps/veldona/restoredialog.h"

#include <algorithm>
#include <chrono>

#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QTableWidget>
#include <QThread>
#include <QVBoxLayout>

#include "backup/fingerprint.h"
#include "core/bookpasswords.h"
#include "core/books.h"
#include "platform/store/dialect/storeerror.h"
#include "ui/housestyle.h"

namespace veldona {

namespace {

constexpr int kKind = 1, kFirstCount = 2, kLastPayment = 5; // columns

QStringList firstCells(const backup::Restorable& each) {
    const QString at = QString::fromStdString(each.stamp); // 2026-11-22_143005
    return {at.mid(8, 2) + '/' + at.mid(5, 2) + '/' + at.left(4) + ' ' + at.mid(11, 2) + ':' + at.mid(13, 2),
            each.isReplaced ? "Değişen defter" : "Yedek"};
}

QString count(const backup::Fingerprint& fingerprint, const char* table) {
    const auto found = fingerprint.rows.find(table);
    return QLocale(QLocale::Turkish).toString(qlonglong(found == fingerprint.rows.end() ? 0 : found->second));
}

} // namespace

RestoreDialog::RestoreDialog(QWidget* parent, const std::string& folder, std::vector<backup::Restorable> all,
                             Browse browse)
    : QDialog(parent), all_(std::move(all)), table_(new QTableWidget(static_cast<int>(all_.size()), 6)),
      file_(new QLabel(all_.empty() ? "Alınmış yedek yok: " + QString::fromStdString(folder) : QString())),
      go_(new QPushButton("Yedekten &Dön")) {
    std::reverse(all_.begin(), all_.end());
    setWindowTitle("Yedekten Dön");
    setObjectName("yedektenDon"); // by which its size and place are kept
    auto* words = new QLabel("Dönülecek &yedek:");
    words->setBuddy(table_);
    file_->setProperty("role", "hint");
    file_->setWordWrap(true);
    auto* other = new QPushButton("&Başka Dosya…");
    other->setAutoDefault(false);
    other->setToolTip("Listede olmayan bir yedek ya da defter için");
    connect(other, &QPushButton::clicked, this,
            [this, browse = std::move(browse)] { lookElsewhere(browse); });
    auto* cancel = new QPushButton("&Vazgeç");
    cancel->setDefault(true);
    go_->setAutoDefault(false);
    connect(go_, &QPushButton::clicked, this, &QDialog::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(other);
    buttons->addStretch();
    buttons->addWidget(go_);
    buttons->addWidget(cancel);
    auto* column = new QVBoxLayout(this);
    column->addWidget(words);
    column->addWidget(table_, 1);
    column->addWidget(file_);
    column->addLayout(buttons);
    connect(table_, &QTableWidget::currentCellChanged, this, [this] { showFile(); });
    go_->setEnabled(!all_.empty());
    fill();
    resize(scaled(760), scaled(420));
    reader_.reset(QThread::create([this] { readAll(); }));
    reader_->start();
}

RestoreDialog::~RestoreDialog() {
    stopped_ = true;
    reader_->wait();
}

std::optional<std::string> RestoreDialog::chosen() const {
    if (elsewhere_) return elsewhere_;
    const int row = table_->currentRow();
    if (row < 0) return std::nullopt;
    return all_[static_cast<std::size_t>(row)].file;
}

void RestoreDialog::lookElsewhere(const Browse& browse) {
    elsewhere_ = browse();
    if (elsewhere_) accept();
}

void RestoreDialog::showFile() {
    if (const auto file = chosen()) file_->setText("Dosya: " + QString::fromStdString(*file));
}

void RestoreDialog::fill() {
    table_->setHorizontalHeaderLabels({"Tarih", "Tür", "Müşteri", "Satış", "Ödeme", "Son Ödeme"});
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
    for (const int column : {0, kKind, kLastPayment})
        table_->setColumnWidth(column, scaled(140));
    for (int row = 0; row < table_->rowCount(); ++row)
        showRow(row, firstCells(all_[static_cast<std::size_t>(row)]) << "…");
    if (!all_.empty()) table_->setCurrentCell(0, 0);
}

// A backup that cannot be read stays in the list: its absence would be a riddle.
void RestoreDialog::readAll() {
    for (std::size_t i = 0; i < all_.size() && !stopped_; ++i) {
        QStringList cells = firstCells(all_[i]);
        try {
            const OpenedBooks file =
                openBooksToReadBy(store::FilePlace{all_[i].file}, std::chrono::seconds(1));
            const bool isOfNobody = file.password == deliveredPassword() && passwords::known().size() > 1;
            if (isOfNobody) cells[kKind] += ", parolasız"; // as books that have none of their own
            const backup::Fingerprint fingerprint = backup::fingerprintOf(*file.engine);
            for (const char* table : {"MUSTKAYIT", "ISLEMNOTABLO", "TAKSITODENEN"})
                cells << count(fingerprint, table);
            cells << QString::fromStdString(backup::shownDate(fingerprint.newestPayment)).left(16);
        } catch (const store::StoreError& failure) {
            const bool isOther = failure.kind() == store::StoreError::Kind::WrongPassword;
            cells << (isOther && passwords::known().size() > 1 ? "başka parola" : "okunamıyor");
        }
        QMetaObject::invokeMethod(
            this, [this, row = static_cast<int>(i), cells] { showRow(row, cells); }, Qt::QueuedConnection);
    }
}

void RestoreDialog::showRow(int row, const QStringList& cells) {
    for (int column = 0; column < cells.size(); ++column) {
        auto* item = new QTableWidgetItem(cells[column]);
        if (column >= kFirstCount && column < kLastPayment)
            item->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
        table_->setItem(row, column, item);
    }
}

} // namespace veldona
