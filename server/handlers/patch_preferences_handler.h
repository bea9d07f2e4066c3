#pragma once

#include "http/handler.h"

namespace velmora::server {

class AccountStore;

/// PATCH /v1/me/preferences: changes what the body names, answers with the whole.
class PatchPreferencesHandler : public Handler {
public:
    explicit PatchPreferencesHandler(AccountStore& accounts)
        : m_accounts(accounts) {}

    void handle(Exchange& exchange) override;

private:
    AccountStore& m_accounts;
};

} // namespace velmora::server
