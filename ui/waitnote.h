// The wait note over the window in front. It takes no focus, so the screen below never learns of it.
#pragma once

#include <QObject>
#include <QPointer>

#include "platform/desktop/waitnote.h"

class QFrame;
class QLabel;

namespace veldona {

class WindowHost;

class WindowWaitNote : public QObject, public WaitNote {
public:
    explicit WindowWaitNote(WindowHost& host) : host_(host) {}
    ~WindowWaitNote() override;

    void show(const std::string& words) override;
    void hide() override;
    // Lets the windows be painted; of the operator's input nothing but Esc is looked at.
    [[nodiscard]] bool isGivenUp() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void open();

    WindowHost& host_;
    QPointer<QFrame> frame_; // goes with its window, where that goes first
    QLabel* words_ = nullptr;
    bool givenUp_ = false;
};

} // namespace veldona
