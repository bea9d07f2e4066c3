#include "platform/linux/wav_sound.h"

#include <QtEndian>

namespace velmora {
namespace {

constexpr qsizetype riffHeaderSize = 12;
constexpr qsizetype chunkHeaderSize = 8;
constexpr qsizetype formatSize = 16;
constexpr int pcm = 1;

template<typename T>
T readLittle(const QByteArray& bytes, qsizetype at) {
    return qFromLittleEndian<T>(bytes.constData() + at);
}

} // namespace

std::optional<WavSound> readWavSound(const QByteArray& bytes) {
    if (bytes.size() < riffHeaderSize || !bytes.startsWith("RIFF") || bytes.mid(8, 4) != "WAVE")
        return std::nullopt;
    WavSound sound;
    for (qsizetype at = riffHeaderSize; at + chunkHeaderSize <= bytes.size();) {
        const QByteArray id = bytes.mid(at, 4);
        const qsizetype size = readLittle<quint32>(bytes, at + 4);
        at += chunkHeaderSize;
        if (size > bytes.size() - at)
            return std::nullopt;
        if (id == "fmt ") {
            if (size < formatSize || readLittle<quint16>(bytes, at) != pcm ||
                readLittle<quint16>(bytes, at + 14) != 16)
                return std::nullopt;
            sound.channels = readLittle<quint16>(bytes, at + 2);
            sound.sampleRate = int(readLittle<quint32>(bytes, at + 4));
        } else if (id == "data") {
            if (sound.channels < 1 || sound.sampleRate < 1)
                return std::nullopt;
            const qsizetype frameSize = 2 * qsizetype(sound.channels);
            sound.samples.reserve(std::size_t(size / 2));
            for (qsizetype i = 0; i < size / frameSize * frameSize; i += 2)
                sound.samples.push_back(float(readLittle<qint16>(bytes, at + i)) / 32768.0F);
            return sound;
        }
        at += size + size % 2; // chunks are padded to even sizes
    }
    return std::nullopt;
}

} // namespace velmora
