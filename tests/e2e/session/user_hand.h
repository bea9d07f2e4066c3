#pragma once

#include "support/desktop/accessible_tree.h"

#include <QImage>
#include <QStringList>

/// What a person does at the desktop and sees of it.
namespace velmora::test {

/// By which assistive technology knows the application.
inline const QString applicationName = QStringLiteral("Velmora");

/// What a command-line tool prints.
[[nodiscard]] QByteArray output(const QString& tool, const QStringList& arguments);

/// Presses keys as xdotool names them, one after the other.
void press(const QStringList& keys);
void type(const QString& text);

[[nodiscard]] QString clipboard();
[[nodiscard]] QImage screenshot();

/// Waits until the application shows something of that name.
[[nodiscard]] bool shows(const QString& name);
/// Waits until nothing of that name shows; the bus must have answered for all there is.
[[nodiscard]] bool hides(const QString& name);
/// Waits for something of that name in the application, and clicks it. False when it doesn't come.
[[nodiscard]] bool click(const QString& name);
/// Waits until the field of that name holds the text.
[[nodiscard]] bool holds(const QString& field, const QString& text);

} // namespace velmora::test
