#include "ui/qml_engine.h"

#include <QAccessible>
#include <QApplication>

#include <gmock/gmock.h>

int main(int argc, char** argv) {
    testing::InitGoogleMock(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    velmora::chooseRendering();
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    QAccessible::setActive(true);
    return RUN_ALL_TESTS();
}
