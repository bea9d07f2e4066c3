#pragma once

#include "platform/linux/wav_sound.h"
#include "platform/sound_player.h"

#include <map>
#include <memory>

namespace velmora {

class PulseConnection;
class PulsePlayback;

/// Plays sounds that were read from a folder beforehand. Never waits: with no server there is silence, and a
/// sound asked for while the connection is still being made is dropped, for it would come too late to mean
/// anything.
class PulseSoundPlayer final : public SoundPlayer {
public:
    /// `folder` holds the WAV files; a sound's name is its file's, without the ending.
    PulseSoundPlayer(PulseConnection& connection, const QString& folder);
    ~PulseSoundPlayer() override;

    void play(const QString& name, float volume) override;

private:
    PulseConnection& m_connection;
    std::map<QString, WavSound> m_sounds;
    std::map<QString, std::unique_ptr<PulsePlayback>> m_playing; // the last one of each sound
};

} // namespace velmora
