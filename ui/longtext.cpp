#include "ui/longtext.h"

#include <QGridLayout>
#include <QLabel>
#include <QMessageBox>
#include <QScreen>
#include <QScrollArea>

#include "ui/housestyle.h"

namespace veldona {

namespace {

constexpr int kWidth = 560; // of a text that is scrolled

int needed(QMessageBox& box) {
    box.ensurePolished();
    int height = 0;
    for (const char* part : {"qt_msgbox_label", "qt_msgbox_informativelabel"})
        if (auto* label = box.findChild<QLabel*>(part))
            height += std::max(label->sizeHint().height(), label->heightForWidth(scaled(kWidth)));
    return height;
}

} // namespace

void keepOnScreen(QMessageBox& box) {
    const int room = box.screen()->availableSize().height() * 3 / 5;
    auto* grid = qobject_cast<QGridLayout*>(box.layout());
    if (!grid || needed(box) <= room) return;
    auto* words =
        new QLabel(box.text() + (box.informativeText().isEmpty() ? "" : "\n\n") + box.informativeText());
    words->setTextFormat(Qt::PlainText);
    words->setWordWrap(true);
    words->setTextInteractionFlags(Qt::TextSelectableByMouse);
    words->setAlignment(Qt::AlignTop);
    auto* area = new QScrollArea(&box);
    area->setWidget(words);
    area->setWidgetResizable(true);
    area->setFocusPolicy(Qt::StrongFocus); // for the arrows
    area->setAccessibleName(box.windowTitle());
    area->setMinimumSize(scaled(kWidth), room);
    auto* label = box.findChild<QLabel*>("qt_msgbox_label");
    if (auto* more = box.findChild<QLabel*>("qt_msgbox_informativelabel")) more->hide();
    delete grid->replaceWidget(label, area);
    label->hide();
}

} // namespace veldona
