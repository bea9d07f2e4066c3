#include "attack_files.h"
#include "speech/sample_rate.h"
#include "speech/sound_file.h"
#include "speech/temp_file.h"
#include "speech/wav.h"
#include "test_folder.h"

#include <gmock/gmock.h>

namespace velmora::server {
namespace {

using Samples = std::vector<std::int16_t>;

/// In this process, for what looks the same from outside whether it was refused or crashed.
TEST(SoundFile, ContainerWithoutSound_IsRefused) {
    const TestFolder folder;
    TempFile file(folder.path());
    file.append(wavFile({}));
    SoundFile sound(file.descriptor());
    EXPECT_THROW(static_cast<void>(sound.read()), AudioError);
}

TEST(SoundFile, LongFrame_ComesInSlices_AndNothingBehindThem) {
    const TestFolder folder;
    TempFile file(folder.path());
    file.append(constantFlac(4000));
    SoundFile sound(file.descriptor());
    std::size_t total = 0;
    auto slice = sound.read();
    for (; slice.size() == sliceSize; slice = sound.read()) {
        total += slice.size();
    }
    EXPECT_NEAR(static_cast<double>(total + slice.size()), 65'535 * 4, 20);
    EXPECT_EQ(sound.read(), Samples());
}

} // namespace
} // namespace velmora::server
