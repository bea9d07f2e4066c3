#pragma once

#include "http/handler.h"
#include "pages/html.h"

#include <functional>

namespace velmora::server {

/// GET of a page that is the same for everybody.
class DocumentHandler : public Handler {
public:
    explicit DocumentHandler(std::function<HtmlPage()> page);

    void handle(Exchange& exchange) override;

private:
    std::function<HtmlPage()> m_page;
};

} // namespace velmora::server
