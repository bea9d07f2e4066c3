#pragma once

#include "handlers/local_user_offer.h"
#include "http/handler.h"

#include <string>

namespace velmora::server {

class FormTokens;

/// GET /auth?source=app&state=…: the page where one signs in or creates an account.
class SignInPageHandler : public Handler {
public:
    SignInPageHandler(const FormTokens& formTokens, const LocalUserOffer& localUser);

    /// True for what an application sends as state; pages are made for nothing else.
    [[nodiscard]] static bool acceptsState(const std::string& state);

    void handle(Exchange& exchange) override;

private:
    const FormTokens& m_formTokens;
    const LocalUserOffer& m_localUser;
};

} // namespace velmora::server
