#include "ui/pageview.h"

#include <algorithm>
#include <cstdlib>

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
const QColor kMark(0xff, 0xe0, 0x82);
const QColor kMarkBorder(0xe0, 0x8a, 0x00);
const QColor kNote(0xff, 0xf3, 0xc4);
const QColor kNoteWords(0x3a, 0x25, 0x00);
constexpr int kWheelStep = 120; // what one notch of a wheel turns

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
        painter.translate(sheet.topLeft());
        paintPage(painter, *shown, dotsPerMillimetre());
        paintMark(painter, *shown);
        painter.resetTransform();
    }
    paintNote(painter);
}

// Over the page, as a marker pen would: what is behind it stays readable.
void PageView::paintMark(QPainter& painter, const report::Page& shown) const {
    if (!marked_ || *marked_ >= shown.items.size()) return;
    const double dots = dotsPerMillimetre();
    const QRectF place = placeOf(shown.items[*marked_]);
    painter.save();
    painter.setCompositionMode(QPainter::CompositionMode_Multiply);
    painter.setPen(kMarkBorder);
    painter.setBrush(kMark);
    painter.drawRect(QRectF(place.topLeft() * dots, place.size() * dots).adjusted(-2, -1, 2, 1));
    painter.restore();
}

void PageView::paintNote(QPainter& painter) const {
    if (note_.isEmpty()) return;
    const QRect words = painter.fontMetrics().boundingRect(note_).adjusted(-10, -5, 10, 5);
    const QPoint corner(viewport()->width() - words.width() - scaled(kEdge), scaled(kEdge));
    const QRect plate(corner, words.size());
    painter.setPen(kMarkBorder);
    painter.setBrush(kNote);
    painter.drawRoundedRect(plate, 4, 4);
    painter.setPen(kNoteWords);
    painter.drawText(plate, Qt::AlignCenter, note_);
}

void PageView::resizeEvent(QResizeEvent*) {
    arrange();
}

bool PageView::isAtEnd(int direction) const {
    const QScrollBar& bar = *verticalScrollBar();
    return bar.value() == (direction > 0 ? bar.maximum() : bar.minimum());
}

// A touch pad tells many small turns; a page turns when they come to one notch of a wheel.
void PageView::wheelEvent(QWheelEvent* event) {
    const int turned = event->angleDelta().y();
    const int direction = turned < 0 ? 1 : -1;
    if (turned == 0 || event->modifiers() != Qt::NoModifier || !isAtEnd(direction)) {
        pastEnd_ = 0;
        return QAbstractScrollArea::wheelEvent(event);
    }
    event->accept();
    pastEnd_ = (pastEnd_ < 0) == (turned < 0) ? pastEnd_ + turned : turned;
    if (std::abs(pastEnd_) < kWheelStep) return;
    pastEnd_ = 0;
    if (onTurn) onTurn(direction);
}

// What would scroll past the end of the page turns it.
void PageView::keyPressEvent(QKeyEvent* event) {
    const bool isForward = event->key() == Qt::Key_Down || event->key() == Qt::Key_PageDown;
    const bool isBack = event->key() == Qt::Key_Up || event->key() == Qt::Key_PageUp;
    const int direction = isForward ? 1 : -1;
    if (!(isForward || isBack) || !isAtEnd(direction)) return QAbstractScrollArea::keyPressEvent(event);
    if (onTurn) onTurn(direction);
}

} // namespace veldona
