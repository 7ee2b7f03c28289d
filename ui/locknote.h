// The note in the window in front while a statement waits for another till, and Esc, which gives the wait up.
//
// The wait is in the middle of a procedure and of a statement: windows are painted, but nothing of the
// program may run. What the operator does meanwhile is kept and comes to the windows behind the procedure, in
// its order. Behind a box, which the operator sees first, it is dropped, as are keys typed ahead of any box.
#pragma once

#include <chrono>
#include <memory>
#include <utility>
#include <vector>

#include <QEvent>
#include <QLabel>
#include <QObject>
#include <QPointer>

namespace veldona {

class WindowHost;

class LockNote : public QObject {
public:
    explicit LockNote(WindowHost& host) : host_(host) {}

    // For each look round of the wait; false where it is given up.
    [[nodiscard]] bool goesOn(std::chrono::milliseconds waited);
    [[nodiscard]] bool isWaiting() const { return waiting_; }
    // Sees each event first; true: it is the operator's, and kept for later.
    bool keeps(QObject& receiver, QEvent& event);

private:
    void show();
    void endSoon();
    void end();

    WindowHost& host_;
    QPointer<QLabel> note_;
    std::vector<std::pair<QPointer<QObject>, std::unique_ptr<QEvent>>> kept_;
    bool waiting_ = false;
    bool givenUp_ = false;
    bool endWaits_ = false;
};

} // namespace veldona
