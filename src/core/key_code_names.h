#pragma once

#include <QString>

/// The virtual key codes by which the program, its settings and its event taps know the keys.
namespace velmora::KeyCodeNames {

/// What a key is called in the window; "key " and the number for a code without a name.
[[nodiscard]] QString label(int keyCode);

/// F1 to F20: the keys that may be a hotkey without a modifier.
[[nodiscard]] bool isFunctionKey(int keyCode);

} // namespace velmora::KeyCodeNames
