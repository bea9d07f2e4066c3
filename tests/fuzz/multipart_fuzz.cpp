#include "fuzz.h"
#include "http/http_error.h"
#include "http/multipart_upload.h"

#include <algorithm>
#include <span>
#include <sstream>
#include <string>

/// The input is a Content-Type header's value, a line feed, and the body that was sent with it.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using velmora::fuzz::require;
    const std::string input(reinterpret_cast<const char*>(data), size);
    const auto lineEnd = std::min(input.find('\n'), size);
    std::istringstream body(input.substr(std::min(lineEnd + 1, size)));
    std::size_t received = 0;
    try {
        velmora::server::receivePart(body, input.substr(0, lineEnd), "file",
                                     [&](std::span<const char> bytes) { received += bytes.size(); });
    } catch (const velmora::server::HttpError& error) {
        require(error.status() == 400, "a malformed body is a bad request");
    }
    require(received <= size, "a part is no larger than its body");
    return 0;
}
