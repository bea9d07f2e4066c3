#pragma once

#include "core/hotkey_monitor.h"
#include "support/fake_event_tap.h"
#include "support/hand_loop.h"

#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace velmora::test {

/// A monitor on a keyboard on which the test types.
class HotkeyMonitorFixture : public testing::Test {
protected:
    HotkeyMonitorFixture() {
        monitor.onPress = [this] { reports += QLatin1Char('+'); };
        monitor.onRelease = [this] { reports += QLatin1Char('-'); };
    }

    void chooseChord(int keyCode, quint64 mask) {
        defaults.set(QStringLiteral("hotkeyCustomKeyCode"), qint64{keyCode});
        defaults.set(QStringLiteral("hotkeyCustomMask"), static_cast<qint64>(mask));
    }
    void startWith(const QString& hotkey) {
        defaults.set(QStringLiteral("hotkey"), hotkey);
        monitor.start();
        loop.runPosted();
    }
    void startWithChord(int keyCode, quint64 mask) {
        chooseChord(keyCode, mask);
        startWith(QStringLiteral("custom"));
    }
    void expectReports(const char* expected) {
        loop.runPosted();
        EXPECT_EQ(reports, QLatin1String(expected));
    }

    HandLoop loop;
    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("d.json"))};
    FakeEventTapFactory keyboard;
    HotkeyMonitor monitor{loop, defaults, keyboard};
    QString reports; // + for a press, - for a release
};

} // namespace velmora::test
