#include "ui/tightgrid.h"

#include <algorithm>
#include <utility>

#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QVariant>
#include <QWidget>

#include "ui/housestyle.h"

namespace veldona {

TightGrid::TightGrid(QWidget& window) : QObject(&window), window_(window) {
    for (auto* each : window.findChildren<QWidget*>()) {
        const QStringList cell = each->property("tightCell").toString().split(' ', Qt::SkipEmptyParts);
        auto* grid = qobject_cast<QGridLayout*>(each->parentWidget()->layout());
        if (cell.size() != 4 || !grid) continue;
        Cell drawn;
        grid->getItemPosition(grid->indexOf(each), &drawn.row, &drawn.column, &drawn.rows, &drawn.columns);
        places_.push_back(
            {each, grid, drawn, {cell[0].toInt(), cell[1].toInt(), cell[2].toInt(), cell[3].toInt()}});
    }
    for (auto* each : window.findChildren<QLabel*>())
        if (each->property("role").toString() == "head") heads_.push_back(each);
    if (!places_.empty()) window.installEventFilter(this);
}

// The window may be made as small as the narrow arrangement, which its layout, drawn wide, would not allow.
void TightGrid::follow() {
    if (places_.empty()) return;
    arrange(true);
    window_.setMinimumWidth(neededWidth());
    arrange(false);
    roomyWidth_ = neededWidth();
    fit();
}

bool TightGrid::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Resize || event->type() == QEvent::LayoutRequest) fit();
    return QObject::eventFilter(watched, event);
}

// What a sale on show brings may need more than was measured; the measure grows, so that nothing flutters.
void TightGrid::fit() {
    if (!tight_) roomyWidth_ = std::max(roomyWidth_, neededWidth());
    arrange(window_.width() < roomyWidth_);
}

void TightGrid::arrange(bool tight) {
    if (tight == std::exchange(tight_, tight)) return;
    for (const Place& each : places_)
        each.grid->removeWidget(each.widget);
    for (const Place& each : places_) {
        const Cell& to = tight ? each.tight : each.roomy;
        each.grid->addWidget(each.widget, to.row, to.column, to.rows, to.columns);
    }
    for (QLabel* each : heads_) {
        each->setWordWrap(tight);
        QSizePolicy policy = each->sizePolicy();
        policy.setHeightForWidth(false); // or the column would ask for height that its list should have
        each->setSizePolicy(policy);
        each->setMinimumHeight(tight ? 2 * each->fontMetrics().lineSpacing() + scaled(8) : 0);
    }
    window_.layout()->invalidate();
}

int TightGrid::neededWidth() const {
    window_.layout()->activate();
    return window_.layout()->totalMinimumSize().width();
}

} // namespace veldona
