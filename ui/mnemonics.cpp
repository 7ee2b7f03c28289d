#include "ui/mnemonics.h"

#include <set>

#include <QAbstractButton>
#include <QKeySequence>
#include <QLabel>
#include <QList>
#include <QVariant>

#include "ui/binder.h"
#include "ui/floatingpanel.h"

namespace veldona {

namespace {

constexpr const char* kDrawn = "drawnLetter"; // the words with the mark that they were drawn with

bool hasLetter(const QString& words) {
    return !QKeySequence::mnemonic(words).isEmpty();
}

QString withoutLetter(const QString& words) {
    return withoutMnemonic(words).replace("&", "&&");
}

template <class Worded> void share(Worded& widget, std::set<QString>& taken) {
    const QString shown = widget.text();
    if (hasLetter(shown)) widget.setProperty(kDrawn, shown);
    const QString drawn = widget.property(kDrawn).toString();
    // No letter, or other words by now.
    if (drawn.isEmpty() || (shown != drawn && shown != withoutLetter(drawn))) return;
    const bool isFree =
        widget.isVisibleTo(widget.window()) && taken.insert(QKeySequence::mnemonic(drawn).toString()).second;
    const QString wanted = isFree ? drawn : withoutLetter(drawn);
    if (wanted != shown) widget.setText(wanted);
}

void shareAmong(const QList<QWidget*>& widgets, std::set<QString>& taken) {
    for (QWidget* each : widgets) {
        if (auto* button = qobject_cast<QAbstractButton*>(each)) share(*button, taken);
        auto* label = qobject_cast<QLabel*>(each);
        if (label && label->buddy()) share(*label, taken);
    }
}

} // namespace

void shareLetters(QWidget& window) {
    std::set<QString> taken;
    QList<QWidget*> below;
    const auto panels = window.findChildren<FloatingPanel*>(QString(), Qt::FindDirectChildrenOnly);
    // The one raised last is the last child.
    for (auto panel = panels.rbegin(); panel != panels.rend(); ++panel)
        if ((*panel)->isVisibleTo(&window)) shareAmong((*panel)->findChildren<QWidget*>(), taken);
    for (QWidget* each : window.findChildren<QWidget*>()) {
        bool isInPanel = false;
        for (const QWidget* panel : panels)
            isInPanel = isInPanel || panel->isAncestorOf(each);
        if (!isInPanel) below << each;
    }
    shareAmong(below, taken);
}

} // namespace veldona
