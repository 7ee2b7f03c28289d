#include "ui/spokennames.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListView>

#include "ui/binder.h"
#include "ui/datefield.h"
#include "ui/parallellists.h"

namespace veldona {

namespace {

void name(QWidget& control, const QString& words) {
    if (control.accessibleName().isEmpty() && !words.isEmpty()) control.setAccessibleName(words);
}

QString groupOf(const QWidget& widget) {
    for (const QWidget* holder = widget.parentWidget(); holder; holder = holder->parentWidget())
        if (const auto* group = qobject_cast<const QGroupBox*>(holder))
            return withoutMnemonic(group->title()).trimmed();
    return {};
}

QString labelOf(const QWidget& window, const QWidget& control) {
    for (const auto* label : window.findChildren<QLabel*>())
        if (label->buddy() == &control) return withoutMnemonic(label->text()).trimmed();
    return {};
}

// The keyboard is in the field's parts, the label leads to the whole.
void nameParts(const QWidget& window, DateField& field) {
    const QString words = field.accessibleName().isEmpty() ? labelOf(window, field) : field.accessibleName();
    for (auto* part : field.findChildren<QLineEdit*>())
        name(*part, words);
    for (auto* part : field.findChildren<QCheckBox*>())
        name(*part, words.isEmpty() ? words : words + " var");
    for (auto* part : field.findChildren<QAbstractButton*>())
        name(*part, words.isEmpty() ? words : words + ", takvim");
}

void nameColumns(ParallelLists& table) {
    const auto* grid = qobject_cast<QGridLayout*>(table.layout());
    const QString group = groupOf(table);
    for (QListView* list : table.lists()) {
        int row = 0, column = 0, rows = 0, columns = 0;
        grid->getItemPosition(grid->indexOf(list), &row, &column, &rows, &columns);
        const QLayoutItem* above = grid->itemAtPosition(0, column);
        const auto* head = above ? qobject_cast<QLabel*>(above->widget()) : nullptr;
        const QString words = head ? head->text().trimmed() : QString();
        name(*list, group.isEmpty() || words.isEmpty() ? group + words : group + ", " + words);
    }
}

} // namespace

void nameControls(QWidget& window) {
    for (auto* field : window.findChildren<DateField*>())
        nameParts(window, *field);
    for (auto* table : window.findChildren<ParallelLists*>())
        nameColumns(*table);
    for (auto* rows : window.findChildren<QAbstractItemView*>())
        if (labelOf(window, *rows).isEmpty()) name(*rows, groupOf(*rows));
}

} // namespace veldona
