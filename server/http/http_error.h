#pragma once

#include <Poco/JSON/Object.h>

#include <map>
#include <stdexcept>
#include <string>

namespace velmora::server {

/// A request's failure: becomes a JSON body `{code, message, details?}`. The message is Russian, for the
/// user.
class HttpError : public std::runtime_error {
public:
    using Details = std::map<std::string, std::string>;

    HttpError(int status, std::string code, const std::string& message, Details details = {});

    /// 503: too much is going on just now; the reply says when to come again.
    [[nodiscard]] static HttpError busy();
    /// 408: the request came too slowly.
    [[nodiscard]] static HttpError tooSlow();
    /// 413
    [[nodiscard]] static HttpError tooLarge();

    [[nodiscard]] int status() const { return m_status; }
    [[nodiscard]] const std::string& code() const { return m_code; }
    [[nodiscard]] const Details& details() const { return m_details; }
    [[nodiscard]] Poco::JSON::Object body() const;

private:
    int m_status;
    std::string m_code;
    Details m_details;
};

} // namespace velmora::server
