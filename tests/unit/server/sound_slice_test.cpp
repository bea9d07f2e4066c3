#include "speech/sample_rate.h"
#include "speech/sound_slice.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

namespace velmora::server {
namespace {

class SoundSliceTest : public testing::Test {
protected:
    SoundSliceTest() { EXPECT_EQ(::pipe2(m_ends, O_CLOEXEC), 0); }
    ~SoundSliceTest() override {
        endInput();
        ::close(m_ends[0]);
    }

    [[nodiscard]] int input() const { return m_ends[1]; }
    [[nodiscard]] int output() const { return m_ends[0]; }
    void endInput() {
        if (m_ends[1] >= 0) {
            ::close(std::exchange(m_ends[1], -1));
        }
    }

private:
    int m_ends[2]{-1, -1};
};

TEST_F(SoundSliceTest, Slice_ComesOutAsItWentIn) {
    const SoundSlice full{std::chrono::milliseconds(1234), std::vector<std::int16_t>(sliceSize, -7)};
    const SoundSlice empty{};
    writeSlice(input(), full);
    writeSlice(input(), empty);
    EXPECT_EQ(readSlice(output()), full);
    EXPECT_EQ(readSlice(output()), empty);
}

TEST_F(SoundSliceTest, LargerThanASlice_IsNotTakenIn) {
    writeSlice(input(), {{}, std::vector<std::int16_t>(sliceSize + 1)});
    EXPECT_EQ(readSlice(output()), std::nullopt);
}

TEST_F(SoundSliceTest, CutShort_IsNoSlice) {
    writeSlice(input(), {{}, std::vector<std::int16_t>(100)});
    char bytes[216];
    ASSERT_EQ(::read(output(), bytes, sizeof bytes), static_cast<ssize_t>(sizeof bytes));
    for (const std::size_t length : {std::size_t{0}, std::size_t{10}, sizeof bytes - 1}) {
        ASSERT_EQ(::write(input(), bytes, length), static_cast<ssize_t>(length));
        int rest[2];
        ASSERT_EQ(::pipe2(rest, O_CLOEXEC), 0);
        ASSERT_EQ(::write(rest[1], bytes, length), static_cast<ssize_t>(length));
        ::close(rest[1]);
        EXPECT_EQ(readSlice(rest[0]), std::nullopt) << length;
        ::close(rest[0]);
    }
}

} // namespace
} // namespace velmora::server
