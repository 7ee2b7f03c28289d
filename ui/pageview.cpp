#include "ui/pageview.h"

#include <algorithm>

#include <QKeyEvent>
#include <QPainter>
#include <QScrollBar>
#include <QWheelEvent>

#include "ui/housestyle.h"
#include "ui/pagepainter.h"

namespace veldona {

namespace {

constexpr int kEdge = 14; // between page and window, at scale 1
constexpr double kMillimetresPerInch = 25.4;
const QColor kDesk(0xd9, 0xdf, 0xe6);
const QColor kShadow(0xb4, 0xbe, 0xc9);
const QColor kMark(0xff, 0xd5, 0x4f, 0x90);
const QColor kMarkBorder(0xe0, 0x8a, 0x00);

} // namespace

PageView::PageView(QWidget* parent) : QAbstractScrollArea(parent) {
    setFocusPolicy(Qt::StrongFocus);
    viewport()->setAttribute(Qt::WA_OpaquePaintEvent);
    setMinimumSize(240, 180);
}

void PageView::setDocument(const report::Document* document) {
    document_ = document;
    arrange();
}

void PageView::showPage(int page) {
    if (page == page_) return;
    page_ = page;
    marked_.reset();
    arrange();
    verticalScrollBar()->setValue(0);
}

void PageView::setZoom(Fit fit, double percent) {
    fit_ = fit;
    percent_ = percent;
    arrange();
}

void PageView::mark(std::optional<std::size_t> item) {
    const bool isNew = item && item != marked_;
    marked_ = item;
    viewport()->update();
    if (isNew) reveal();
}

void PageView::setNote(const QString& note) {
    note_ = note;
    viewport()->update();
}

double PageView::dotsPerMillimetre() const {
    if (fit_ == Fit::Scale || !document_) return percent_ / 100 * logicalDpiX() / kMillimetresPerInch;
    // The room is measured with the scroll bar of the height in place, so that showing it changes nothing.
    const int edges = 2 * scaled(kEdge);
    const double width =
        std::max(50, maximumViewportSize().width() - verticalScrollBar()->sizeHint().width() - edges);
    const double byWidth = width / document_->pageWidth;
    if (fit_ == Fit::Width) return byWidth;
    return std::min(byWidth, std::max(50, maximumViewportSize().height() - edges) / document_->pageHeight);
}

const report::Page* PageView::page() const {
    if (!document_ || page_ < 0 || page_ >= static_cast<int>(document_->pages.size())) return nullptr;
    return &document_->pages[static_cast<std::size_t>(page_)];
}

QSizeF PageView::pageSize() const {
    if (!document_) return {};
    return QSizeF(document_->pageWidth, document_->pageHeight) * dotsPerMillimetre();
}

QPointF PageView::corner() const {
    const QSizeF size = pageSize();
    const double edge = scaled(kEdge);
    const double x = std::max(edge, (viewport()->width() - size.width()) / 2);
    const double y = std::max(edge, (viewport()->height() - size.height()) / 2);
    return {x - horizontalScrollBar()->value(), y - verticalScrollBar()->value()};
}

void PageView::arrange() {
    const QSize whole = pageSize().toSize() + QSize(2, 2) * scaled(kEdge);
    const QSize room = viewport()->size();
    horizontalScrollBar()->setRange(0, std::max(0, whole.width() - room.width()));
    verticalScrollBar()->setRange(0, std::max(0, whole.height() - room.height()));
    horizontalScrollBar()->setPageStep(room.width());
    verticalScrollBar()->setPageStep(room.height());
    horizontalScrollBar()->setSingleStep(scaled(24));
    verticalScrollBar()->setSingleStep(scaled(24));
    viewport()->update();
}

// The marked item a third down from the top, and its beginning in sight.
void PageView::reveal() {
    const report::Page* shown = page();
    if (!shown || !marked_ || *marked_ >= shown->items.size()) return;
    const QRectF place = placeOf(shown->items[*marked_]);
    const double dots = dotsPerMillimetre();
    const int edge = scaled(kEdge);
    const auto top = static_cast<int>(place.top() * dots) + edge;
    const auto left = static_cast<int>(place.left() * dots) + edge;
    QScrollBar& down = *verticalScrollBar();
    QScrollBar& across = *horizontalScrollBar();
    if (top < down.value() || top + edge > down.value() + viewport()->height())
        down.setValue(top - viewport()->height() / 3);
    if (left < across.value() || left + edge > across.value() + viewport()->width())
        across.setValue(left - viewport()->width() / 3);
}

void PageView::paintEvent(QPaintEvent*) {
    QPainter painter(viewport());
    painter.setRenderHints(QPainter::Antialiasing | QPainter::TextAntialiasing);
    painter.fillRect(viewport()->rect(), kDesk);
    if (const report::Page* shown = page()) {
        const QRectF sheet(corner(), pageSize());
        painter.fillRect(sheet.translated(scaled(2), scaled(3)), kShadow);
        painter.fillRect(sheet, Qt::white);
        painter.save();
        painter.translate(sheet.topLeft());
        if (marked_ && *marked_ < shown->items.size()) {
            const double dots = dotsPerMillimetre();
            const QRectF place = placeOf(shown->items[*marked_]);
            painter.setPen(kMarkBorder);
            painter.setBrush(kMark);
            painter.drawRect(QRectF(place.topLeft() * dots, place.size() * dots).adjusted(-2, -1, 2, 1));
        }
        paintPage(painter, *shown, dotsPerMillimetre());
        painter.restore();
    }
    if (note_.isEmpty()) return;
    const QRect words = painter.fontMetrics().boundingRect(note_).adjusted(-10, -5, 10, 5);
    const QRect plate(QPoint(viewport()->width() - words.width() - scaled(kEdge), scaled(kEdge)),
                      words.size());
    painter.setPen(kMarkBorder);
    painter.setBrush(QColor(0xff, 0xf3, 0xc4));
    painter.drawRoundedRect(plate, 4, 4);
    painter.setPen(QColor(0x3a, 0x25, 0x00));
    painter.drawText(plate, Qt::AlignCenter, note_);
}

void PageView::resizeEvent(QResizeEvent*) {
    arrange();
}

bool PageView::scrollPast(int direction) {
    const QScrollBar& bar = *verticalScrollBar();
    if (bar.value() != (direction > 0 ? bar.maximum() : bar.minimum())) return false;
    if (onTurn) onTurn(direction);
    return true;
}

void PageView::wheelEvent(QWheelEvent* event) {
    const int turned = event->angleDelta().y();
    if (turned != 0 && event->modifiers() == Qt::NoModifier && scrollPast(turned < 0 ? 1 : -1)) {
        event->accept();
        return;
    }
    QAbstractScrollArea::wheelEvent(event);
}

void PageView::keyPressEvent(QKeyEvent* event) {
    if (event->key() == Qt::Key_Down && scrollPast(1)) return;
    if (event->key() == Qt::Key_Up && scrollPast(-1)) return;
    QAbstractScrollArea::keyPressEvent(event);
}

} // namespace veldona
