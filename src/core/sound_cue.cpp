#include "core/sound_cue.h"

namespace velmora {

SoundCue::SoundCue(const AppSettings& settings, SoundPlayer& player)
    : m_settings(settings)
    , m_player(player) {}

void SoundCue::playRecordStart() {
    play(QStringLiteral("Tink"));
}

void SoundCue::playTranscriptionReady() {
    play(QStringLiteral("Pop"));
}

void SoundCue::play(const QString& name) {
    const QString setting = m_settings.readySound();
    if (setting == QStringLiteral("Тихий"))
        m_player.play(name, 0.35F);
    else if (setting == QStringLiteral("Системный"))
        m_player.play(name, 1.0F);
}

} // namespace velmora
