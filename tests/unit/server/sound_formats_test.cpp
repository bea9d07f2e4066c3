#include "speech/sound_formats.h"
#include "test_folder.h"

#include <gmock/gmock.h>

#include <fstream>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/mem.h>
}

namespace velmora::server {
namespace {

/// Sees to it that each protection holds by itself, for one can hide that another is gone.
class SoundFormatsTest : public testing::Test {
protected:
    struct Closer {
        void operator()(AVFormatContext* context) const {
            auto* io = context->pb;
            avformat_close_input(&context);
            avio_closep(&io);
        }
    };
    using Container = std::unique_ptr<AVFormatContext, Closer>;

    static std::string png() {
        auto* codec = avcodec_alloc_context3(avcodec_find_encoder_by_name("png"));
        codec->width = 16;
        codec->height = 16;
        codec->pix_fmt = AV_PIX_FMT_GRAY8;
        codec->time_base = {1, 1};
        EXPECT_EQ(avcodec_open2(codec, nullptr, nullptr), 0);
        auto* frame = av_frame_alloc();
        frame->width = codec->width;
        frame->height = codec->height;
        frame->format = codec->pix_fmt;
        EXPECT_EQ(av_frame_get_buffer(frame, 0), 0);
        for (int line = 0; line < frame->height; ++line) {
            std::memset(frame->data[0] + line * frame->linesize[0], 0, 16);
        }
        auto* packet = av_packet_alloc();
        EXPECT_EQ(avcodec_send_frame(codec, frame), 0);
        EXPECT_EQ(avcodec_receive_packet(codec, packet), 0);
        std::string bytes(reinterpret_cast<const char*>(packet->data),
                          static_cast<std::size_t>(packet->size));
        av_packet_free(&packet);
        av_frame_free(&frame);
        avcodec_free_context(&codec);
        return bytes;
    }

    /// A film of one PNG.
    [[nodiscard]] std::filesystem::path film() const {
        const auto path = folder.path() / "film.mov";
        const auto picture = png();
        AVFormatContext* format = nullptr;
        EXPECT_GE(avformat_alloc_output_context2(&format, nullptr, "mov", path.c_str()), 0);
        auto* stream = avformat_new_stream(format, nullptr);
        stream->codecpar->codec_type = AVMEDIA_TYPE_VIDEO;
        stream->codecpar->codec_id = AV_CODEC_ID_PNG;
        stream->codecpar->width = 16;
        stream->codecpar->height = 16;
        stream->time_base = {1, 1};
        EXPECT_EQ(avio_open(&format->pb, path.c_str(), AVIO_FLAG_WRITE), 0);
        EXPECT_GE(avformat_write_header(format, nullptr), 0);
        auto* packet = av_packet_alloc();
        EXPECT_EQ(av_new_packet(packet, static_cast<int>(picture.size())), 0);
        std::memcpy(packet->data, picture.data(), picture.size());
        packet->pts = packet->dts = 0;
        packet->duration = 1;
        packet->flags = AV_PKT_FLAG_KEY;
        EXPECT_GE(av_write_frame(format, packet), 0);
        EXPECT_EQ(av_write_trailer(format), 0);
        av_packet_free(&packet);
        avio_closep(&format->pb);
        avformat_free_context(format);
        return path;
    }

    static AVFormatContext* context(bool restricted) {
        auto* made = avformat_alloc_context();
        if (restricted) {
            acceptSoundAlone(*made);
        }
        return made;
    }

    /// Null if it is refused.
    static Container open(const std::filesystem::path& path, bool restricted) {
        auto* made = context(restricted);
        // Not opened by the context, which may not.
        AVIOContext* io = nullptr;
        EXPECT_GE(avio_open(&io, path.c_str(), AVIO_FLAG_READ), 0);
        made->pb = io;
        if (avformat_open_input(&made, nullptr, nullptr, nullptr) != 0) {
            avio_closep(&io);
            return nullptr;
        }
        return Container(made);
    }

    TestFolder folder;
};

TEST_F(SoundFormatsTest, ContainerOffTheList_IsRefusedThoughItsContentIsKnown) {
    const auto path = folder.path() / "picture";
    std::ofstream(path, std::ios::binary) << png();
    EXPECT_TRUE(open(path, false));
    EXPECT_FALSE(open(path, true));
}

TEST_F(SoundFormatsTest, PictureInAContainer_IsNotDecodedToLookAtIt) {
    const auto look = [&](bool restricted) {
        const auto container = open(film(), restricted);
        EXPECT_TRUE(container);
        EXPECT_GE(avformat_find_stream_info(container.get(), nullptr), 0);
        EXPECT_EQ(container->streams[0]->codecpar->codec_id, AV_CODEC_ID_PNG);
        return container->streams[0]->codecpar->format;
    };
    EXPECT_EQ(look(false), AV_PIX_FMT_GRAY8);
    EXPECT_EQ(look(true), AV_PIX_FMT_NONE);
}

TEST_F(SoundFormatsTest, OtherFilesByName_AreNotOpened) {
    const auto name = "file:" + film().string();
    for (const bool restricted : {false, true}) {
        auto* made = context(restricted);
        made->url = av_strdup("");
        AVIOContext* io = nullptr;
        EXPECT_EQ(made->io_open(made, &io, name.c_str(), AVIO_FLAG_READ, nullptr) >= 0, !restricted);
        avio_closep(&io);
        avformat_free_context(made);
    }
}

TEST_F(SoundFormatsTest, CodecOffTheList_IsNotOpened) {
    for (const bool restricted : {false, true}) {
        const auto* decoder = avcodec_find_decoder_by_name("png");
        auto* codec = avcodec_alloc_context3(decoder);
        if (restricted) {
            acceptSoundAlone(*codec);
        }
        EXPECT_EQ(avcodec_open2(codec, decoder, nullptr) == 0, !restricted);
        avcodec_free_context(&codec);
    }
}

TEST_F(SoundFormatsTest, Frames_AreCountedBeforeTheyAreMade) {
    constexpr int most = 8 * 65'535;
    for (const int samples : {most, most + 1}) {
        const auto* decoder = avcodec_find_decoder_by_name("pcm_s16le");
        auto* codec = avcodec_alloc_context3(decoder);
        acceptSoundAlone(*codec);
        codec->sample_rate = 16'000;
        av_channel_layout_default(&codec->ch_layout, 1);
        ASSERT_EQ(avcodec_open2(codec, decoder, nullptr), 0);
        auto* packet = av_packet_alloc();
        auto* frame = av_frame_alloc();
        ASSERT_EQ(av_new_packet(packet, samples * 2), 0);
        std::memset(packet->data, 0, static_cast<std::size_t>(packet->size));
        const int sent = avcodec_send_packet(codec, packet);
        const int received = sent == 0 ? avcodec_receive_frame(codec, frame) : sent;
        EXPECT_EQ(received == 0, samples == most);
        av_frame_free(&frame);
        av_packet_free(&packet);
        avcodec_free_context(&codec);
    }
}

} // namespace
} // namespace velmora::server
