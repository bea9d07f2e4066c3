#include "platform/linux/pulse_sound_player.h"

#include "platform/linux/pulse_connection.h"
#include "platform/linux/pulse_playback.h"

#include <QDir>
#include <QFile>

namespace velmora {

PulseSoundPlayer::PulseSoundPlayer(PulseConnection& connection, const QString& folder)
    : m_connection(connection) {
    for (const QFileInfo& entry : QDir(folder).entryInfoList({QStringLiteral("*.wav")}, QDir::Files)) {
        QFile file(entry.filePath());
        if (!file.open(QFile::ReadOnly))
            continue;
        if (auto sound = readWavSound(file.readAll()))
            m_sounds.emplace(entry.completeBaseName(), std::move(*sound));
    }
}

PulseSoundPlayer::~PulseSoundPlayer() {
    const PulseConnection::Lock lock(m_connection);
    m_playing.clear();
}

void PulseSoundPlayer::play(const QString& name, float volume) {
    const auto sound = m_sounds.find(name);
    if (sound == m_sounds.end())
        return;
    const PulseConnection::Lock lock(m_connection);
    m_connection.connectNow();
    m_playing.erase(name);
    if (m_connection.isReady())
        m_playing.emplace(name, std::make_unique<PulsePlayback>(m_connection, sound->second, volume));
}

} // namespace velmora
