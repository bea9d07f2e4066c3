#pragma once

#include <Poco/Net/HTTPRequest.h>

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velmora::server {

/// Where the head of a request ends, the blank line included; none if it goes on. There is no such end before
/// `from`.
[[nodiscard]] std::optional<std::size_t> endOfHead(std::string_view bytes, std::size_t from = 0);

/// The first line of a request and its header, read and checked.
class RequestHead {
public:
    /// Fails with HttpError: 400 if it can't be read or lies about its length, 411 for a body without one.
    explicit RequestHead(const std::string& bytes);

    [[nodiscard]] const std::string& method() const { return m_request.getMethod(); }

    /// Decoded, without the query. Empty if the address can't be read, which no route has.
    [[nodiscard]] const std::string& path() const { return m_path; }

    /// First value of a query key, empty if there is none.
    [[nodiscard]] std::string query(const std::string& key) const;

    /// A header's value, empty if there is none.
    [[nodiscard]] std::string header(const std::string& name) const { return m_request.get(name, {}); }

    [[nodiscard]] std::uint64_t bodyLength() const { return m_bodyLength; }
    [[nodiscard]] bool expectsContinue() const { return m_request.getExpectContinue(); }
    [[nodiscard]] const std::string& version() const { return m_request.getVersion(); }

private:
    Poco::Net::HTTPRequest m_request;
    std::string m_path;
    std::vector<std::pair<std::string, std::string>> m_query;
    std::uint64_t m_bodyLength = 0;
};

} // namespace velmora::server
