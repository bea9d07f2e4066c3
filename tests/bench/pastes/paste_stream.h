#pragma once

#include "foundation/qt_main_loop.h"
#include "platform/linux/x11_paste_queue.h"
#include "samples.h"
#include "support/desktop/target_application.h"
#include "support/desktop/x11_selection_reader.h"

namespace velmora::bench {

/// What became of the numbered pieces that were handed over.
struct Fate {
    int pieces = 0;
    int lost = 0;
    int doubled = 0;
    int outOfOrder = 0;
    int undelivered = 0; ///< reported as such
    /// Of each stream: from its last piece to the user's clipboard, which comes back when the last text was
    /// read and nothing more is asked. In ms.
    Samples clipboardBack;
};

/// Dictates numbered pieces into the program in front at a steady pace, in streams of a hundred, each with
/// the user's clipboard borrowed and put back, and then looks at what has arrived.
class PasteStream {
public:
    PasteStream(test::TargetApplication& target, MainLoop::Duration interval);

    [[nodiscard]] Fate run(int pieces);

private:
    void dictate(int first, int count, Fate& fate);
    void judge(Fate& fate);

    QtMainLoop m_loop;
    test::TargetApplication& m_target;
    const MainLoop::Duration m_interval;
    std::unique_ptr<X11PasteQueue> m_queue = X11PasteQueue::open(m_loop, {});
    test::X11SelectionReader m_reader;
    QString m_all;
    QStringList m_undelivered;
};

} // namespace velmora::bench
