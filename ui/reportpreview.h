// The preview that banded reports bring along, and the desk that shows and prints all reports in windows.
#pragma once

#include <QDialog>

#include "platform/report/desk.h"

class QAction;
class QComboBox;
class QLabel;
class QToolBar;

namespace veldona {

class PageView;
class WindowHost;

class ReportPreview : public QDialog {
    Q_OBJECT

public:
    // The document must outlive it.
    ReportPreview(WindowHost& host, const report::Document& document, QWidget* parent = nullptr);

private:
    void addTools(QToolBar& bar);
    void addZoom(QToolBar& bar);
    void showPage(int page); // beyond the ends: the first or the last
    void applyZoom(const QString& text);

    WindowHost& host_;
    const report::Document& document_;
    PageView* pages_;
    QLabel* place_ = nullptr;
    QComboBox* zoom_ = nullptr;
    QAction* first_ = nullptr;
    QAction* previous_ = nullptr;
    QAction* next_ = nullptr;
    QAction* last_ = nullptr;
    int page_ = 0;
};

// The viewer's window saves as PDF, too. That is the window's own: no screen and no console knows of it.
void offerPdf(WindowHost& host, QWidget& viewer);

class WindowReportDesk : public report::ReportDesk {
public:
    explicit WindowReportDesk(WindowHost& host) : host_(host) {}
    void preview(const report::Document& document) override;
    void opened(const report::Document&) override {} // the viewer's window shows it
    bool print(const report::Document& document) override;
    void writeFile(const report::Document& document, const std::string& nativePath) override;

private:
    WindowHost& host_;
};

} // namespace veldona
