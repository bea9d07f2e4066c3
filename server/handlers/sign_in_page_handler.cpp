#include "handlers/sign_in_page_handler.h"

#include "accounts/form_tokens.h"
#include "http/exchange.h"
#include "pages/sign_in_page.h"

namespace velmora::server {

namespace {
constexpr std::size_t longestState = 256;
}

SignInPageHandler::SignInPageHandler(const FormTokens& formTokens, const LocalUserOffer& localUser)
    : m_formTokens(formTokens)
    , m_localUser(localUser) {}

bool SignInPageHandler::acceptsState(const std::string& state) {
    return !state.empty() && state.size() <= longestState;
}

void SignInPageHandler::handle(Exchange& exchange) {
    const auto state = exchange.query("state");
    if (exchange.query("source") != "app" || !acceptsState(state)) {
        const auto page = openFromAppPage();
        exchange.sendHtml(400, page.html, page.contentSecurityPolicy);
        return;
    }
    const auto page = SignInPage{.state = state,
                                 .formToken = m_formTokens.issue(state),
                                 .email = {},
                                 .problem = {},
                                 .localName = m_localUser.nameFor(exchange)}
                          .render();
    exchange.sendHtml(200, page.html, page.contentSecurityPolicy);
}

} // namespace velmora::server
