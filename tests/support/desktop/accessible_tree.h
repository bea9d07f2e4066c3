#pragma once

#include <QList>
#include <QRect>
#include <QString>

#include <optional>

namespace velmora::test {

/// What a screen reader is told of one object on the screen.
struct AccessibleObject {
    QByteArray id; ///< the program's own for this object, as long as it lives
    QString role;  ///< as "push button"
    QString name;
    QString text;  ///< what a field holds that can be typed into
    QRect extents; ///< on the screen
    bool focusable = false;
    bool focused = false;
};

/// The objects that show of the running application of that name, in the order of its tree, as the
/// accessibility bus tells them; `complete` is whether it answered for every one of them. Needs a virtual
/// desktop with VIRTUAL_DESKTOP_A11Y=1.
[[nodiscard]] QList<AccessibleObject> accessibleObjects(const QString& application, bool* complete = nullptr);

/// The first of them with that name, waited for; none when it does not come.
[[nodiscard]] std::optional<AccessibleObject> waitForAccessible(const QString& application,
                                                                const QString& name);

} // namespace velmora::test
