#include "support/desktop/accessible_tree.h"

#include "support/desktop/wait_until.h"

#include <atspi/atspi.h>

namespace velmora::test {
namespace {

template<typename T>
struct Unref {
    void operator()(T* object) const { g_object_unref(object); }
};
template<typename T>
using Ref = std::unique_ptr<T, Unref<T>>;

QString taken(gchar* text) {
    const QString result = QString::fromUtf8(text);
    g_free(text);
    return result;
}

AccessibleObject describe(AtspiAccessible* object, AtspiStateSet* states) {
    AccessibleObject result;
    result.role = taken(atspi_accessible_get_role_name(object, nullptr));
    result.name = taken(atspi_accessible_get_name(object, nullptr));
    result.focusable = atspi_state_set_contains(states, ATSPI_STATE_FOCUSABLE);
    result.focused = atspi_state_set_contains(states, ATSPI_STATE_FOCUSED);
    if (const Ref<AtspiComponent> component{atspi_accessible_get_component_iface(object)}) {
        if (AtspiRect* rect =
                atspi_component_get_extents(component.get(), ATSPI_COORD_TYPE_SCREEN, nullptr)) {
            result.extents = {rect->x, rect->y, rect->width, rect->height};
            g_free(rect);
        }
    }
    return result;
}

void collect(AtspiAccessible* object, QList<AccessibleObject>& found) {
    atspi_accessible_clear_cache(object);
    const Ref<AtspiStateSet> states{atspi_accessible_get_state_set(object)};
    if (!states || !atspi_state_set_contains(states.get(), ATSPI_STATE_VISIBLE))
        return;
    found.append(describe(object, states.get()));
    const int count = atspi_accessible_get_child_count(object, nullptr);
    for (int i = 0; i < count; ++i) {
        if (const Ref<AtspiAccessible> child{atspi_accessible_get_child_at_index(object, i, nullptr)})
            collect(child.get(), found);
    }
}

} // namespace

QList<AccessibleObject> accessibleObjects(const QString& application) {
    [[maybe_unused]] static const int initialised = atspi_init();
    QList<AccessibleObject> found;
    const Ref<AtspiAccessible> desktop{atspi_get_desktop(0)};
    if (!desktop)
        return found;
    atspi_accessible_clear_cache(desktop.get());
    const int count = atspi_accessible_get_child_count(desktop.get(), nullptr);
    for (int i = 0; i < count; ++i) {
        const Ref<AtspiAccessible> program{atspi_accessible_get_child_at_index(desktop.get(), i, nullptr)};
        if (!program || taken(atspi_accessible_get_name(program.get(), nullptr)) != application)
            continue;
        const int windows = atspi_accessible_get_child_count(program.get(), nullptr);
        for (int w = 0; w < windows; ++w) {
            if (const Ref<AtspiAccessible> window{
                    atspi_accessible_get_child_at_index(program.get(), w, nullptr)})
                collect(window.get(), found);
        }
    }
    return found;
}

std::optional<AccessibleObject> waitForAccessible(const QString& application, const QString& name) {
    std::optional<AccessibleObject> result;
    waitUntil([&] {
        for (const AccessibleObject& object : accessibleObjects(application)) {
            if (object.name == name) {
                result = object;
                return true;
            }
        }
        return false;
    });
    return result;
}

} // namespace velmora::test
