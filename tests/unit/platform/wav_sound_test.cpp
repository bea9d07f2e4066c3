#include "platform/linux/wav_sound.h"

#include <QFile>

#include <gmock/gmock.h>

using namespace Qt::StringLiterals;
using namespace velmora;

namespace {

const QByteArray formatChunk = QByteArray::fromHex("666d7420 10000000 0100 0200 80bb0000 00ee0200 0400 1000");
const QByteArray dataChunk = QByteArray::fromHex("64617461 08000000 0040 00c0 0080 ff7f");

QByteArray riff(const QByteArray& chunks) {
    return "RIFF" + QByteArray::fromHex("00000000") + "WAVE" + chunks;
}

} // namespace

TEST(WavSound, Read_Pcm_GivesItsFormatAndSamples) {
    const auto sound = readWavSound(riff(formatChunk + dataChunk));
    ASSERT_TRUE(sound);
    EXPECT_EQ(sound->sampleRate, 48'000);
    EXPECT_EQ(sound->channels, 2);
    EXPECT_THAT(sound->samples, testing::ElementsAre(0.5F, -0.5F, -1.0F, testing::FloatNear(1.0F, 1e-4F)));
}

TEST(WavSound, Read_ForeignChunkOfOddSize_IsSkipped) {
    const QByteArray foreign = QByteArray::fromHex("4c495354 03000000 61626300");
    const auto sound = readWavSound(riff(foreign + formatChunk + foreign + dataChunk));
    ASSERT_TRUE(sound);
    EXPECT_EQ(sound->samples.size(), 4U);
}

TEST(WavSound, Read_AnythingElse_IsNone) {
    const QByteArray whole = riff(formatChunk + dataChunk);
    for (qsizetype size = 0; size < whole.size(); ++size)
        EXPECT_FALSE(readWavSound(whole.first(size))) << size;
    EXPECT_FALSE(readWavSound(riff(dataChunk + formatChunk)));
    QByteArray compressed = whole;
    compressed[20] = 2;
    EXPECT_FALSE(readWavSound(compressed));
    QByteArray eightBit = whole;
    eightBit[34] = 8;
    EXPECT_FALSE(readWavSound(eightBit));
}

class ShippedSoundTest : public testing::TestWithParam<const char*> {};

INSTANTIATE_TEST_SUITE_P(Sounds, ShippedSoundTest, testing::Values("Tink", "Pop"));

TEST_P(ShippedSoundTest, Samples_Always_AreShortAndWithoutClicks) {
    QFile file(QStringLiteral(SOUNDS_FOLDER "/%1.wav").arg(QLatin1String(GetParam())));
    ASSERT_TRUE(file.open(QFile::ReadOnly));
    const auto sound = readWavSound(file.readAll());
    ASSERT_TRUE(sound);
    EXPECT_EQ(sound->sampleRate, 48'000);
    EXPECT_EQ(sound->channels, 1);
    const double seconds = double(sound->samples.size()) / sound->sampleRate;
    EXPECT_GT(seconds, 0.08);
    EXPECT_LT(seconds, 0.13);
    float peak = 0;
    for (const float sample : sound->samples)
        peak = std::max(peak, std::abs(sample));
    EXPECT_NEAR(peak, 0.5, 0.001);
    EXPECT_LT(std::abs(sound->samples.front()), 0.001);
    EXPECT_LT(std::abs(sound->samples.back()), 0.001);
}
