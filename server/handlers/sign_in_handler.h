#pragma once

#include "accounts/account.h"
#include "accounts/local_user.h"
#include "http/handler.h"

#include <optional>

namespace Poco::Net {
class HTMLForm;
}

namespace velmora::server {

class AccessTokens;
class FormTokens;
class SessionStore;
class SignInService;

/// POST /auth: the form of the sign-in page. Answers with the page that leads back into the application, or
/// with the form again and what was wrong.
class SignInHandler : public Handler {
public:
    SignInHandler(SignInService& service, SessionStore& sessions, const AccessTokens& tokens,
                  const FormTokens& formTokens, std::optional<LocalUser> localUser);

    void handle(Exchange& exchange) override;

private:
    [[nodiscard]] Account accountFor(const Poco::Net::HTMLForm& form, const Exchange& exchange);
    [[nodiscard]] bool offersLocalUser(const Exchange& exchange) const;

    SignInService& m_service;
    SessionStore& m_sessions;
    const AccessTokens& m_tokens;
    const FormTokens& m_formTokens;
    std::optional<LocalUser> m_localUser;
};

} // namespace velmora::server
