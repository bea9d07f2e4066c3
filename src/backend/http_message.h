#pragma once

#include "foundation/async_stream.h"

#include <QByteArray>
#include <QUrl>

#include <chrono>
#include <optional>
#include <utility>
#include <vector>

namespace velmora {

/// Header fields in their order; names compare without regard to case.
class HttpHeaders {
public:
    /// Replaces a field of that name.
    void set(const QByteArray& name, const QByteArray& value);
    void append(const QByteArray& name, const QByteArray& value) { m_fields.emplace_back(name, value); }
    /// The first field of that name; null when there is none.
    [[nodiscard]] QByteArray value(const QByteArray& name) const;

    [[nodiscard]] auto begin() const { return m_fields.begin(); }
    [[nodiscard]] auto end() const { return m_fields.end(); }

private:
    std::vector<std::pair<QByteArray, QByteArray>> m_fields;
};

struct HttpRequest {
    QUrl url;
    QByteArray method = "GET";
    HttpHeaders headers;
    QByteArray body;
    /// How long nothing may arrive or leave.
    std::chrono::milliseconds inactivityTimeout = std::chrono::seconds(60);
    /// From the start to the last byte of the reply; zero sets no limit.
    std::chrono::milliseconds totalTimeout{};
};

/// A reply whose body is complete.
struct HttpReply {
    qint64 status = 0; ///< 0 when whatever replied doesn't speak HTTP (a file, say)
    HttpHeaders headers;
    QByteArray body;
};

/// A reply whose body is still arriving.
struct OpenHttpReply {
    qint64 status = 0; ///< as in HttpReply
    HttpHeaders headers;
    /// The pieces as they arrive; fails with TransportError. Dropping it closes the connection.
    AsyncStream<QByteArray> body;
};

} // namespace velmora
