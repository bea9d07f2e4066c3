#include "http/reply.h"

#include "http/http_error.h"

#include <Poco/Timestamp.h>

#include <sstream>

namespace velmora::server {

namespace {

/// In seconds: whatever fills the server has given way or been cut by then.
constexpr auto retryAfter = "5";

} // namespace

std::string wireForm(int status, Poco::Net::HTTPResponse& response) {
    response.setStatusAndReason(static_cast<Poco::Net::HTTPResponse::HTTPStatus>(status));
    response.setVersion(Poco::Net::HTTPMessage::HTTP_1_1);
    response.setDate(Poco::Timestamp());
    response.setKeepAlive(false);
    std::ostringstream text;
    response.write(text);
    return text.str();
}

std::string wireForm(int status, Poco::Net::HTTPResponse& response, const std::string& type,
                     const std::string& text) {
    response.setContentType(type);
    response.setContentLength64(static_cast<Poco::Int64>(text.size()));
    response.set("Cache-Control", "no-store");
    response.set("X-Content-Type-Options", "nosniff");
    return wireForm(status, response) + text;
}

std::string wireForm(const HttpError& error, Poco::Net::HTTPResponse& response) {
    if (error.status() == Poco::Net::HTTPResponse::HTTP_SERVICE_UNAVAILABLE && !response.has("Retry-After")) {
        response.set("Retry-After", retryAfter);
    }
    std::ostringstream text;
    error.body().stringify(text);
    return wireForm(error.status(), response, "application/json; charset=utf-8", text.str());
}

} // namespace velmora::server
