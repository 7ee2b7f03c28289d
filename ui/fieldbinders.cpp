// What is read and typed: labels, texts, combos, dates, pages.
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QTextBrowser>

#include "platform/controls/controls.h"
#include "platform/controls/forms.h"
#include "platform/controls/lists.h"
#include "platform/controls/userinput.h"
#include "ui/binder.h"
#include "ui/datefield.h"
#include "ui/formwindow.h"

namespace veldona {

namespace {

// The double click's own event; the click before it has been told already.
void raiseDblClick(Control& control) {
    control.form().forms().dispatch([&control] {
        if (const auto handler = control.onDblClick) handler();
    });
}

class LabelBinder : public BinderOf<Label, QLabel> {
public:
    LabelBinder(FormWindow& window, Label& label, QLabel& widget) : BinderOf(window, label, widget) {
        widget.setTextFormat(Qt::PlainText);
        QSizePolicy policy = widget.sizePolicy();
        policy.setRetainSizeWhenHidden(true);
        widget.setSizePolicy(policy);
    }
    void refresh() override {
        Binder::refresh();
        const QString text = view.buddy() ? wordsOf(bound) : toQt(bound.caption()).trimmed();
        if (text != view.text()) view.setText(text);
    }
    void mouseReleased() override {
        if (bound.onClick) act([this] { user::click(bound); });
    }
    void doubleClicked() override {
        if (bound.onDblClick) act([this] { raiseDblClick(bound); });
    }
};

// The caret that the operator moves is told to the model, without an event: handlers ask where it stands.
template <class TextControl> void followCaret(QLineEdit& edit, FormWindow& window, TextControl& control) {
    const auto tell = [&edit, &window, &control] {
        if (!window.listens()) return;
        const bool isSelected = edit.hasSelectedText();
        control.select(isSelected ? edit.selectionStart() : edit.cursorPosition(),
                       static_cast<int>(edit.selectedText().size()));
    };
    QObject::connect(&edit, &QLineEdit::selectionChanged, &edit, tell);
    QObject::connect(&edit, &QLineEdit::cursorPositionChanged, &edit, tell);
}

class TextBinder : public BinderOf<TextBox, QLineEdit> {
public:
    TextBinder(FormWindow& itsWindow, TextBox& text, QLineEdit& widget) : BinderOf(itsWindow, text, widget) {
        QObject::connect(&widget, &QLineEdit::textEdited, &widget, [this](const QString& edited) {
            if (!listens()) return;
            act([&] { user::textEdited(bound, fromQt(edited), view.cursorPosition()); });
        });
        followCaret(widget, itsWindow, text);
    }
    void refresh() override {
        Binder::refresh();
        view.setReadOnly(bound.locked);
        if (!bound.placeholder.empty()) view.setPlaceholderText(toQt(bound.placeholder));
        view.setMaxLength(bound.maxLength > 0 ? bound.maxLength : 32767);
        if (const QString text = toQt(bound.text()); text != view.text()) view.setText(text);
        showSelection(view, bound.selStart(), bound.selLength());
    }
    void mouseReleased() override {
        if (bound.onClick) act([this] { user::click(bound); });
    }
    void doubleClicked() override {
        if (bound.onDblClick) act([this] { raiseDblClick(bound); });
    }
};

class ComboBinder : public BinderOf<ComboBox, QComboBox> {
public:
    ComboBinder(FormWindow& itsWindow, ComboBox& combo, QComboBox& widget)
        : BinderOf(itsWindow, combo, widget) {
        widget.setEditable(combo.style() == ComboBox::Style::Free);
        widget.setInsertPolicy(QComboBox::NoInsert);
        QObject::connect(&widget, &QComboBox::activated, &widget, [this](int row) {
            if (listens()) act([&] { user::rowSelected(bound, row); });
        });
        QLineEdit* edit = widget.lineEdit();
        if (!edit) return;
        widget.setCompleter(nullptr);
        QObject::connect(edit, &QLineEdit::textEdited, edit, [this](const QString& edited) {
            if (listens()) act([&] { user::textEdited(bound, fromQt(edited)); });
        });
        followCaret(*edit, itsWindow, combo);
    }
    void refresh() override {
        Binder::refresh();
        if (!showsEntries()) {
            view.clear();
            for (int row = 0; row < bound.count(); ++row)
                view.addItem(toQt(bound.list(row)));
        }
        if (view.currentIndex() != bound.listIndex()) view.setCurrentIndex(bound.listIndex());
        QLineEdit* edit = view.lineEdit();
        if (!edit) return;
        if (const QString text = toQt(bound.text()); text != edit->text()) edit->setText(text);
        showSelection(*edit, bound.selStart(), bound.selLength());
    }

private:
    [[nodiscard]] bool showsEntries() const {
        if (view.count() != bound.count()) return false;
        for (int row = 0; row < bound.count(); ++row)
            if (view.itemText(row) != toQt(bound.list(row))) return false;
        return true;
    }
};

class DateBinder : public BinderOf<DateBox, DateField> {
public:
    DateBinder(FormWindow& itsWindow, DateBox& date, DateField& widget) : BinderOf(itsWindow, date, widget) {
        widget.setCheckable(date.style() == DateBox::Style::PickerWithCheck);
        widget.setClearable(date.style() == DateBox::Style::Combo);
        widget.onPicked = [this](std::optional<QDate> day) {
            if (!listens()) return;
            const Value value = day ? Value(DateTime::of(day->year(), day->month(), day->day())) : Value();
            act([&] { user::pickDate(bound, value); });
        };
        widget.today = [this] {
            const DateTime day = window().today();
            return QDate(day.year(), day.month(), day.day());
        };
        widget.onChecked = [this](bool on) {
            if (listens()) act([&] { user::setMark(bound, on, window().today()); });
        };
    }
    void refresh() override {
        Binder::refresh();
        std::optional<QDate> day;
        if (!bound.value().isNull()) {
            const auto& date = bound.value().get<DateTime>();
            day = QDate(date.year(), date.month(), date.day());
        }
        view.setDate(day);
        view.setReadOnly(bound.locked);
    }
    [[nodiscard]] QWidget* focusTarget() const override { return &view.edit(); }
};

class WebBinder : public BinderOf<WebPane, QTextBrowser> {
public:
    using BinderOf::BinderOf;
    void refresh() override {
        Binder::refresh();
        if (bound.html() == shown_) return;
        shown_ = bound.html();
        view.setHtml(toQt(shown_));
    }

private:
    std::string shown_;
};

} // namespace

std::unique_ptr<Binder> bindField(FormWindow& window, Control& control, QWidget& widget) {
    for (const auto bind : {bindAs<LabelBinder>, bindAs<TextBinder>, bindAs<ComboBinder>, bindAs<DateBinder>,
                            bindAs<WebBinder>})
        if (auto made = bind(window, control, widget)) return made;
    return nullptr;
}

} // namespace veldona
