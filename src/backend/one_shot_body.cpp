#include "backend/one_shot_body.h"

#include <cstring>

namespace velmora {

OneShotBody::OneShotBody(QByteArray bytes)
    : m_bytes(std::move(bytes)) {
    open(QIODevice::ReadOnly | QIODevice::Unbuffered);
}

qint64 OneShotBody::bytesAvailable() const {
    return m_bytes.size() - m_read + QIODevice::bytesAvailable();
}

qint64 OneShotBody::readData(char* data, qint64 maxSize) {
    const qint64 size = std::min(maxSize, m_bytes.size() - m_read);
    if (size == 0 && maxSize > 0)
        return -1;
    std::memcpy(data, m_bytes.constData() + m_read, static_cast<std::size_t>(size));
    m_read += size;
    return size;
}

} // namespace velmora
