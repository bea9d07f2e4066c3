#include "speech/sound_formats.h"

#include <new>

extern "C" {
#include <libavcodec/avcodec.h>
#include <libavformat/avformat.h>
#include <libavutil/mem.h>
}

namespace velmora::server {

namespace {

/// Playlists and the like, which name other files, stay out.
constexpr auto containers = "mov,wav,w64,ogg,mp3,flac,matroska,aac,caf,aiff,au,amr";

/// What recorders and telephones write. A picture on a sound file is none of them.
constexpr auto codecs =
    "aac,aac_latm,alac,flac,mp3float,opus,vorbis,speex,amrnb,amrwb,adpcm_ima_qt,adpcm_ima_wav,adpcm_ms,"
    "gsm_ms,pcm_alaw,pcm_mulaw,pcm_s8,pcm_u8,pcm_s16be,pcm_s16le,pcm_s24be,pcm_s24le,pcm_s32be,pcm_s32le,"
    "pcm_f32be,pcm_f32le,pcm_f64be,pcm_f64le";

/// The longest frame of the codecs above, of all its channels together: one of FLAC.
constexpr auto samplesPerFrame = 8 * 65'535;

void set(char*& list, const char* text) {
    list = av_strdup(text);
    if (!list) {
        throw std::bad_alloc();
    }
}

} // namespace

void acceptSoundAlone(AVFormatContext& format) {
    set(format.format_whitelist, containers);
    set(format.codec_whitelist, codecs);
    set(format.protocol_whitelist, "none");
}

void acceptSoundAlone(AVCodecContext& codec) {
    set(codec.codec_whitelist, codecs);
    codec.max_samples = samplesPerFrame;
}

} // namespace velmora::server
