#pragma once

#include "foundation/async_stream.h"
#include "platform/audio_engine.h"
#include "platform/audio_file.h"

#include <QFile>

namespace velmora::test {

/// A microphone that delivers what the test speaks into it.
class FakeAudioEngine final : public AudioEngine {
public:
    [[nodiscard]] MicrophoneAuthorization authorization() override { return authorizationStatus; }
    QCoro::Task<bool> requestAccess() override {
        if (holdAnswers) {
            auto [answered, producer] = AsyncStream<bool>::make();
            heldAnswers.push_back(std::move(producer));
            co_await answered.next();
        }
        authorizationStatus = answer ? MicrophoneAuthorization::Authorized : MicrophoneAuthorization::Denied;
        co_return answer;
    }
    [[nodiscard]] std::vector<AudioInput> availableInputs() override { return inputs; }
    void useDefaultInput() override { device.reset(); }
    void setInputDevice(const QString& uniqueID) override {
        for (const AudioInput& input : inputs) {
            if (input.uniqueID == uniqueID) {
                device = uniqueID;
                return;
            }
        }
        throw AudioDeviceError(AudioDeviceError::NotFound{uniqueID});
    }
    [[nodiscard]] AudioFormat inputFormat() override { return format; }
    void prepare() override {
        ++prepares;
        prepared();
    }
    void installTap(Tap newTap) override { tap = std::move(newTap); }
    void removeTap() override { tap = nullptr; }
    void start() override {
        if (startFails)
            throw AudioDeviceError(AudioDeviceError::SetFailed{7});
        ++starts;
        running = true;
    }
    void stop() override { running = false; }

    /// Delivers interleaved samples in the engine's format.
    void speak(const std::vector<float>& samples) {
        if (tap)
            tap({format, samples});
    }

    MicrophoneAuthorization authorizationStatus = MicrophoneAuthorization::Authorized;
    bool answer = true;       ///< the user's, when asked for access
    bool holdAnswers = false; ///< each answer then waits for its held producer to finish
    std::deque<AsyncStream<bool>::Producer> heldAnswers;
    std::vector<AudioInput> inputs{{QStringLiteral("usb"), QStringLiteral("USB")}};
    std::optional<QString> device; ///< the chosen input, none for the default
    AudioFormat format{48000, 2};
    Tap tap;
    bool startFails = false;
    bool running = false;
    int starts = 0;
    int prepares = 0;
    std::function<void()> prepared = [] {};
};

/// Files that hold nothing but exist, and a converter that only averages the channels.
class FakeAudioCodec final : public AudioCodec {
public:
    [[nodiscard]] std::unique_ptr<AudioFile> openForWriting(const QString& path,
                                                            const AudioFileSettings& settings) override {
        attempts.push_back(settings);
        if (refusedAttempts > 0) {
            --refusedAttempts;
            throw PlainError(QStringLiteral("refused"));
        }
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly))
            throw PlainError(file.errorString());
        ++openFiles;
        return std::make_unique<File>(*this, path);
    }
    [[nodiscard]] std::unique_ptr<AudioConverter> makeMonoConverter(const AudioFormat& from,
                                                                    double) override {
        convertedFrom = from;
        return std::make_unique<Converter>(*this);
    }

    std::vector<AudioFileSettings> attempts;
    int refusedAttempts = 0;
    int openFiles = 0;
    std::vector<float> written;
    AudioFormat convertedFrom;
    bool conversionFails = false;
    bool writingFails = false;
    std::optional<QString> loss; ///< what a file says at its end

private:
    class File final : public AudioFile {
    public:
        File(FakeAudioCodec& codec, QString path)
            : m_codec(codec)
            , m_path(std::move(path)) {}
        ~File() override { --m_codec.openFiles; }
        File(const File&) = delete;
        File& operator=(const File&) = delete;
        void write(std::span<const float> samples) override {
            if (m_codec.writingFails)
                throw PlainError(QStringLiteral("disk full"));
            m_codec.written.insert(m_codec.written.end(), samples.begin(), samples.end());
        }
        void finish() override {
            if (!m_codec.loss)
                return;
            if (m_codec.written.empty())
                QFile::remove(m_path);
            throw PlainError(*m_codec.loss);
        }

    private:
        FakeAudioCodec& m_codec;
        const QString m_path;
    };

    class Converter final : public AudioConverter {
    public:
        explicit Converter(FakeAudioCodec& codec)
            : m_codec(codec) {}
        [[nodiscard]] std::vector<float> convert(const AudioBuffer& buffer) override {
            if (m_codec.conversionFails)
                throw PlainError(QStringLiteral("no conversion"));
            std::vector<float> mono;
            const auto channels = static_cast<std::size_t>(buffer.format.channels);
            for (std::size_t i = 0; i + channels <= buffer.samples.size(); i += channels) {
                float sum = 0;
                for (std::size_t channel = 0; channel < channels; ++channel)
                    sum += buffer.samples[i + channel];
                mono.push_back(sum / static_cast<float>(channels));
            }
            return mono;
        }
        [[nodiscard]] std::vector<float> flush() override { return {}; }

    private:
        FakeAudioCodec& m_codec;
    };
};

} // namespace velmora::test
