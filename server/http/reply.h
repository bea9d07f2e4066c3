#pragma once

#include <Poco/Net/HTTPResponse.h>

#include <string>
#include <string_view>

namespace velmora::server {

class HttpError;

/// Tells a peer that waits for it to go on with its body.
constexpr std::string_view continueLine = "HTTP/1.1 100 Continue\r\n\r\n";

/// A reply's head as it goes over the wire. It says that the connection ends with the reply: a kept one would
/// keep what it holds, and a client can't mistake its end for a lost request.
[[nodiscard]] std::string wireForm(int status, Poco::Net::HTTPResponse& response);

/// A whole reply with a text as its body.
[[nodiscard]] std::string wireForm(int status, Poco::Net::HTTPResponse& response, const std::string& type,
                                   const std::string& text);

/// The failure as a reply; of a server that is busy it says when to come again, unless that is set already.
[[nodiscard]] std::string wireForm(const HttpError& error, Poco::Net::HTTPResponse& response);

} // namespace velmora::server
