#include "support/desktop/tone.h"

#include <QDataStream>
#include <QFile>

#include <cmath>
#include <complex>
#include <numbers>
#include <stdexcept>

namespace velmora::test {
namespace {

constexpr double tau = 2 * std::numbers::pi;

} // namespace

std::vector<float> makeTone(double frequency, double amplitude, double seconds, const AudioFormat& format) {
    const auto frames = std::size_t(std::lround(seconds * format.sampleRate));
    std::vector<float> samples;
    samples.reserve(frames * std::size_t(format.channels));
    for (std::size_t i = 0; i < frames; ++i)
        samples.insert(samples.end(), std::size_t(format.channels),
                       float(amplitude * std::sin(tau * frequency * double(i) / format.sampleRate)));
    return samples;
}

// One bin of a Fourier transform under a Blackman-Harris window, whose side lobes are 92 dB down.
double measureTone(std::span<const float> mono, double frequency, double sampleRate) {
    std::complex<double> sum;
    double weight = 0;
    for (std::size_t i = 0; i < mono.size(); ++i) {
        const double x = tau * double(i) / double(mono.size());
        const double window =
            0.35875 - 0.48829 * std::cos(x) + 0.14128 * std::cos(2 * x) - 0.01168 * std::cos(3 * x);
        sum += window * double(mono[i]) * std::polar(1.0, -tau * frequency * double(i) / sampleRate);
        weight += window;
    }
    return weight > 0 ? 2 * std::abs(sum) / weight : 0;
}

std::vector<float> takeChannel(std::span<const float> samples, int channel, int channels) {
    std::vector<float> taken;
    for (std::size_t i = std::size_t(channel); i < samples.size(); i += std::size_t(channels))
        taken.push_back(samples[i]);
    return taken;
}

double peakOf(std::span<const float> samples) {
    double peak = 0;
    for (const float sample : samples)
        peak = std::max(peak, std::abs(double(sample)));
    return peak;
}

double toDecibels(double ratio) {
    return 20 * std::log10(ratio);
}

void writeWav(const QString& path, std::span<const float> samples, const AudioFormat& format) {
    QFile file(path);
    if (!file.open(QFile::WriteOnly))
        throw std::runtime_error("can't write " + path.toStdString());
    QDataStream out(&file);
    out.setByteOrder(QDataStream::LittleEndian);
    const auto rate = quint32(format.sampleRate);
    const auto frameSize = quint16(2 * format.channels);
    const auto dataSize = quint32(samples.size() * 2);
    out.writeRawData("RIFF", 4);
    out << quint32(36 + dataSize);
    out.writeRawData("WAVEfmt ", 8);
    out << quint32(16) << quint16(1) << quint16(format.channels) << rate << rate * frameSize << frameSize
        << quint16(16);
    out.writeRawData("data", 4);
    out << dataSize;
    for (const float sample : samples)
        out << qint16(std::lround(std::clamp(sample, -1.0F, 1.0F) * 32'767));
}

} // namespace velmora::test
