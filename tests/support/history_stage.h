#pragma once

#include "core/history_store.h"
#include "support/fake_desktop.h"
#include "support/hand_loop.h"
#include "ui/main_window/history_source.h"

#include <QTemporaryDir>

#include <ctime>

namespace velmora::test {

/// Moscow's clock, so that calendar days are the same wherever the tests run.
inline void useMoscowTime() {
    qputenv("TZ", "MSK-3");
    tzset();
}

/// A moment on Moscow's clock.
inline Date moscow(int year, unsigned month, unsigned day, int hour = 12, int minute = 0) {
    using namespace std::chrono;
    return Date(sys_days{std::chrono::year{year} / month / day}) + hours(hour - 3) + minutes(minute);
}

inline HistoryItem dictated(Date date, const QString& text, const QString& bundleId = {},
                            double seconds = 7) {
    HistoryItem item;
    item.date = date;
    item.durationSec = seconds;
    item.rawText = text;
    item.cleanedText = text;
    if (!bundleId.isEmpty())
        item.appBundleId = bundleId;
    return item;
}

/// A history in the test's hand. It is 15:00 of 21 November 2026 on Moscow's clock.
struct HistoryStage {
    HistoryStage() {
        useMoscowTime();
        loop.advance(
            std::chrono::duration_cast<MainLoop::Duration>(moscow(2026, 11, 21, 15) - HandLoop::startDate));
    }

    /// The newest last, as they are dictated.
    void add(const HistoryItem& item) { store.add(item); }
    void add(Date date, const QString& text, const QString& bundleId = {}) {
        store.add(dictated(date, text, bundleId));
    }

    QTemporaryDir folder;
    HandLoop loop;
    FakeDesktop desktop;
    HistoryStore store{folder.path()};
    HistorySource source{store, loop, desktop};
};

} // namespace velmora::test
