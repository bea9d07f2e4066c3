#include "accounts/random_token.h"

#include "accounts/base64_url.h"

#include <sodium.h>

namespace velmora::server {

std::string randomToken() {
    std::string bytes(32, '\0');
    randombytes_buf(bytes.data(), bytes.size());
    return toBase64Url(bytes);
}

} // namespace velmora::server
