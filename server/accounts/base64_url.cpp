#include "accounts/base64_url.h"

#include <sodium.h>

namespace velmora::server {

std::string toBase64Url(std::string_view bytes) {
    std::string text(sodium_base64_encoded_len(bytes.size(), sodium_base64_VARIANT_URLSAFE_NO_PADDING), '\0');
    sodium_bin2base64(text.data(), text.size(), reinterpret_cast<const unsigned char*>(bytes.data()),
                      bytes.size(), sodium_base64_VARIANT_URLSAFE_NO_PADDING);
    text.pop_back();
    return text;
}

std::optional<std::string> fromBase64Url(std::string_view text) {
    std::string bytes(text.size(), '\0');
    std::size_t size = 0;
    if (sodium_base642bin(reinterpret_cast<unsigned char*>(bytes.data()), bytes.size(), text.data(),
                          text.size(), nullptr, &size, nullptr,
                          sodium_base64_VARIANT_URLSAFE_NO_PADDING) != 0) {
        return std::nullopt;
    }
    bytes.resize(size);
    return bytes;
}

} // namespace velmora::server
