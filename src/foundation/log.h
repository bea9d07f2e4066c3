#pragma once

#include <QString>

#include <functional>

namespace velmora {

/// Writes one line to the system log, as it stands. Any thread. Never hand it tokens, audio or what the user
/// said.
void log(const QString& line);

using LogSink = std::function<void(const QString& line)>;

/// Sends the lines of its lifetime to `sink` instead, for tests. One at a time; the sink may be called on any
/// thread.
class LogCapture {
public:
    explicit LogCapture(LogSink sink);
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;
};

} // namespace velmora
