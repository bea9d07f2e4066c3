#include "handlers/sign_in_handler.h"

#include "accounts/access_tokens.h"
#include "accounts/form_tokens.h"
#include "accounts/session_store.h"
#include "accounts/sign_in_service.h"
#include "handlers/posted_form.h"
#include "handlers/retry_after.h"
#include "handlers/sign_in_page_handler.h"
#include "http/client_network.h"
#include "http/exchange.h"
#include "pages/sign_in_page.h"

#include <Poco/Net/SocketAddress.h>

namespace velmora::server {

SignInHandler::SignInHandler(SignInService& service, SessionStore& sessions, const AccessTokens& tokens,
                             const FormTokens& formTokens, const LocalUserOffer& localUser)
    : m_service(service)
    , m_sessions(sessions)
    , m_tokens(tokens)
    , m_formTokens(formTokens)
    , m_localUser(localUser) {}

void SignInHandler::handle(Exchange& exchange) {
    const PostedForm form(exchange);
    const auto state = form.field("state");
    if (!SignInPageHandler::acceptsState(state)) {
        const auto page = openFromAppPage();
        exchange.sendHtml(400, page.html, page.contentSecurityPolicy);
        return;
    }
    try {
        if (!m_formTokens.verify(form.field("form_token"), state)) {
            throw SignInFailure::stalePage();
        }
        const auto account = accountFor(form, exchange);
        const auto session = m_sessions.open(account.id);
        const auto page = signedInPage(callbackUrl(m_tokens.issue(session), session.refreshToken, state));
        exchange.sendHtml(200, page.html, page.contentSecurityPolicy);
    } catch (const SignInFailure& failure) {
        setRetryAfter(exchange, failure.retryAfter());
        const auto page = SignInPage{.state = state,
                                     .formToken = m_formTokens.issue(state),
                                     .email = form.field("email"),
                                     .problem = failure.what(),
                                     .localName = m_localUser.nameFor(exchange)}
                              .render();
        exchange.sendHtml(failure.status(), page.html, page.contentSecurityPolicy);
    }
}

Account SignInHandler::accountFor(const PostedForm& form, const Exchange& exchange) {
    const auto action = form.field("action");
    const auto network = clientNetwork(exchange.peer().host());
    if (const auto user = m_localUser.to(exchange); user && action == "local") {
        return m_service.signInLocally(*user);
    }
    if (action == "create") {
        return m_service.createAccount(form.field("email"), form.field("password"), network);
    }
    if (action == "sign_in") {
        return m_service.signIn(form.field("email"), form.field("password"), network);
    }
    throw SignInFailure(400, "Войдите или создайте аккаунт.");
}

} // namespace velmora::server
