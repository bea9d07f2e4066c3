#pragma once

#include "platform/workspace.h"

namespace velmora {

/// What every Linux desktop can do: open URLs. It doesn't know which application is in front.
class XdgWorkspace : public Workspace {
public:
    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override { return std::nullopt; }
    bool openURL(const QUrl& url) override;
};

} // namespace velmora
