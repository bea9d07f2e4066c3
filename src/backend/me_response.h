#pragma once

#include "backend/backend_preferences.h"
#include "backend/backend_user.h"

namespace velmora {

/// The reply of /v1/auth/me.
struct MeResponse {
    BackendUser user;
    BackendPreferences preferences;

    bool operator==(const MeResponse&) const = default;

    static constexpr auto jsonFields() {
        return std::tuple(json::field("user", &MeResponse::user),
                          json::field("preferences", &MeResponse::preferences));
    }
};

} // namespace velmora
