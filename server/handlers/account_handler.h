#pragma once

#include "accounts/account_store.h"
#include "handlers/local_user_offer.h"
#include "http/handler.h"

namespace velmora::server {

class FormTokens;
class PostedForm;
class SessionStore;
class SignInService;

/// POST /account: the forms of the account page. The browser gets no session: who has shown who they are gets
/// a page whose forms carry a token for this account, good for an hour and until the password changes.
class AccountHandler : public Handler {
public:
    /// What the form token of the entry form is made for.
    static constexpr auto entryState = "entry";

    AccountHandler(SignInService& service, AccountStore& accounts, SessionStore& sessions,
                   const FormTokens& formTokens, const LocalUserOffer& localUser);

    [[nodiscard]] Work work() const override { return Work::Heavy; }
    void handle(Exchange& exchange) override;

private:
    using Visitor = AccountStore::WithPassword;

    [[nodiscard]] Visitor visitorOf(const PostedForm& form, const Exchange& exchange);
    [[nodiscard]] Account entering(const PostedForm& form, const Exchange& exchange);
    /// Does what the form asks for, and says so.
    [[nodiscard]] std::string act(const PostedForm& form, const Exchange& exchange, const Visitor& visitor);
    void sendAccount(Exchange& exchange, int status, const std::string& accountId, const std::string& notice,
                     const std::string& problem);

    SignInService& m_service;
    AccountStore& m_accounts;
    SessionStore& m_sessions;
    const FormTokens& m_formTokens;
    const LocalUserOffer& m_localUser;
};

} // namespace velmora::server
