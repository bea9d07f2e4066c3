#include "window_user.h"

#include "pass.h"
#include "result.h"

using namespace std::chrono_literals;

namespace velmora::bench {
namespace {

constexpr QSize popupSize(300, 200); // at the least, each
constexpr QSize mainWindowSize(760, 560);
constexpr auto between = 300ms;

} // namespace

WindowUser::WindowUser() {
    const auto icon = m_tray.icon();
    if (!icon)
        throw NotMeasured(QStringLiteral("no icon in the tray"));
    m_icon = icon->center();
    pass(between);
}

WindowUser::Opened WindowUser::openPopup() {
    m_watch.forget();
    const auto clicked = Clock::now();
    m_pointer.click(m_icon);
    const WindowWatch::Drawn popup = m_watch.waitForNew(popupSize);
    pass(between); // it has the focus by then
    return {popup.window, velmora::bench::milliseconds(clicked, popup.at)};
}

void WindowUser::closePopup(const Opened& popup) {
    press(key::escape);
    m_watch.waitForGone(popup.window);
    pass(between);
}

WindowUser::Opened WindowUser::openHistory() {
    const Opened popup = openPopup();
    press(key::down); // to the head
    press(key::down);
    pass(between);
    m_watch.forget();
    const auto chosen = Clock::now();
    press(key::enter);
    const WindowWatch::Drawn window = m_watch.waitForNew(mainWindowSize);
    m_watch.waitForGone(popup.window);
    pass(between);
    return {window.window, velmora::bench::milliseconds(chosen, window.at)};
}

void WindowUser::closeMainWindow(const Opened& window) {
    chord(test::key::leftControl, key::letterW);
    m_watch.waitForGone(window.window);
    pass(between);
}

void WindowUser::chord(xcb_keycode_t modifier, xcb_keycode_t key) {
    m_keyboard.press(modifier);
    m_keyboard.tap(key);
    m_keyboard.release(modifier);
}

} // namespace velmora::bench
