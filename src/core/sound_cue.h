#pragma once

#include "core/app_settings.h"
#include "platform/sound_player.h"

namespace velmora {

/// The two short sounds of a dictation, as loud as the setting `readySound` says.
class SoundCue {
public:
    SoundCue(const AppSettings& settings, SoundPlayer& player);

    void playRecordStart();
    void playTranscriptionReady();

private:
    void play(const QString& name);

    const AppSettings& m_settings;
    SoundPlayer& m_player;
};

} // namespace velmora
