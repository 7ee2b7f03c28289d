#include "ui/binder.h"

#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QStackedWidget>
#include <QStyle>
#include <QVariant>

#include "platform/controls/controls.h"
#include "ui/formwindow.h"
#include "ui/reportviewbinder.h"

namespace veldona {

namespace {

const char* toneOf(const Control& control) {
    if (control.foreColor() == Colour::CoveredByPayments) return "covered";
    if (control.backColor() == Colour::FocusedBackground) return "focused";
    if (control.backColor() == Colour::Unusual) return "unusual";
    return "";
}

void setTone(QWidget& widget, const char* tone) {
    if (widget.property("tone").toString() == QLatin1String(tone)) return;
    widget.setProperty("tone", QString::fromLatin1(tone));
    widget.style()->unpolish(&widget);
    widget.style()->polish(&widget);
}

// The page of a tab is shown and hidden by its tab.
bool isTabPage(const QWidget& widget) {
    return qobject_cast<const QStackedWidget*>(widget.parentWidget()) != nullptr;
}

} // namespace

Binder::Binder(FormWindow& window, Control& control, QWidget* widget)
    : window_(window), control_(control), widget_(widget) {}

Binder::~Binder() = default;

void Binder::refresh() {
    if (!widget_) return;
    if (widget_->isHidden() == control_.visible() && !isTabPage(*widget_))
        widget_->setVisible(control_.visible());
    widget_->setEnabled(control_.enabled());
    // A tool tip is a text; one that looks like markup is shown as it is written.
    if (!control_.toolTip().empty()) {
        const QString tip = toQt(control_.toolTip());
        widget_->setToolTip(Qt::mightBeRichText(tip) ? tip.toHtmlEscaped() : tip);
    }
    setTone(*focusTarget(), toneOf(control_));
}

void Binder::act(const std::function<void()>& event) {
    window_.act(control_, event);
}

bool Binder::listens() const {
    return window_.listens();
}

std::unique_ptr<Binder> makeBinder(FormWindow& window, Control& control, QWidget& widget) {
    for (const auto bind : {bindReport, bindField, bindButton, bindHolder, bindRows})
        if (auto made = bind(window, control, widget)) return made;
    return nullptr;
}

std::unique_ptr<Binder> bindUndrawn(FormWindow& window, Control& control) {
    auto made = bindTimer(window, control);
    return made ? std::move(made) : bindMenu(window, control);
}

QString toQt(const std::string& text) {
    return QString::fromStdString(text);
}

std::string fromQt(const QString& text) {
    return text.toStdString();
}

QString withoutMnemonic(QString text) {
    text.replace("&&", QChar(1)).remove('&');
    return text.replace(QChar(1), "&");
}

QString wordsOf(const Captioned& control) {
    return toQt(control.words()).trimmed();
}

void alignCaptions(const QWidget& window) {
    for (auto* each : window.findChildren<QLabel*>())
        each->setText(each->text().trimmed());
    for (auto* each : window.findChildren<QGroupBox*>())
        each->setTitle(each->title().trimmed());
    for (auto* each : window.findChildren<QAbstractButton*>())
        each->setText(each->text().trimmed());
}

void showSelection(QLineEdit& edit, int start, int length) {
    const bool isSelected = edit.hasSelectedText();
    const int shownStart = isSelected ? edit.selectionStart() : edit.cursorPosition();
    const int shownLength = isSelected ? static_cast<int>(edit.selectedText().size()) : 0;
    if (shownStart == start && shownLength == length) return;
    if (length > 0)
        edit.setSelection(start, length);
    else
        edit.setCursorPosition(start);
}

} // namespace veldona
