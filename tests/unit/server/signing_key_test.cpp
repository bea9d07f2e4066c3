#include "accounts/signing_key.h"
#include "test_folder.h"

#include <gmock/gmock.h>

#include <fstream>

namespace velmora::server {
namespace {

TEST(SigningKey, MadeOnce_ReadAgain_AndPrivate) {
    const TestFolder folder;
    const auto file = folder.path() / "key";
    const auto first = SigningKey(file).derive(SigningKey::Purpose::AccessTokens);
    EXPECT_EQ(SigningKey(file).derive(SigningKey::Purpose::AccessTokens), first);
    EXPECT_EQ(std::filesystem::status(file).permissions(),
              std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
    EXPECT_FALSE(std::filesystem::exists(folder.path() / "key.new"));
}

TEST(SigningKey, Purposes_HaveKeysOfTheirOwn) {
    const TestFolder folder;
    const SigningKey key(folder.path() / "key");
    EXPECT_NE(key.derive(SigningKey::Purpose::AccessTokens), key.derive(SigningKey::Purpose::FormTokens));
}

TEST(SigningKey, Installations_Differ) {
    const TestFolder folder;
    EXPECT_NE(SigningKey(folder.path() / "a").derive(SigningKey::Purpose::AccessTokens),
              SigningKey(folder.path() / "b").derive(SigningKey::Purpose::AccessTokens));
}

TEST(SigningKey, BrokenFile_IsRefusedAndLeftAlone) {
    const TestFolder folder;
    const auto file = folder.path() / "key";
    std::ofstream(file) << "short";
    EXPECT_THROW(SigningKey{file}, std::runtime_error);
    EXPECT_EQ(std::filesystem::file_size(file), 5U);
}

} // namespace
} // namespace velmora::server
