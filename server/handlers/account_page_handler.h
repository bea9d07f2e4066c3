#pragma once

#include "handlers/local_user_offer.h"
#include "http/handler.h"

namespace velmora::server {

class FormTokens;

/// GET /account: asks whose account it is.
class AccountPageHandler : public Handler {
public:
    AccountPageHandler(const FormTokens& formTokens, const LocalUserOffer& localUser);

    void handle(Exchange& exchange) override;

private:
    const FormTokens& m_formTokens;
    const LocalUserOffer& m_localUser;
};

} // namespace velmora::server
