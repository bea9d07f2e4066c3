#include "platform/linux/ffmpeg_error.h"

#include <QFileInfo>
#include <QStorageInfo>

#include <cerrno>

extern "C" {
#include <libavutil/error.h>
}

namespace velmora {
namespace {

// This one is for the user, who can do something about it.
bool isDiskFull(int code) {
    return code == AVERROR(ENOSPC) || code == AVERROR(EDQUOT);
}

QString describeFullDisk(const QString& path) {
    return QStringLiteral("нет места на диске %1").arg(QStorageInfo(QFileInfo(path).path()).rootPath());
}

QString describeCode(int code) {
    std::array<char, AV_ERROR_MAX_STRING_SIZE> text{};
    av_strerror(code, text.data(), text.size());
    return QString::fromLocal8Bit(text.data());
}

} // namespace

FfmpegError::FfmpegError(const QString& what, int code)
    : PlainError(isDiskFull(code) ? describeFullDisk(what)
                                  : QStringLiteral("%1: %2").arg(what, describeCode(code))) {}

int checkFfmpeg(const QString& what, int code) {
    if (code < 0)
        throw FfmpegError(what, code);
    return code;
}

} // namespace velmora
