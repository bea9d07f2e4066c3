#include "handlers/account_page_handler.h"

#include "accounts/form_tokens.h"
#include "handlers/account_handler.h"
#include "http/exchange.h"
#include "pages/account_page.h"

namespace velmora::server {

AccountPageHandler::AccountPageHandler(const FormTokens& formTokens, const LocalUserOffer& localUser)
    : m_formTokens(formTokens)
    , m_localUser(localUser) {}

void AccountPageHandler::handle(Exchange& exchange) {
    const auto page = AccountEntryPage{.formToken = m_formTokens.issue(AccountHandler::entryState),
                                       .email = {},
                                       .problem = {},
                                       .localName = m_localUser.nameFor(exchange)}
                          .render();
    exchange.sendHtml(200, page.html, page.contentSecurityPolicy);
}

} // namespace velmora::server
