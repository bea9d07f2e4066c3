#include "handlers/document_handler.h"

#include "http/exchange.h"

namespace velmora::server {

DocumentHandler::DocumentHandler(std::function<HtmlPage()> page)
    : m_page(std::move(page)) {}

void DocumentHandler::handle(Exchange& exchange) {
    const auto page = m_page();
    exchange.sendHtml(200, page.html, page.contentSecurityPolicy);
}

} // namespace velmora::server
