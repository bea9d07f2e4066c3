#include "http/http_error.h"

namespace velmora::server {

HttpError::HttpError(int status, std::string code, const std::string& message, Details details)
    : std::runtime_error(message)
    , m_status(status)
    , m_code(std::move(code))
    , m_details(std::move(details)) {}

} // namespace velmora::server
