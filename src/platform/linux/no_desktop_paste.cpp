#include "platform/linux/no_desktop_paste.h"

#include "foundation/log.h"

namespace velmora {

void NoDesktopPaste::postPasteChord() {
    if (!std::exchange(m_told, true))
        log(QStringLiteral("[Velmora] paste: no X11 session, the text stays in the history"));
    m_undelivered(m_text);
}

} // namespace velmora
