#include "core/pcm16.h"

#include <QtEndian>

#include <algorithm>

namespace velmora {

QByteArray toPcm16(std::span<const float> samples) {
    QByteArray bytes(static_cast<qsizetype>(samples.size() * sizeof(qint16)), Qt::Uninitialized);
    char* out = bytes.data();
    for (const float sample : samples) {
        qToLittleEndian(static_cast<qint16>(std::clamp(sample, -1.0F, 1.0F) * 32767.0F), out);
        out += sizeof(qint16);
    }
    return bytes;
}

} // namespace velmora
