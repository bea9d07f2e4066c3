#pragma once

#include "http/handler.h"

#include <string>

namespace velmora::server {

/// Leads to another page of the server.
class RedirectHandler : public Handler {
public:
    explicit RedirectHandler(std::string target);

    void handle(Exchange& exchange) override;

private:
    std::string m_target;
};

} // namespace velmora::server
