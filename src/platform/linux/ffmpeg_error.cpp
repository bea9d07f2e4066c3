#include "platform/linux/ffmpeg_error.h"

extern "C" {
#include <libavutil/error.h>
}

namespace velmora {
namespace {

QString describeCode(int code) {
    std::array<char, AV_ERROR_MAX_STRING_SIZE> text{};
    av_strerror(code, text.data(), text.size());
    return QString::fromLocal8Bit(text.data());
}

} // namespace

FfmpegError::FfmpegError(const QString& what, int code)
    : PlainError(QStringLiteral("%1: %2").arg(what, describeCode(code))) {}

int checkFfmpeg(const QString& what, int code) {
    if (code < 0)
        throw FfmpegError(what, code);
    return code;
}

} // namespace velmora
