#pragma once

#include "platform/status_item.h"
#include "pointer_hand.h"
#include "support/desktop/wait_until.h"

#include <QGuiApplication>
#include <QProcess>
#include <QScreen>

#include <gtest/gtest.h>

namespace velmora::test {

/// A tray that embeds windows, at the top right of the screen.
class EmbeddingTray {
public:
    EmbeddingTray() = default;
    ~EmbeddingTray() { stop(); }
    EmbeddingTray(const EmbeddingTray&) = delete;
    EmbeddingTray& operator=(const EmbeddingTray&) = delete;

    void start() {
        m_process.start(QStringLiteral("trayer"),
                        {QStringLiteral("--edge"), QStringLiteral("top"), QStringLiteral("--align"),
                         QStringLiteral("right"), QStringLiteral("--widthtype"), QStringLiteral("request"),
                         QStringLiteral("--height"), QStringLiteral("24")});
        EXPECT_TRUE(m_process.waitForStarted());
    }
    void stop() {
        m_process.kill();
        m_process.waitForFinished();
    }
    /// Whether the item comes to lie in the tray, at rest, where it can be clicked.
    [[nodiscard]] static bool takes(const StatusItem& item) {
        const PointerHand hand;
        const QRect screen = QGuiApplication::primaryScreen()->geometry();
        QRect before;
        int looks = 0; // that found it where the one before did
        return waitUntil([&] {
            const QRect place = item.frame().value_or(QRect());
            const bool inside = place.width() > 8 && place.y() < 30 && place.x() > 600 &&
                                screen.contains(place) && hand.meetsOurs(place.center());
            looks = inside && std::exchange(before, place) == place ? looks + 1 : 0;
            return looks == 10;
        });
    }

private:
    QProcess m_process;
};

} // namespace velmora::test
