#pragma once

#include "http/client_socket.h"
#include "http/exchange.h"
#include "http/pace.h"

#include <cstdint>
#include <list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <thread>

namespace velmora::server {

/// One client's connection, from its first byte to its last. It serves one request.
struct Connection {
    enum class Phase {
        Head,
        Body,
        /// Another thread has it.
        Away,
        Reply,
        /// Replied; what the peer still sends is dropped. A socket closed over unread bytes is reset, and the
        /// peer might never see the reply.
        Drain
    };

    Connection(std::uint64_t theId, int descriptor, const HttpLimits& limits)
        : id(theId)
        , socket(descriptor)
        , pace(limits) {}

    void setReply(std::string text) {
        reply = std::move(text);
        unsent = reply;
    }

    /// Sends what there is room for; false if the peer can't be reached.
    [[nodiscard]] bool sendReply() {
        while (!unsent.empty()) {
            const auto went = socket.send(unsent);
            if (!went) {
                return true;
            }
            if (*went == 0) {
                return false;
            }
            unsent.remove_prefix(*went);
            pace.passed(*went);
        }
        return true;
    }

    std::uint64_t id;
    ClientSocket socket;
    Phase phase = Phase::Head;
    Pace::Clock::time_point deadline;
    std::string head;
    std::optional<Exchange> exchange;
    std::string reply;
    std::string_view unsent;
    /// Of the reply on its way.
    Pace pace;
    /// A stream's own.
    std::jthread thread;
};

} // namespace velmora::server
