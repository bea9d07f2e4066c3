#pragma once

#include "core/settings_by_name.h"
#include "platform/instance_link.h"

#include <QStringList>

#include <optional>
#include <variant>

namespace velmora {

/// What the program was started for.
namespace launch {

/// Be the session's instance, or hand the command to the one that is running.
struct Run {
    InstanceCommand command = instance_command::Activate{};
    bool operator==(const Run&) const = default;
};
/// Reach the instance that is running, and only that.
struct Send {
    InstanceCommand command;
    bool operator==(const Send&) const = default;
};
/// Store these settings.
struct SetSettings {
    std::vector<WrittenSetting> changes;
    bool operator==(const SetSettings&) const = default;
};
struct GetSetting {
    QString key;
    bool operator==(const GetSetting&) const = default;
};
struct ListSettings {
    bool operator==(const ListSettings&) const = default;
};
struct ShowVersion {
    bool operator==(const ShowVersion&) const = default;
};
struct ShowHelp {
    bool operator==(const ShowHelp&) const = default;
};
struct Invalid {
    QString argument;
    bool operator==(const Invalid&) const = default;
};

} // namespace launch

using Launch = std::variant<launch::Run, launch::Send, launch::SetSettings, launch::GetSetting,
                            launch::ListSettings, launch::ShowVersion, launch::ShowHelp, launch::Invalid>;

/// Reads the arguments behind the program's name: none, one verb with what it needs, or one URL of our
/// scheme.
[[nodiscard]] Launch parseCommandLine(const QStringList& arguments);

/// The text of --help.
[[nodiscard]] QString usage();

} // namespace velmora
