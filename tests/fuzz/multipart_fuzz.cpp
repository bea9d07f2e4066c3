#include "http/http_error.h"
#include "http/multipart_upload.h"

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <sstream>
#include <string>

/// The input is a Content-Type header's value, a line feed, and the body that was sent with it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::string input(reinterpret_cast<const char*>(data), size);
    const auto lineEnd = std::min(input.find('\n'), size);
    std::istringstream body(input.substr(std::min(lineEnd + 1, size)));
    std::size_t received = 0;
    try {
        velmora::server::receivePart(body, input.substr(0, lineEnd), "file",
                                     [&](std::span<const char> bytes) { received += bytes.size(); });
    } catch (const velmora::server::HttpError& error) {
        if (error.status() != 400) {
            std::abort();
        }
    }
    if (received > size) {
        std::abort();
    }
    return 0;
}
