// What the operator did while no input is let in, kept in its order and given on later.
//
// The event loop keeps keys and mouse back by itself; what an input method brings comes by another road.
#pragma once

#include <deque>
#include <memory>

#include <QEvent>
#include <QPointer>
#include <QWidget>

namespace veldona {

class DeferredInput {
public:
    // True: it is the operator's and is kept; the widget must not get it now.
    bool take(QWidget& receiver, const QEvent& event);
    [[nodiscard]] bool isEmpty() const { return deferred_.empty(); }
    // Gives the oldest on, a key to the widget that has the focus by then.
    void giveOne();

private:
    struct Deferred {
        QPointer<QWidget> receiver;
        std::unique_ptr<QEvent> event;
    };
    std::deque<Deferred> deferred_;
};

} // namespace veldona
