#include "handlers/sign_in_handler.h"

#include "accounts/access_tokens.h"
#include "accounts/form_tokens.h"
#include "accounts/session_store.h"
#include "accounts/sign_in_service.h"
#include "http/exchange.h"
#include "http/http_error.h"
#include "pages/sign_in_page.h"

#include <Poco/Net/HTMLForm.h>
#include <Poco/Net/SocketAddress.h>

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

SignInHandler::SignInHandler(SignInService& service, SessionStore& sessions, const AccessTokens& tokens,
                             const FormTokens& formTokens, std::optional<LocalUser> localUser)
    : m_service(service)
    , m_sessions(sessions)
    , m_tokens(tokens)
    , m_formTokens(formTokens)
    , m_localUser(std::move(localUser)) {}

void SignInHandler::handle(Exchange& exchange) {
    checkOrigin(exchange);
    Poco::Net::HTMLForm form;
    form.read(exchange.readBody(formLimit));
    const auto state = form.get("state", {});
    try {
        if (state.empty() || !m_formTokens.verify(form.get("form_token", {}), state)) {
            throw SignInFailure(400, "Страница устарела. Попробуйте ещё раз.");
        }
        const auto account = accountFor(form, exchange);
        const auto session = m_sessions.open(account.id);
        const auto page =
            signedInPage(callbackUrl(m_tokens.issue({account.id, session.id}), session.refreshToken, state));
        exchange.sendHtml(200, page.html, page.contentSecurityPolicy);
    } catch (const SignInFailure& failure) {
        SignInPage content{.state = state,
                           .formToken = m_formTokens.issue(state),
                           .email = form.get("email", {}),
                           .problem = failure.what(),
                           .localName = std::nullopt};
        if (offersLocalUser(exchange)) {
            content.localName = m_localUser->name;
        }
        const auto page = content.render();
        exchange.sendHtml(failure.status(), page.html, page.contentSecurityPolicy);
    }
}

Account SignInHandler::accountFor(const Poco::Net::HTMLForm& form, const Exchange& exchange) {
    const auto action = form.get("action", {});
    const auto peer = exchange.peer().host().toString();
    if (action == "local" && offersLocalUser(exchange)) {
        return m_service.signInLocally(*m_localUser);
    }
    if (action == "create") {
        return m_service.createAccount(form.get("email", {}), form.get("password", {}), peer);
    }
    if (action == "sign_in") {
        return m_service.signIn(form.get("email", {}), form.get("password", {}), peer);
    }
    throw SignInFailure(400, "Войдите или создайте аккаунт.");
}

bool SignInHandler::offersLocalUser(const Exchange& exchange) const {
    return m_localUser && isOwnConnection(exchange.peer(), exchange.ownAddress());
}

} // namespace velmora::server
