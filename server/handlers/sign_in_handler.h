#pragma once

#include "accounts/account.h"
#include "handlers/local_user_offer.h"
#include "http/handler.h"

namespace velmora::server {

class AccessTokens;
class FormTokens;
class PostedForm;
class SessionStore;
class SignInService;

/// POST /auth: the form of the sign-in page. Answers with the page that leads back into the application, or
/// with the form again and what was wrong.
class SignInHandler : public Handler {
public:
    SignInHandler(SignInService& service, SessionStore& sessions, const AccessTokens& tokens,
                  const FormTokens& formTokens, const LocalUserOffer& localUser);

    [[nodiscard]] Work work() const override { return Work::Heavy; }
    void handle(Exchange& exchange) override;

private:
    [[nodiscard]] Account accountFor(const PostedForm& form, const Exchange& exchange);

    SignInService& m_service;
    SessionStore& m_sessions;
    const AccessTokens& m_tokens;
    const FormTokens& m_formTokens;
    const LocalUserOffer& m_localUser;
};

} // namespace velmora::server
