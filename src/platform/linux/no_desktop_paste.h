#pragma once

#include "platform/key_poster.h"
#include "platform/pasteboard.h"

namespace velmora {

/// Stands in where there is no desktop to paste into: the text stays in memory.
class NoDesktopPaste final : public Pasteboard, public KeyPoster {
public:
    [[nodiscard]] std::optional<QString> string() override { return m_text; }
    void clearContents() override { m_text.reset(); }
    void setString(const QString& text) override { m_text = text; }
    /// Says so in the log, once.
    void postPasteChord() override;

private:
    std::optional<QString> m_text;
    bool m_told = false;
};

} // namespace velmora
