#include "foundation/log.h"

#include <QMutex>

#include <cstdio>

namespace velmora {
namespace {

QMutex& sinkMutex() {
    static QMutex mutex;
    return mutex;
}

LogSink& sink() {
    static LogSink current;
    return current;
}

} // namespace

void log(const QString& line) {
    const QMutexLocker lock(&sinkMutex());
    if (sink()) {
        sink()(line);
        return;
    }
    const QByteArray bytes = line.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stderr);
    std::fflush(stderr);
}

LogCapture::LogCapture(LogSink newSink) {
    const QMutexLocker lock(&sinkMutex());
    sink() = std::move(newSink);
}

LogCapture::~LogCapture() {
    const QMutexLocker lock(&sinkMutex());
    sink() = nullptr;
}

} // namespace velmora
