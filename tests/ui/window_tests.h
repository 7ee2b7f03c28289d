// What the tests of windows share: an application without a display, keys and pictures.
#pragma once

#include <string>
#include <string_view>

#include "ui/host.h"

class QWidget;

namespace veldona::test {

// Each character as a key through the widget that has the focus.
void typeText(WindowHost& host, Form& form, std::string_view text);
void pressKey(WindowHost& host, Form& form, Key key);
// At once, as an input method or a paste brings it.
void commitText(QWidget& widget, std::string_view text);
// Lets what is waiting run.
void settle();
// The window of the form as NAME.png among the pictures.
void leavePicture(WindowHost& host, Form& form, const std::string& name);
// The same of a dialog, which no form stands behind.
void leavePicture(QWidget& window, const std::string& name);

template <class Widget> Widget& widgetOf(WindowHost& host, const Form& form, const char* name) {
    auto* found = dynamic_cast<Widget*>(host.window(form)->findChild<QWidget*>(name));
    if (!found) qFatal("no such widget: %s", name);
    return *found;
}

} // namespace veldona::test
