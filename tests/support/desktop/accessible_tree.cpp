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
    result.id = ATSPI_OBJECT(object)->path;
    result.role = taken(atspi_accessible_get_role_name(object, nullptr));
    result.name = taken(atspi_accessible_get_name(object, nullptr));
    result.focusable = atspi_state_set_contains(states, ATSPI_STATE_FOCUSABLE);
    result.focused = atspi_state_set_contains(states, ATSPI_STATE_FOCUSED);
    if (atspi_state_set_contains(states, ATSPI_STATE_EDITABLE)) {
        if (const Ref<AtspiText> text{atspi_accessible_get_text_iface(object)})
            result.text = taken(atspi_text_get_text(text.get(), 0, -1, nullptr));
    }
    if (const Ref<AtspiComponent> component{atspi_accessible_get_component_iface(object)}) {
        if (AtspiRect* rect =
                atspi_component_get_extents(component.get(), ATSPI_COORD_TYPE_SCREEN, nullptr)) {
            result.extents = {rect->x, rect->y, rect->width, rect->height};
            g_free(rect);
        }
    }
    return result;
}

/// Visits the children; false when the bus did not answer for one.
template<typename Visit>
bool forEachChild(AtspiAccessible* object, const Visit& visit) {
    atspi_accessible_clear_cache(object);
    const int count = atspi_accessible_get_child_count(object, nullptr);
    bool complete = count >= 0;
    for (int i = 0; i < count; ++i) {
        const Ref<AtspiAccessible> child{atspi_accessible_get_child_at_index(object, i, nullptr)};
        complete = child && visit(child.get()) && complete;
    }
    return complete;
}

bool collect(AtspiAccessible* object, QList<AccessibleObject>& found) {
    const Ref<AtspiStateSet> states{atspi_accessible_get_state_set(object)};
    if (!states)
        return false;
    if (!atspi_state_set_contains(states.get(), ATSPI_STATE_VISIBLE))
        return true;
    found.append(describe(object, states.get()));
    return forEachChild(object, [&](AtspiAccessible* child) { return collect(child, found); });
}

} // namespace

QList<AccessibleObject> accessibleObjects(const QString& application, bool* complete) {
    [[maybe_unused]] static const int initialised = atspi_init();
    QList<AccessibleObject> found;
    bool seen = false;
    const Ref<AtspiAccessible> desktop{atspi_get_desktop(0)};
    const bool answered =
        desktop && forEachChild(desktop.get(), [&](AtspiAccessible* program) {
            if (taken(atspi_accessible_get_name(program, nullptr)) != application)
                return true;
            seen = true;
            return forEachChild(program, [&](AtspiAccessible* window) { return collect(window, found); });
        });
    if (complete)
        *complete = answered && seen;
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
