#pragma once

#include "platform/audio_format.h"

#include <QString>

#include <memory>
#include <optional>
#include <span>
#include <vector>

namespace velmora {

/// How an AAC file is made: one of a bit rate or a quality, or neither.
struct AudioFileSettings {
    AudioFormat format;              ///< of the samples to be written and of the file
    std::optional<int> bitRate = {}; ///< bits a second
    std::optional<int> quality = {}; ///< 0 to 127, 96 is "high"
};

/// An audio file being written; destruction finishes it if that wasn't done. Used from one thread at a time.
class AudioFile {
public:
    virtual ~AudioFile() = default;

    /// Interleaved samples in the file's format. Throws Error when the disk refuses them.
    virtual void write(std::span<const float> samples) = 0;
    /// Completes the file. Throws Error when the disk has refused some of it, now or before; what it took
    /// stays as a readable file, and nothing when there is no sound in that.
    virtual void finish() = 0;
};

/// Converts a stream of buffers to another rate, averaging the channels to one first. Keeps what the filter
/// still holds between calls.
class AudioConverter {
public:
    virtual ~AudioConverter() = default;

    /// Mono samples at the target rate; empty while the filter fills. Throws Error.
    [[nodiscard]] virtual std::vector<float> convert(const AudioBuffer& buffer) = 0;
    /// What is left in the filter after the last buffer.
    [[nodiscard]] virtual std::vector<float> flush() = 0;
};

/// Opens encoders and converters.
class AudioCodec {
public:
    virtual ~AudioCodec() = default;

    /// AAC in an MPEG-4 container that stays readable when the process is killed in the middle.
    /// Throws Error when the path or the settings are refused.
    [[nodiscard]] virtual std::unique_ptr<AudioFile> openForWriting(const QString& path,
                                                                    const AudioFileSettings& settings) = 0;
    /// Throws Error when it can't convert from this format. `targetRate` in frames a second.
    [[nodiscard]] virtual std::unique_ptr<AudioConverter> makeMonoConverter(const AudioFormat& from,
                                                                            double targetRate) = 0;
};

} // namespace velmora
