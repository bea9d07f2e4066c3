#pragma once

namespace velmora {

/// Before the QApplication: picks the windowing system that Qt talks to, unless QT_QPA_PLATFORM has. X11
/// comes first, also through XWayland: a Wayland compositor would not let the capsule keep its place above
/// other windows. Without a display the program runs on, and its windows are nowhere to be seen.
/// What it sets holds for this process; call forgetPlatform() once the application is made, so that programs
/// started later choose for themselves.
void choosePlatform();
void forgetPlatform();

} // namespace velmora
