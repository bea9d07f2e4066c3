#pragma once

#include <Poco/Net/HTMLForm.h>

#include <string>

namespace velmora::server {

class Exchange;

/// What a form of one of the server's pages brings. Whether it was such a page its token has to prove.
class PostedForm {
public:
    /// Fails with HttpError 403 if a browser says that another site sent it.
    explicit PostedForm(Exchange& exchange);

    /// Empty if there is none.
    [[nodiscard]] std::string field(const std::string& name) const { return m_form.get(name, {}); }

private:
    Poco::Net::HTMLForm m_form;
};

} // namespace velmora::server
