#pragma once

#include "accounts/local_user.h"
#include "http/handler.h"

#include <optional>

namespace velmora::server {

class FormTokens;

/// GET /auth?source=app&state=…: the page where one signs in or creates an account.
class SignInPageHandler : public Handler {
public:
    SignInPageHandler(const FormTokens& formTokens, std::optional<LocalUser> localUser);

    void handle(Exchange& exchange) override;

private:
    const FormTokens& m_formTokens;
    std::optional<LocalUser> m_localUser;
};

} // namespace velmora::server
