#include "http/http_error.h"

namespace velmora::server {

HttpError::HttpError(int status, std::string code, const std::string& message, Details details)
    : std::runtime_error(message)
    , m_status(status)
    , m_code(std::move(code))
    , m_details(std::move(details)) {}

HttpError HttpError::busy() {
    return {503, "busy", "Сервер занят. Повторите через несколько секунд"};
}

HttpError HttpError::tooSlow() {
    return {408, "timeout", "Запрос передавался слишком долго"};
}

HttpError HttpError::tooLarge() {
    return {413, "too_large", "Слишком большой запрос"};
}

Poco::JSON::Object HttpError::body() const {
    Poco::JSON::Object body;
    body.set("code", m_code);
    body.set("message", std::string(what()));
    if (!m_details.empty()) {
        Poco::JSON::Object details;
        for (const auto& [key, value] : m_details) {
            details.set(key, value);
        }
        body.set("details", details);
    }
    return body;
}

} // namespace velmora::server
