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
    m_keys.beginText();
    const Pasteboard::Saved saved = m_pasteboard.save();
    copyToClipboard(text);
    m_keys.postPasteChord();
    restoreLater(saved);
}

void TextInjector::copyToClipboard(const QString& text) {
    m_pasteboard.clearContents();
    m_pasteboard.setString(text);
}

void TextInjector::startIncrementalSession() {
    m_keys.beginText();
    if (!m_sessionSavedClipboard)
        m_sessionSavedClipboard = m_pasteboard.save();
}

void TextInjector::pasteIncremental(const QString& text) {
    if (!m_sessionSavedClipboard) {
        paste(text);
        return;
    }
    copyToClipboard(text);
    m_keys.postPasteChord();
}

void TextInjector::finishIncrementalSession() {
    if (m_sessionSavedClipboard)
        restoreLater(*std::exchange(m_sessionSavedClipboard, std::nullopt));
}

void TextInjector::restoreLater(Pasteboard::Saved saved) {
    m_loop.delay(restoreDelay, [&pasteboard = m_pasteboard, saved] { pasteboard.putBack(saved); });
}

} // namespace velmora
