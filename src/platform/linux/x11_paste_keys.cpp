#include "platform/linux/x11_paste_keys.h"

#include <xkbcommon/xkbcommon-x11.h>

namespace velmora {
namespace {

using Context = std::unique_ptr<xkb_context, decltype(&xkb_context_unref)>;
using Keymap = std::unique_ptr<xkb_keymap, decltype(&xkb_keymap_unref)>;
using State = std::unique_ptr<xkb_state, decltype(&xkb_state_unref)>;

// The key that gives the symbol without any modifier: in the active layout if possible, else in any.
xcb_keycode_t findKey(xkb_keymap* keymap, xkb_layout_index_t active, xkb_keysym_t wanted) {
    xcb_keycode_t elsewhere = 0;
    const xkb_keycode_t last = std::min<xkb_keycode_t>(xkb_keymap_max_keycode(keymap), 255);
    for (xkb_keycode_t code = xkb_keymap_min_keycode(keymap); code <= last; ++code) {
        const xkb_layout_index_t layouts = xkb_keymap_num_layouts_for_key(keymap, code);
        for (xkb_layout_index_t layout = 0; layout < layouts; ++layout) {
            const xkb_keysym_t* symbols = nullptr;
            if (xkb_keymap_key_get_syms_by_level(keymap, code, layout, 0, &symbols) != 1 ||
                symbols[0] != wanted)
                continue;
            if (layout == active || layouts == 1)
                return static_cast<xcb_keycode_t>(code);
            if (elsewhere == 0)
                elsewhere = static_cast<xcb_keycode_t>(code);
        }
    }
    return elsewhere;
}

} // namespace

std::optional<X11PasteKeys> findPasteKeys(X11Connection& connection, bool shiftInsert) {
    const Context context(xkb_context_new(XKB_CONTEXT_NO_DEFAULT_INCLUDES), &xkb_context_unref);
    const int32_t device = xkb_x11_get_core_keyboard_device_id(connection.get());
    if (!context || device < 0)
        return std::nullopt;
    const Keymap keymap(
        xkb_x11_keymap_new_from_device(context.get(), connection.get(), device, XKB_KEYMAP_COMPILE_NO_FLAGS),
        &xkb_keymap_unref);
    if (!keymap)
        return std::nullopt;
    const State state(xkb_x11_state_new_from_device(keymap.get(), connection.get(), device),
                      &xkb_state_unref);
    const xkb_layout_index_t active =
        state ? xkb_state_serialize_layout(state.get(), XKB_STATE_LAYOUT_EFFECTIVE) : 0;

    const auto chord = [&](xkb_keysym_t modifier, xkb_keysym_t key) -> std::optional<X11PasteKeys> {
        const X11PasteKeys keys{findKey(keymap.get(), active, modifier), findKey(keymap.get(), active, key)};
        return keys.modifier != 0 && keys.key != 0 ? std::optional(keys) : std::nullopt;
    };
    if (!shiftInsert) {
        if (const auto keys = chord(XKB_KEY_Control_L, XKB_KEY_v))
            return keys;
    }
    return chord(XKB_KEY_Shift_L, XKB_KEY_Insert);
}

} // namespace velmora
