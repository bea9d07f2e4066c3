#include "ui/settings/landing_site.h"

#include "backend/backend_url.h"

namespace velmora {

LandingSite::LandingSite(const InfoDictionary& info, Workspace& workspace)
    : m_workspace(workspace)
    , m_root(landingURL(info), QUrl::StrictMode)
    , m_exists(m_root.isValid() && !m_root.host().isEmpty()) {}

void LandingSite::open(const QString& path) {
    if (m_exists)
        m_workspace.openURL(appendingPathComponent(m_root, path));
}

} // namespace velmora
