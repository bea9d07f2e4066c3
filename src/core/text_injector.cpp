#include "core/text_injector.h"

namespace velmora {
namespace {

constexpr auto restoreDelay = std::chrono::milliseconds(180);

} // namespace

TextInjector::TextInjector(MainLoop& loop, Pasteboard& pasteboard, KeyPoster& keys)
    : m_loop(loop)
    , m_pasteboard(pasteboard)
    , m_keys(keys) {}

void TextInjector::paste(const QString& text) {
    std::optional<QString> kept = m_pasteboard.string();
    copyToClipboard(text);
    m_keys.postPasteChord();
    restoreLater(std::move(kept));
}

void TextInjector::copyToClipboard(const QString& text) {
    m_pasteboard.clearContents();
    m_pasteboard.setString(text);
}

void TextInjector::startIncrementalSession() {
    if (m_sessionActive)
        return;
    m_sessionSavedClipboard = m_pasteboard.string();
    m_sessionActive = true;
}

void TextInjector::pasteIncremental(const QString& text) {
    if (!m_sessionActive) {
        paste(text);
        return;
    }
    copyToClipboard(text);
    m_keys.postPasteChord();
}

void TextInjector::finishIncrementalSession() {
    if (!m_sessionActive)
        return;
    m_sessionActive = false;
    restoreLater(std::exchange(m_sessionSavedClipboard, std::nullopt));
}

void TextInjector::restoreLater(std::optional<QString> kept) {
    m_loop.delay(restoreDelay, [&pasteboard = m_pasteboard, kept = std::move(kept)] {
        pasteboard.clearContents();
        if (kept)
            pasteboard.setString(*kept);
    });
}

} // namespace velmora
