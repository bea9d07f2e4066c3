#pragma once

#include "app/server_options.h"

#include <memory>
#include <string>

namespace velmora::server {

class Recogniser;

/// The whole server: listens from construction on, and has stopped when the destructor returns.
class Server {
public:
    /// Fails with std::runtime_error: the port is taken, the data can't be used, or the recogniser doesn't
    /// know the language.
    Server(const ServerOptions& options, std::unique_ptr<Recogniser> recogniser);
    ~Server();
    Server(const Server&) = delete;
    Server& operator=(const Server&) = delete;

    /// "127.0.0.1:8791", with the port that was really bound.
    [[nodiscard]] std::string address() const;

private:
    struct State;
    std::unique_ptr<State> m_state;
};

/// The recogniser that the options name. Fails with std::runtime_error.
[[nodiscard]] std::unique_ptr<Recogniser> makeRecogniser(const ServerOptions& options);

} // namespace velmora::server
