#pragma once

#include "platform/clipboard_contents.h"

namespace velmora {

/// Owns the clipboard of the session's X server with these contents until another program takes it, or the
/// server is gone. False when it can't be had.
bool keepClipboard(const ClipboardContents& contents);

} // namespace velmora
