#include "http/router.h"

#include "http/http_error.h"

#include <algorithm>
#include <sstream>

namespace velmora::server {

namespace {

std::vector<std::string> segmentsOf(const std::string& path) {
    std::vector<std::string> segments;
    std::istringstream stream(path);
    for (std::string segment; std::getline(stream, segment, '/');) {
        segments.push_back(segment);
    }
    if (path.ends_with('/')) {
        segments.emplace_back();
    }
    return segments;
}

bool isParameter(const std::string& segment) {
    return segment.size() > 2 && segment.front() == '{' && segment.back() == '}';
}

bool matches(const std::vector<std::string>& pattern, const std::vector<std::string>& segments) {
    return std::ranges::equal(pattern, segments, [](const std::string& expected, const std::string& given) {
        return isParameter(expected) ? !given.empty() : expected == given;
    });
}

} // namespace

void Router::add(const std::string& method, const std::string& path, Access access,
                 std::unique_ptr<Handler> handler) {
    m_routes.push_back({method, segmentsOf(path), access, std::move(handler)});
}

Router::Match Router::find(const std::string& method, const std::string& path) const {
    const auto segments = segmentsOf(path);
    bool pathKnown = false;
    for (const auto& route : m_routes) {
        if (!matches(route.segments, segments)) {
            continue;
        }
        pathKnown = true;
        if (route.method != method) {
            continue;
        }
        Match match{*route.handler, route.access, {}};
        for (std::size_t i = 0; i < segments.size(); ++i) {
            if (const auto& name = route.segments[i]; isParameter(name)) {
                match.parameters.emplace(name.substr(1, name.size() - 2), segments[i]);
            }
        }
        return match;
    }
    if (pathKnown) {
        throw HttpError(405, "method_not_allowed", "Этот метод здесь не поддерживается");
    }
    throw HttpError(404, "not_found", "Такого адреса нет");
}

std::string Router::allowedMethods(const std::string& path) const {
    const auto segments = segmentsOf(path);
    std::string methods;
    for (const auto& route : m_routes) {
        if (matches(route.segments, segments)) {
            methods += (methods.empty() ? "" : ", ") + route.method;
        }
    }
    return methods;
}

} // namespace velmora::server
