#include "platform/linux/ffmpeg_container.h"

#include "platform/linux/ffmpeg_error.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
}

namespace velmora {
namespace {

// Without the scheme libav would take a colon in a file's name for one.
QByteArray fileUrl(const QString& path) {
    return "file:" + QFile::encodeName(path);
}

FfmpegInput openContainer(const QString& path) {
    AVFormatContext* opened = nullptr;
    checkFfmpeg(path, avformat_open_input(&opened, fileUrl(path).constData(), nullptr, nullptr));
    FfmpegInput input(opened);
    if (opened->nb_streams != 1)
        throw FfmpegError(path, AVERROR_INVALIDDATA);
    return input;
}

void copyPackets(AVFormatContext* input, const QString& path) {
    const FfmpegOutput output = createContainer(path);
    const AVStream* from = input->streams[0];
    AVStream* to = avformat_new_stream(output.get(), nullptr);
    if (!to)
        throw std::bad_alloc();
    checkFfmpeg(path, avcodec_parameters_copy(to->codecpar, from->codecpar));
    to->codecpar->codec_tag = 0;
    AVDictionary* options = nullptr;
    av_dict_set(&options, "movflags", "faststart", 0);
    const int begun = avformat_write_header(output.get(), &options);
    av_dict_free(&options);
    checkFfmpeg(path, begun);
    const auto packet = ownFfmpeg(av_packet_alloc());
    while (true) {
        const int read = av_read_frame(input, packet.get());
        if (read == AVERROR_EOF)
            break;
        checkFfmpeg(path, read);
        av_packet_rescale_ts(packet.get(), from->time_base, to->time_base);
        packet->pos = -1;
        checkFfmpeg(path, av_interleaved_write_frame(output.get(), packet.get()));
    }
    checkFfmpeg(path, av_write_trailer(output.get()));
    checkFfmpeg(path, output->pb->error);
}

} // namespace

FfmpegOutput createContainer(const QString& path) {
    const QByteArray url = fileUrl(path);
    // What somebody said is for nobody else to hear; libav would make a file that all can read. Should this
    // fail, libav says why.
    static_cast<void>(QFile(path).open(QFile::WriteOnly, QFile::ReadOwner | QFile::WriteOwner));
    AVFormatContext* created = nullptr;
    checkFfmpeg(path, avformat_alloc_output_context2(&created, nullptr, "ipod", url.constData()));
    FfmpegOutput output(created);
    checkFfmpeg(path, avio_open(&created->pb, url.constData(), AVIO_FLAG_WRITE));
    return output;
}

bool holdsSound(const QString& path) {
    try {
        const FfmpegInput input = openContainer(path);
        const auto packet = ownFfmpeg(av_packet_alloc());
        return av_read_frame(input.get(), packet.get()) == 0;
    } catch (const Error&) {
        return false;
    }
}

void makePlainContainer(const QString& path) {
    const QFileInfo file(path);
    const QString temporary = QStringLiteral("%1/.%2.part").arg(file.path(), file.fileName());
    try {
        copyPackets(openContainer(path).get(), temporary);
    } catch (...) {
        QFile::remove(temporary);
        throw;
    }
    if (std::rename(QFile::encodeName(temporary).constData(), QFile::encodeName(path).constData()) != 0) {
        const int error = errno;
        QFile::remove(temporary);
        throw FfmpegError(path, AVERROR(error));
    }
}

} // namespace velmora
