#include "dictation_runs.h"
#include "figures.h"
#include "platform/linux/x11_connection.h"
#include "support/desktop/target_application.h"

#include <xcb/xtest.h>

using namespace std::chrono_literals;

namespace velmora::bench {
namespace {

constexpr int runs = 20;
constexpr xcb_keycode_t control = 37, v = 55; // of the virtual desktop's keyboard

/// Owns the clipboard, has the editor in front paste, and answers that it has no text.
class BareOwner {
public:
    /// From the chord to the first request, in milliseconds.
    double paste() {
        xcb_set_selection_owner(m_x.get(), m_window, m_clipboard, m_x.serverTime(m_window));
        m_x.flush();
        while (refuse(100ms)) { // some look at a new clipboard on their own
        }
        const auto start = Clock::now();
        press(control, true);
        press(v, true);
        press(v, false);
        press(control, false);
        m_x.flush();
        if (!refuse(2s))
            throw NotMeasured(QStringLiteral("the editor did not ask for the clipboard"));
        const auto asked = Clock::now();
        while (refuse(100ms)) {
        }
        return milliseconds(start, asked);
    }

private:
    void press(xcb_keycode_t key, bool down) {
        xcb_test_fake_input(m_x.get(), down ? XCB_KEY_PRESS : XCB_KEY_RELEASE, key, XCB_CURRENT_TIME,
                            XCB_WINDOW_NONE, 0, 0, 0);
    }

    /// Waits for a request and answers it; false when none comes.
    bool refuse(std::chrono::milliseconds patience) {
        while (const XcbEvent event = m_x.waitForEvent(patience)) {
            if (typeOf(*event) != XCB_SELECTION_REQUEST)
                continue;
            const auto& request = reinterpret_cast<const xcb_selection_request_event_t&>(*event);
            xcb_selection_notify_event_t answer{};
            answer.response_type = XCB_SELECTION_NOTIFY;
            answer.time = request.time;
            answer.requestor = request.requestor;
            answer.selection = request.selection;
            answer.target = request.target;
            xcb_send_event(m_x.get(), 0, request.requestor, 0, reinterpret_cast<const char*>(&answer));
            m_x.flush();
            return true;
        }
        return false;
    }

    X11Connection m_x;
    const xcb_window_t m_window = m_x.createWindow(XCB_EVENT_MASK_PROPERTY_CHANGE);
    const xcb_atom_t m_clipboard = m_x.atom("CLIPBOARD");
};

Samples measureBareOwner() {
    const auto editor = test::TargetApplication::mousepad();
    if (!editor->isReady())
        throw NotMeasured(QStringLiteral("the editor is not ready"));
    BareOwner owner;
    (void)owner.paste(); // the first one warms up
    Samples times;
    for (int run = 0; run < runs; ++run)
        times.add(owner.paste());
    return times;
}

} // namespace

std::vector<Result> measureTextToTarget(DictationRuns& dictations) {
    Samples single, pair;
    for (const DictationTimes& dictation : dictations.get()) {
        for (const double time : dictation.textToRead)
            single.add(time);
        pair.add(dictation.pairToRead);
    }
    const QString baseline = QStringLiteral("bare owner: chord to first request");
    const Samples bare = measureBareOwner();
    return {{QStringLiteral("text sent to read by the editor"), QStringLiteral("ms"), single, baseline, bare,
             target::MedianAtMost{10}},
            {QStringLiteral("two together, to the second read"), QStringLiteral("ms"), pair, baseline, bare,
             target::MedianAtMost{70}}};
}

} // namespace velmora::bench
