// Reads ahead what the call list and the charts are made of, while the main screen rests: in short steps,
// none of them while the operator's hand is at keys or mouse, and with longer pauses than steps between them.
#pragma once

#include <chrono>
#include <memory>

#include <QObject>
#include <QTimer>

#include "core/session.h"
#include "daybook/shopreckoning.h"
#include "ui/host.h"

namespace veldona {

class AtRest : public QObject {
public:
    // The operator is busy with something else, `rest` after the last key.
    AtRest(WindowHost& windows, Session& session, std::shared_ptr<ShopReckoning> shop,
           std::chrono::milliseconds rest = std::chrono::milliseconds(1500));

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void step();
    [[nodiscard]] bool rests() const;

    WindowHost& windows_;
    Session& session_;
    std::shared_ptr<ShopReckoning> shop_;
    std::chrono::milliseconds rest_;
    QTimer next_;
};

} // namespace veldona
