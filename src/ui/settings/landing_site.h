#pragma once

#include "foundation/info_dictionary.h"
#include "platform/workspace.h"

namespace velmora {

/// The program's site, where some of the settings lead.
class LandingSite {
public:
    LandingSite(const InfoDictionary& info, Workspace& workspace);

    /// False when the configuration's address is none.
    [[nodiscard]] bool exists() const { return m_exists; }
    /// Opens a page of it in the browser: "news" or "legal/license".
    void open(const QString& path);

private:
    Workspace& m_workspace;
    const QUrl m_root;
    const bool m_exists;
};

} // namespace velmora
