#include "handlers/sign_in_page_handler.h"

#include "accounts/form_tokens.h"
#include "http/exchange.h"
#include "pages/sign_in_page.h"

namespace velmora::server {

namespace {
constexpr std::size_t longestState = 256;
}

SignInPageHandler::SignInPageHandler(const FormTokens& formTokens, std::optional<LocalUser> localUser)
    : m_formTokens(formTokens)
    , m_localUser(std::move(localUser)) {}

void SignInPageHandler::handle(Exchange& exchange) {
    const auto state = exchange.query("state");
    if (exchange.query("source") != "app" || state.empty() || state.size() > longestState) {
        const auto page = openFromAppPage();
        exchange.sendHtml(400, page.html, page.contentSecurityPolicy);
        return;
    }
    SignInPage content{.state = state,
                       .formToken = m_formTokens.issue(state),
                       .email = {},
                       .problem = {},
                       .localName = std::nullopt};
    if (m_localUser && isOwnConnection(exchange.peer(), exchange.ownAddress())) {
        content.localName = m_localUser->name;
    }
    const auto page = content.render();
    exchange.sendHtml(200, page.html, page.contentSecurityPolicy);
}

} // namespace velmora::server
