// Shows one page of a report, as large as the zoom asks, and marks an item of it.
//
// It keeps no copy of the document, which must stand as long as it is set.
#pragma once

#include <functional>
#include <optional>

#include <QAbstractScrollArea>
#include <QString>

#include "platform/report/page.h"

namespace veldona {

class PageView : public QAbstractScrollArea {
    Q_OBJECT

public:
    enum class Fit { Scale, Width, Page };

    explicit PageView(QWidget* parent = nullptr);

    // The operator scrolled past the end (1) or the start (-1) of the page.
    std::function<void(int direction)> onTurn;

    void setDocument(const report::Document* document); // nullptr: none
    [[nodiscard]] const report::Document* document() const { return document_; }
    void showPage(int page); // from 0
    void setZoom(Fit fit, double percent = 100);
    // The marked item of the page on show; it is scrolled into sight where it is another one than before.
    void mark(std::optional<std::size_t> item);
    // A short word over the page; empty: none.
    void setNote(const QString& note);

    [[nodiscard]] double dotsPerMillimetre() const;

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    [[nodiscard]] const report::Page* page() const;
    [[nodiscard]] QSizeF pageSize() const; // in dots
    [[nodiscard]] QPointF corner() const;  // the page's, in the viewport
    void arrange();
    void reveal();
    [[nodiscard]] bool isAtEnd(int direction) const;
    void paintMark(QPainter& painter, const report::Page& shown) const;
    void paintNote(QPainter& painter) const;

    const report::Document* document_ = nullptr;
    int page_ = 0;
    Fit fit_ = Fit::Width;
    double percent_ = 100;
    std::optional<std::size_t> marked_;
    QString note_;
    int pastEnd_ = 0; // how far the wheel has turned past the end of the page
};

} // namespace veldona
