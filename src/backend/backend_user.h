#pragma once

#include "foundation/json_value.h"

namespace velmora {

/// The account, as the backend knows it.
struct BackendUser {
    QString id;
    QString email;
    std::optional<Date> emailVerifiedAt;
    bool isAdmin = false;
    Date createdAt;

    bool operator==(const BackendUser&) const = default;

    static constexpr auto jsonFields() {
        return std::tuple(json::field("id", &BackendUser::id), json::field("email", &BackendUser::email),
                          json::field("emailVerifiedAt", &BackendUser::emailVerifiedAt),
                          json::field("isAdmin", &BackendUser::isAdmin),
                          json::field("createdAt", &BackendUser::createdAt));
    }
};

} // namespace velmora
