#pragma once

#include <memory>

class QQmlEngine;

namespace velmora {

/// Before the first window: every view is drawn by the processor, unless QT_QUICK_BACKEND says otherwise. The
/// windows are small, and a graphics driver costs more memory and a slower first frame than all of them
/// together.
void chooseRendering();

/// An engine that knows the program's views.
[[nodiscard]] std::unique_ptr<QQmlEngine> makeQmlEngine();

} // namespace velmora
