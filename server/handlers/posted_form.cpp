#include "handlers/posted_form.h"

#include "http/exchange.h"
#include "http/http_error.h"

namespace velmora::server {

namespace {

constexpr std::size_t formLimit = 16 * 1024;

/// Browsers say where a form was sent from; programs that say nothing still need the form's token.
void checkOrigin(const Exchange& exchange) {
    const auto site = exchange.header("Sec-Fetch-Site");
    const auto origin = exchange.header("Origin");
    const auto host = exchange.header("Host");
    const bool siteFits = site.empty() || site == "same-origin" || site == "none";
    const bool originFits = origin.empty() || origin == "http://" + host || origin == "https://" + host;
    if (!siteFits || !originFits) {
        throw HttpError(403, "cross_site", "Форма отправлена с чужой страницы");
    }
}

} // namespace

PostedForm::PostedForm(Exchange& exchange) {
    checkOrigin(exchange);
    try {
        m_form.read(exchange.readBody(formLimit));
    } catch (const Poco::Exception&) {
        throw HttpError(400, "bad_request", "Форму не удалось прочитать");
    }
}

} // namespace velmora::server
