#pragma once

#include "platform/instance_link.h"

#include <optional>

namespace velmora {

/// The name of a command that carries nothing, as it goes over the link and into desktop files; empty for the
/// others.
[[nodiscard]] QString actionOf(const InstanceCommand& command);
[[nodiscard]] std::optional<InstanceCommand> commandOfAction(const QString& action);

} // namespace velmora
