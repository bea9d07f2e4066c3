#include "http/request_head.h"

#include "http/http_error.h"

#include <Poco/String.h>
#include <Poco/URI.h>

#include <algorithm>
#include <charconv>
#include <sstream>

namespace velmora::server {

namespace {

[[noreturn]] void refuse(const std::string& message) {
    throw HttpError(400, "bad_request", message);
}

std::uint64_t bodyLengthOf(const Poco::Net::HTTPRequest& request) {
    if (request.has(Poco::Net::HTTPMessage::TRANSFER_ENCODING)) {
        throw HttpError(411, "length_required", "Запрос должен называть свою длину");
    }
    std::optional<std::int64_t> length;
    for (const auto& [name, text] : request) {
        if (Poco::icompare(name, Poco::Net::HTTPMessage::CONTENT_LENGTH) != 0) {
            continue;
        }
        if (length) {
            refuse("Content-Length указан дважды");
        }
        const auto* end = text.data() + text.size();
        const auto read = std::from_chars(text.data(), end, length.emplace());
        if (read.ec != std::errc() || read.ptr != end || *length < 0) {
            refuse("Content-Length должен быть числом");
        }
    }
    return static_cast<std::uint64_t>(length.value_or(0));
}

} // namespace

std::optional<std::size_t> endOfHead(std::string_view bytes, std::size_t from) {
    // The blank line may have begun with what was there before.
    constexpr std::size_t blankLine = 3;
    for (auto at = bytes.find('\n', from - std::min(from, blankLine)); at != std::string_view::npos;
         at = bytes.find('\n', at + 1)) {
        const auto rest = bytes.substr(at + 1);
        if (rest.starts_with("\r\n")) {
            return at + 3;
        }
        if (rest.starts_with('\n')) {
            return at + 2;
        }
    }
    return std::nullopt;
}

RequestHead::RequestHead(const std::string& bytes) {
    try {
        std::istringstream stream(bytes);
        m_request.read(stream);
    } catch (const Poco::Exception&) {
        refuse("Запрос не удалось прочитать");
    }
    m_bodyLength = bodyLengthOf(m_request);
    try {
        const Poco::URI uri(m_request.getURI());
        m_path = uri.getPath();
        m_query = uri.getQueryParameters();
    } catch (const Poco::Exception&) {
        m_path.clear();
    }
}

std::string RequestHead::query(const std::string& key) const {
    const auto found = std::ranges::find(m_query, key, &std::pair<std::string, std::string>::first);
    return found == m_query.end() ? std::string() : found->second;
}

} // namespace velmora::server
