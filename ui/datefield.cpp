#include "ui/datefield.h"

#include <algorithm>
#include <utility>

#include <QCalendarWidget>
#include <QCheckBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QRegularExpression>
#include <QScreen>
#include <QStyle>
#include <QTextCharFormat>
#include <QToolButton>
#include <QVariant>

#include "ui/housestyle.h"

namespace veldona {

namespace {

const QString kFormat = QStringLiteral("dd/MM/yyyy");
const QRegularExpression kParted("^\\s*(\\d{1,2})[/.,-](\\d{1,2})[/.,-](\\d{4}|\\d{2})\\s*$");
const QRegularExpression kDigits("^\\s*(\\d{2})(\\d{2})(\\d{4}|\\d{2})\\s*$");
// Two digits below this are of this century.
constexpr int kCenturyBorder = 30;

} // namespace

DateField::DateField(QWidget* parent)
    : QWidget(parent), check_(new QCheckBox(this)), edit_(new QLineEdit(this)),
      button_(new QToolButton(this)) {
    auto* row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(2);
    row->addWidget(check_);
    row->addWidget(edit_, 1);
    row->addWidget(button_);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    check_->hide();
    check_->setFocusPolicy(Qt::ClickFocus);
    button_->setText("▼");
    button_->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    button_->setFocusPolicy(Qt::NoFocus);
    button_->setToolTip("Takvim (Alt+Aşağı)");
    edit_->setPlaceholderText("gg/aa/yyyy");
    keepReadable();
    setFocusProxy(edit_);
    setFocusPolicy(Qt::ClickFocus); // without one the letter of its label would pass it over
    edit_->installEventFilter(this);
    connect(edit_, &QLineEdit::textEdited, this, [this](const QString& text) { typed(text); });
    connect(button_, &QToolButton::clicked, this, [this] { openCalendar(); });
    connect(check_, &QCheckBox::clicked, this, [this](bool on) {
        if (onChecked) onChecked(on);
    });
}

// A whole date has room in it, whatever the letters.
void DateField::keepReadable() {
    edit_->ensurePolished();
    edit_->setMinimumWidth(edit_->fontMetrics().horizontalAdvance("00/00/0000") + scaled(14));
    button_->setFixedWidth(scaled(20));
}

void DateField::changeEvent(QEvent* event) {
    QWidget::changeEvent(event);
    if (event->type() == QEvent::FontChange || event->type() == QEvent::StyleChange) keepReadable();
}

void DateField::setCheckable(bool checkable) {
    checkable_ = checkable;
    check_->setVisible(checkable);
    showState();
}

void DateField::setReadOnly(bool readOnly) {
    readOnly_ = readOnly;
    button_->setVisible(!readOnly);
    edit_->setFocusPolicy(readOnly ? Qt::ClickFocus : Qt::StrongFocus);
    showState();
}

// Unchecked it is passive to look at, and still takes the keyboard, so that it can be checked by it.
void DateField::showState() {
    const bool unset = checkable_ && !check_->isChecked();
    edit_->setReadOnly(readOnly_ || unset);
    button_->setEnabled(!unset);
    if (edit_->property("unset").toBool() == unset) return;
    edit_->setProperty("unset", unset);
    edit_->style()->unpolish(edit_);
    edit_->style()->polish(edit_);
}

std::optional<QDate> DateField::date() const {
    return checkable_ && !check_->isChecked() ? std::nullopt : date_;
}

void DateField::setDate(std::optional<QDate> date) {
    if (checkable_) {
        check_->setChecked(date.has_value());
        showState();
        if (!date) return;
    }
    if (date == date_ && (edit_->hasFocus() || edit_->text() == (date ? date->toString(kFormat) : QString())))
        return;
    date_ = date;
    showDate(date);
}

void DateField::openCalendar() {
    auto* calendar = new QCalendarWidget(this);
    calendar->setWindowFlags(Qt::Popup);
    calendar->setAttribute(Qt::WA_DeleteOnClose);
    calendar->setLocale(QLocale(QLocale::Turkish, QLocale::Turkey));
    calendar->setFirstDayOfWeek(Qt::Monday);
    calendar->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    const QDate now = today ? today() : QDate::currentDate();
    QTextCharFormat marked;
    marked.setFontWeight(QFont::Bold);
    marked.setBackground(QColor("#fff3c4"));
    calendar->setDateTextFormat(now, marked);
    QTextCharFormat weekend;
    weekend.setForeground(QColor("#b3261e"));
    for (const Qt::DayOfWeek each : {Qt::Saturday, Qt::Sunday})
        calendar->setWeekdayTextFormat(each, weekend);
    calendar->setSelectedDate(date_.value_or(now));
    for (const auto& [name, arrow] :
         {std::pair("qt_calendar_prevmonth", "◀"), {"qt_calendar_nextmonth", "▶"}})
        if (auto* turn = calendar->findChild<QToolButton*>(name)) {
            turn->setIcon({});
            turn->setText(arrow);
        }
    const auto take = [this, calendar](const QDate& day) {
        calendar->close();
        pick(day);
    };
    connect(calendar, &QCalendarWidget::clicked, this, take);
    connect(calendar, &QCalendarWidget::activated, this, take);
    calendar->resize(calendar->sizeHint() + QSize(scaled(30), scaled(40)));
    calendar->move(placeOf(calendar->size()));
    calendar->show();
    calendar->setFocus();
}

// Below the field; above it where the screen ends, and never past its side.
QPoint DateField::placeOf(const QSize& calendar) const {
    const QRect room = screen()->availableGeometry();
    const QPoint below = mapToGlobal(QPoint(0, height()));
    const bool fits = below.y() + calendar.height() <= room.bottom();
    const int top = fits ? below.y() : mapToGlobal(QPoint()).y() - calendar.height();
    return {std::clamp(below.x(), room.left(), std::max(room.left(), room.right() - calendar.width())),
            std::clamp(top, room.top(), std::max(room.top(), room.bottom() - calendar.height()))};
}

std::optional<QDate> DateField::read(const QString& text) {
    QRegularExpressionMatch match = kParted.match(text);
    if (!match.hasMatch()) match = kDigits.match(text);
    if (!match.hasMatch()) return std::nullopt;
    int year = match.captured(3).toInt();
    if (match.capturedLength(3) == 2) year += year < kCenturyBorder ? 2000 : 1900;
    const QDate day(year, match.captured(2).toInt(), match.captured(1).toInt());
    return day.isValid() ? std::optional(day) : std::nullopt;
}

bool DateField::eventFilter(QObject* watched, QEvent* event) {
    if (watched == edit_ && event->type() == QEvent::FocusOut) leave();
    if (watched == edit_ && event->type() == QEvent::KeyPress) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Down && key->modifiers() == Qt::AltModifier && !edit_->isReadOnly()) {
            openCalendar();
            return true;
        }
        if (key->key() == Qt::Key_Space && checkable_ && !readOnly_) {
            check_->click();
            edit_->selectAll();
            return true;
        }
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) leave();
    }
    return QWidget::eventFilter(watched, event);
}

// A slash follows the day and the month by itself, only while the text grows at its end, so that it can be
// deleted.
void DateField::typed(const QString& text) {
    static const QRegularExpression wantsSlash("^(\\d{2}|\\d{2}/\\d{2})$");
    const bool grew = text.size() > typedLength_;
    if (grew && edit_->cursorPosition() == text.size() && wantsSlash.match(text).hasMatch())
        edit_->setText(text + '/');
    typedLength_ = edit_->text().size();
    if (typedLength_ < kFormat.size()) return;
    if (const auto day = read(edit_->text())) pick(day);
}

void DateField::leave() {
    const QString text = edit_->text().trimmed();
    if (text.isEmpty() && clearable_) {
        if (date_) pick(std::nullopt);
    } else if (const auto day = read(text); day && day != date_) {
        pick(day);
    } else {
        showDate(date_);
    }
}

void DateField::pick(std::optional<QDate> date) {
    date_ = date;
    showDate(date);
    if (onPicked) onPicked(date);
}

void DateField::showDate(std::optional<QDate> date) {
    const QString text = date ? date->toString(kFormat) : QString();
    if (text != edit_->text()) edit_->setText(text);
    typedLength_ = text.size();
}

} // namespace veldona
