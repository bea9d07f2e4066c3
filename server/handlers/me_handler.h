#pragma once

#include "http/handler.h"

namespace velmora::server {

class AccountStore;

/// GET /v1/auth/me: the account and its preferences.
class MeHandler : public Handler {
public:
    explicit MeHandler(AccountStore& accounts)
        : m_accounts(accounts) {}

    void handle(Exchange& exchange) override;

private:
    AccountStore& m_accounts;
};

} // namespace velmora::server
