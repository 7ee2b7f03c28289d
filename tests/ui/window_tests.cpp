#include "tests/ui/window_tests.h"

#include <cstdlib>
#include <filesystem>

#include <QApplication>
#include <QInputMethodEvent>
#include <QWidget>

#include <gtest/gtest.h>

#include "ui/housestyle.h"

namespace veldona::test {

void typeText(WindowHost& host, Form& form, std::string_view text) {
    for (const char32_t each : QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())).toUcs4())
        host.typeKey(form, {.character = each});
}

void pressKey(WindowHost& host, Form& form, Key key) {
    host.typeKey(form, {.key = key});
}

void commitText(QWidget& widget, std::string_view text) {
    QInputMethodEvent event;
    event.setCommitString(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())));
    QCoreApplication::sendEvent(&widget, &event);
}

void settle() {
    for (int round = 0; round < 5; ++round)
        QCoreApplication::processEvents();
}

namespace {

std::string pictureFile(const std::string& name) {
    const char* chosen = std::getenv("VELDONA_EKRAN");
    const std::filesystem::path folder = chosen ? chosen : VELDONA_SCREENS;
    std::filesystem::create_directories(folder);
    settle();
    return (folder / (name + ".png")).string();
}

} // namespace

void leavePicture(WindowHost& host, Form& form, const std::string& name) {
    EXPECT_TRUE(host.screenshot(form, pictureFile(name)));
}

void leavePicture(QWidget& window, const std::string& name) {
    EXPECT_TRUE(window.grab().save(QString::fromStdString(pictureFile(name)), "PNG"));
}

} // namespace veldona::test

int main(int argc, char** argv) {
    ::testing::InitGoogleTest(&argc, argv);
    setenv("QT_QPA_PLATFORM", "offscreen:configfile=" VELDONA_SCREEN, 0);
    QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    veldona::applyHouseStyle(application, 1);
    return RUN_ALL_TESTS();
}
