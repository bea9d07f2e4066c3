#include "accounts/password_hasher.h"

#include <gmock/gmock.h>

#include <fstream>
#include <thread>

namespace velmora::server {
namespace {

/// The most memory this process has had since it was asked to forget, in MiB.
long peak() {
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.starts_with("VmHWM:")) {
            return std::stol(line.substr(6)) / 1024;
        }
    }
    return -1;
}

TEST(PasswordHasher, VerifiesWhatItHashed_AndNothingElse) {
    PasswordHasher hasher;
    const auto hash = hasher.hash("correct horse");
    EXPECT_TRUE(hasher.verify(hash, "correct horse"));
    EXPECT_FALSE(hasher.verify(hash, "correct horsf"));
    EXPECT_FALSE(hasher.verify("no hash", "correct horse"));
    EXPECT_NE(hasher.hash("correct horse"), hash) << "each has a salt of its own";
}

TEST(PasswordHasher, ManyAtOnce_TakeTheMemoryOfTwo) {
    PasswordHasher hasher;
    std::ofstream("/proc/self/clear_refs") << "5";
    const auto before = peak();
    ASSERT_GT(before, 0);
    {
        std::vector<std::jthread> threads;
        for (int i = 0; i < 12; ++i) {
            threads.emplace_back([&] { static_cast<void>(hasher.hash("correct horse")); });
        }
    }
    EXPECT_GE(peak() - before, 60);
    EXPECT_LE(peak() - before, 2 * 64 + 40);
}

} // namespace
} // namespace velmora::server
