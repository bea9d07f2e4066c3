#pragma once

#include "backend/auth_store.h"
#include "support/dictation_on_fakes.h"
#include "support/fake_color_scheme.h"
#include "ui/kit/v_theme.h"

namespace velmora::test {

/// The program's objects around fakes, for one picture. Its clock stands at noon and moves only when a
/// picture says so.
class GalleryWorld : public DictationOnFakes {
public:
    GalleryWorld(bool dark, const QString& accent)
        : scheme(dark) {
        loop.advance(std::chrono::hours(12));
        settings.setThemeColor(accent);
    }

    /// Owner of what a picture makes for itself; gone with the view.
    [[nodiscard]] QObject* stage() { return &m_stage; }

    FakeColorScheme scheme;
    VTheme theme{settings, scheme};
    AuthStore auth{folder.filePath(QStringLiteral("Velmora")), defaults};

private:
    QObject m_stage; // first to go: what stands on it looks at the rest
};

} // namespace velmora::test
