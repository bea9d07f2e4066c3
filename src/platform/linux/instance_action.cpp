#include "platform/linux/instance_action.h"

#include <array>

namespace velmora {
namespace {

const std::array<std::pair<QLatin1String, InstanceCommand>, 4> actions{{
    {QLatin1String("press"), instance_command::Press{}},
    {QLatin1String("release"), instance_command::Release{}},
    {QLatin1String("toggle"), instance_command::Toggle{}},
    {QLatin1String("sign-in"), instance_command::SignIn{}},
}};

} // namespace

QString actionOf(const InstanceCommand& command) {
    for (const auto& [name, known] : actions) {
        if (known == command)
            return name;
    }
    return {};
}

std::optional<InstanceCommand> commandOfAction(const QString& action) {
    for (const auto& [name, known] : actions) {
        if (name == action)
            return known;
    }
    return std::nullopt;
}

} // namespace velmora
