#pragma once

#include <QtGlobal>

/// The bits of KeyEvent::flags: one generic bit a kind of modifier, and one device bit for its left and right
/// key.
namespace velmora::modifier {

inline constexpr quint64 capsLock = 0x10000;
inline constexpr quint64 shift = 0x20000;
inline constexpr quint64 control = 0x40000;
inline constexpr quint64 option = 0x80000;
inline constexpr quint64 command = 0x100000;
inline constexpr quint64 fn = 0x800000;

inline constexpr quint64 leftControl = 0x1;
inline constexpr quint64 leftShift = 0x2;
inline constexpr quint64 rightShift = 0x4;
inline constexpr quint64 leftCommand = 0x8;
inline constexpr quint64 rightCommand = 0x10;
inline constexpr quint64 leftOption = 0x20;
inline constexpr quint64 rightOption = 0x40;
inline constexpr quint64 rightControl = 0x2000;

/// Shift, Control, Option, Command and Fn.
inline constexpr quint64 genericBits = shift | control | option | command | fn;
static_assert(genericBits == 0x9E0000);

} // namespace velmora::modifier
