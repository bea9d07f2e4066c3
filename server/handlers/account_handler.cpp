#include "handlers/account_handler.h"

#include "accounts/form_tokens.h"
#include "accounts/session_store.h"
#include "accounts/sign_in_service.h"
#include "handlers/posted_form.h"
#include "handlers/retry_after.h"
#include "http/client_network.h"
#include "http/exchange.h"
#include "pages/account_page.h"

#include <Poco/Net/SocketAddress.h>

namespace velmora::server {

namespace {

/// What the form token of an account's page is made for.
std::string stateOf(const AccountStore::WithPassword& visitor) {
    return "account " + visitor.account.id + ' ' + visitor.passwordHash;
}

std::string networkOf(const Exchange& exchange) {
    return clientNetwork(exchange.peer().host());
}

} // namespace

AccountHandler::AccountHandler(SignInService& service, AccountStore& accounts, SessionStore& sessions,
                               const FormTokens& formTokens, const LocalUserOffer& localUser)
    : m_service(service)
    , m_accounts(accounts)
    , m_sessions(sessions)
    , m_formTokens(formTokens)
    , m_localUser(localUser) {}

void AccountHandler::handle(Exchange& exchange) {
    const PostedForm form(exchange);
    std::optional<Visitor> visitor;
    try {
        visitor = visitorOf(form, exchange);
        const auto notice = act(form, exchange, *visitor);
        sendAccount(exchange, 200, visitor->account.id, notice, {});
    } catch (const SignInFailure& failure) {
        setRetryAfter(exchange, failure.retryAfter());
        if (visitor) {
            sendAccount(exchange, failure.status(), visitor->account.id, {}, failure.what());
            return;
        }
        const auto page = AccountEntryPage{.formToken = m_formTokens.issue(entryState),
                                           .email = form.field("email"),
                                           .problem = failure.what(),
                                           .localName = m_localUser.nameFor(exchange)}
                              .render();
        exchange.sendHtml(failure.status(), page.html, page.contentSecurityPolicy);
    }
}

AccountHandler::Visitor AccountHandler::visitorOf(const PostedForm& form, const Exchange& exchange) {
    const auto token = form.field("form_token");
    const auto id = form.field("account");
    if (id.empty()) {
        if (!m_formTokens.verify(token, entryState)) {
            throw SignInFailure::stalePage();
        }
        return m_accounts.byEmail(entering(form, exchange).email).value();
    }
    auto visitor = m_accounts.byIdWithPassword(id);
    if (!visitor || !m_formTokens.verify(token, stateOf(*visitor))) {
        throw SignInFailure::stalePage();
    }
    // An account without a password is its user's alone, whoever has come by the page.
    const auto user = m_localUser.to(exchange);
    if (visitor->passwordHash.empty() && (!user || user->email != visitor->account.email)) {
        throw SignInFailure::stalePage();
    }
    return *visitor;
}

Account AccountHandler::entering(const PostedForm& form, const Exchange& exchange) {
    const auto action = form.field("action");
    if (const auto user = m_localUser.to(exchange); user && action == "local") {
        return m_service.signInLocally(*user);
    }
    if (action == "sign_in") {
        return m_service.signIn(form.field("email"), form.field("password"), networkOf(exchange));
    }
    throw SignInFailure(400, "Войдите в аккаунт.");
}

std::string AccountHandler::act(const PostedForm& form, const Exchange& exchange, const Visitor& visitor) {
    if (form.field("account").empty()) {
        return {};
    }
    const auto action = form.field("action");
    if (action == "end_sessions") {
        m_sessions.revokeAll(visitor.account.id);
        return "Все сеансы завершены. Velmora попросит войти снова.";
    }
    if (action == "change_password" && !visitor.passwordHash.empty()) {
        m_service.changePassword(visitor.account, form.field("password"), form.field("new_password"),
                                 networkOf(exchange));
        m_sessions.revokeAll(visitor.account.id);
        return "Пароль изменён, все сеансы завершены. Войдите в Velmora с новым паролем.";
    }
    throw SignInFailure(400, "Такого действия нет.");
}

void AccountHandler::sendAccount(Exchange& exchange, int status, const std::string& accountId,
                                 const std::string& notice, const std::string& problem) {
    // Read anew: the password may be another one by now, and with it the token.
    const auto visitor = m_accounts.byIdWithPassword(accountId).value();
    const auto page = AccountPage{.email = visitor.account.email,
                                  .accountId = accountId,
                                  .formToken = m_formTokens.issue(stateOf(visitor)),
                                  .sessions = m_sessions.count(accountId),
                                  .hasPassword = !visitor.passwordHash.empty(),
                                  .notice = notice,
                                  .problem = problem}
                          .render();
    exchange.sendHtml(status, page.html, page.contentSecurityPolicy);
}

} // namespace velmora::server
