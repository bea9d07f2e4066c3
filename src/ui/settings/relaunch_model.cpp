#include "ui/settings/relaunch_model.h"

#include "core/relauncher.h"

namespace velmora {

QString RelaunchModel::label() const {
    return m_relaunching ? QStringLiteral("Перезапускаем…") : QStringLiteral("Перезапустить");
}

void RelaunchModel::relaunch() {
    if (m_relaunching)
        return;
    setRelaunching(true);
    if (!m_relauncher.relaunch())
        setRelaunching(false);
}

void RelaunchModel::setRelaunching(bool relaunching) {
    m_relaunching = relaunching;
    Q_EMIT relaunchingChanged();
}

} // namespace velmora
