#include "speech/temp_file.h"

#include <fcntl.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace velmora::server {

namespace {

[[noreturn]] void fail() {
    throw std::system_error(errno, std::generic_category(), "temporary file");
}

} // namespace

TempFile::TempFile(const std::filesystem::path& folder) {
    auto name = (folder / "upload-XXXXXX").string();
    m_descriptor = ::mkostemp(name.data(), O_CLOEXEC);
    if (m_descriptor < 0) {
        fail();
    }
    ::unlink(name.c_str());
}

TempFile::~TempFile() {
    ::close(m_descriptor);
}

void TempFile::append(std::span<const char> bytes) {
    while (!bytes.empty()) {
        const auto written = ::write(m_descriptor, bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR) {
            fail();
        }
        bytes = bytes.subspan(static_cast<std::size_t>(std::max<ssize_t>(written, 0)));
    }
}

} // namespace velmora::server
