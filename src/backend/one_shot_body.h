#pragma once

#include <QIODevice>

namespace velmora {

/// The bytes of a request's body, to be read once and never again from the start.
class OneShotBody final : public QIODevice {
public:
    explicit OneShotBody(QByteArray bytes);

    [[nodiscard]] bool isSequential() const override { return true; }
    [[nodiscard]] qint64 bytesAvailable() const override;
    [[nodiscard]] bool atEnd() const override { return bytesAvailable() == 0; }
    bool reset() override { return false; }

protected:
    qint64 readData(char* data, qint64 maxSize) override;
    qint64 writeData(const char*, qint64) override { return -1; }

private:
    const QByteArray m_bytes;
    qint64 m_read = 0;
};

} // namespace velmora
