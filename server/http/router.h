#pragma once

#include "http/handler.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace velmora::server {

/// Whether a route needs a valid access token.
enum class Access { Public, SignedIn };

/// The table of routes. A path's segment in braces, as in "/v1/meeting/{id}", matches any one segment.
class Router {
public:
    struct Match {
        Handler& handler;
        Access access;
        std::map<std::string, std::string> parameters;
    };

    void add(const std::string& method, const std::string& path, Access access,
             std::unique_ptr<Handler> handler);

    /// Fails with HttpError 404 for an unknown path, and 405 for a known one with another method.
    [[nodiscard]] Match find(const std::string& method, const std::string& path) const;

    /// The methods a path knows, as the Allow header wants them.
    [[nodiscard]] std::string allowedMethods(const std::string& path) const;

private:
    struct Route {
        std::string method;
        std::vector<std::string> segments;
        Access access;
        std::unique_ptr<Handler> handler;
    };

    std::vector<Route> m_routes;
};

} // namespace velmora::server
