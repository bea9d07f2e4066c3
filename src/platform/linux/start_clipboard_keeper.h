#pragma once

#include "platform/clipboard_contents.h"

#include <QString>

namespace velmora {

/// Starts the program that keeps the contents on the clipboard until the user copies something else. It lives
/// on when this process ends. Nothing happens without a program.
void startClipboardKeeper(const QString& program, const ClipboardContents& contents);

/// The form in which the keeper gets the contents, on its standard input.
[[nodiscard]] QByteArray encodeClipboard(const ClipboardContents& contents);
/// None when the bytes are no such contents.
[[nodiscard]] std::optional<ClipboardContents> decodeClipboard(const QByteArray& bytes);

} // namespace velmora
