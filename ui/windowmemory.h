// What the operator arranged and finds again: where a window stood, how large it was, how wide its columns.
//
// Lengths are kept at scale 1, places from the middle of the window in front, so that both hold on another
// screen, too.
#pragma once

#include <optional>

#include <QString>

class QWidget;

namespace veldona {

class UserSettings;

class WindowMemory {
public:
    explicit WindowMemory(UserSettings& settings) : settings_(settings) {}

    // Before the window shows for the first time: size and place from before, else in the middle of `owner`;
    // always on a screen that is there.
    void place(QWidget& window, const QString& name, const QWidget* owner) const;
    // Before it goes.
    void keep(const QWidget& window, const QString& name, const QWidget* owner);
    // Did it fill the screen when it went? Nothing where that isn't known.
    [[nodiscard]] std::optional<bool> filled(const QString& name) const;

    [[nodiscard]] std::optional<int> width(const QString& name) const;
    void keepWidth(const QString& name, int width);

private:
    UserSettings& settings_;
};

} // namespace veldona
