#pragma once

#include <QString>

#include <functional>
#include <variant>

namespace velmora {

/// What a second start of the program asks of the first.
namespace instance_command {
struct Activate {
    bool operator==(const Activate&) const = default;
};
struct OpenURL {
    QString url;
    bool operator==(const OpenURL&) const = default;
};
struct Press {
    bool operator==(const Press&) const = default;
};
struct Release {
    bool operator==(const Release&) const = default;
};
struct Toggle {
    bool operator==(const Toggle&) const = default;
};
struct SignIn {
    bool operator==(const SignIn&) const = default;
};
} // namespace instance_command

using InstanceCommand =
    std::variant<instance_command::Activate, instance_command::OpenURL, instance_command::Press,
                 instance_command::Release, instance_command::Toggle, instance_command::SignIn>;

/// Keeps the program to one instance a session and carries commands to it.
class InstanceLink {
public:
    using Handler = std::function<void(const InstanceCommand&)>;

    virtual ~InstanceLink() = default;

    /// True when this process is now the session's one instance. Commands of others reach `handler` on the
    /// main thread from then on.
    [[nodiscard]] virtual bool claim(Handler handler) = 0;
    /// Hands a command to the instance that is running; false when there is none or it doesn't answer.
    [[nodiscard]] virtual bool send(const InstanceCommand& command) = 0;
};

} // namespace velmora
