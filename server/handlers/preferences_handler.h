#pragma once

#include "http/handler.h"

namespace velmora::server {

class AccountStore;

/// GET /v1/me/preferences.
class PreferencesHandler : public Handler {
public:
    explicit PreferencesHandler(AccountStore& accounts)
        : m_accounts(accounts) {}

    void handle(Exchange& exchange) override;

private:
    AccountStore& m_accounts;
};

} // namespace velmora::server
