#pragma once

#include <QObject>

namespace velmora {

/// Whether the desktop asks for dark or light windows. Main thread.
class ColorScheme : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    [[nodiscard]] virtual bool isDark() const = 0;

Q_SIGNALS:
    void changed();
};

} // namespace velmora
