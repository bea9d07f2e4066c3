#pragma once

#include <stdlib.h>

#include <filesystem>
#include <system_error>

namespace velmora::server {

/// A folder of its own for one test, removed with this object.
class TestFolder {
public:
    TestFolder() {
        auto name = (std::filesystem::temp_directory_path() / "velmora-server-test-XXXXXX").string();
        if (!::mkdtemp(name.data())) {
            throw std::system_error(errno, std::generic_category(), "mkdtemp");
        }
        m_path = name;
    }
    ~TestFolder() {
        std::error_code ignored;
        std::filesystem::remove_all(m_path, ignored);
    }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& path() const { return m_path; }

private:
    std::filesystem::path m_path;
};

} // namespace velmora::server
