#pragma once

#include <functional>
#include <istream>
#include <span>
#include <string>

namespace velmora::server {

/// Reads a "multipart/form-data" body to its end and hands the bytes of the part called `name` to `sink` as
/// they come; other parts are dropped. Fails with HttpError 400 if the body is malformed, cut short, or has
/// not exactly one such part.
void receivePart(std::istream& body, const std::string& contentType, const std::string& name,
                 const std::function<void(std::span<const char>)>& sink);

} // namespace velmora::server
