// A day, or none: a text typed as dd/MM/yyyy, a calendar to pick from, and, where asked for, a check box.
//
// Digits are enough: the slashes come by themselves. A day counts as entered when its text is whole; what is
// left unreadable when the field is left goes back to the day before. Unchecked, the field holds none and
// shows its last day. Space takes the check away and puts it back.
#pragma once

#include <functional>
#include <optional>

#include <QDate>
#include <QWidget>

class QCheckBox;
class QLineEdit;
class QToolButton;

namespace veldona {

class DateField : public QWidget {
    Q_OBJECT

public:
    explicit DateField(QWidget* parent = nullptr);

    std::function<void(std::optional<QDate>)> onPicked; // by the operator, whole
    std::function<void(bool)> onChecked;                // the check box, by the operator
    std::function<QDate()> today;                       // the program's day, where the field holds none

    void setCheckable(bool checkable);
    void setReadOnly(bool readOnly);
    void setClearable(bool clearable) { clearable_ = clearable; } // may the text be emptied?
    [[nodiscard]] std::optional<QDate> date() const;
    void
    setDate(std::optional<QDate> date); // tells nobody; where it is the day already, a text being typed stays
    [[nodiscard]] QLineEdit& edit() { return *edit_; }
    [[nodiscard]] QCheckBox& check() { return *check_; }

    void openCalendar();

    // dd/MM/yyyy, also d.M.yy or ddMMyyyy; nothing where it is no day.
    [[nodiscard]] static std::optional<QDate> read(const QString& text);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
    void changeEvent(QEvent* event) override;

private:
    void keepReadable();
    [[nodiscard]] QPoint placeOf(const QSize& calendar) const;
    void typed(const QString& text);
    void leave();
    void pick(std::optional<QDate> date);
    void showState();
    void showDate(std::optional<QDate> date);

    QCheckBox* check_;
    QLineEdit* edit_;
    QToolButton* button_;
    std::optional<QDate> date_; // the last one entered, also while unchecked
    bool checkable_ = false;
    bool clearable_ = false;
    bool readOnly_ = false;
    qsizetype typedLength_ = 0;
};

} // namespace veldona
