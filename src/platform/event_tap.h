#pragma once

#include "platform/fn_stand_in.h"

#include <QtGlobal>

#include <functional>
#include <memory>
#include <optional>

namespace velmora {

/// One event of the session's keyboard, in the program's own codes whatever the desktop's are.
struct KeyEvent {
    enum class Kind { KeyDown, KeyUp, FlagsChanged, TapDisabledByTimeout, TapDisabledByUserInput, Other };

    Kind kind = Kind::Other;
    int keyCode = -1;    ///< virtual key code, see KeyCodeNames
    quint64 flags = 0;   ///< generic and left/right modifier bits after the event, see modifier_flags.h
    bool repeat = false; ///< auto-repeat of a held key

    bool operator==(const KeyEvent&) const = default;
};

/// A key that counts only while all modifiers of `mask` are held; without a key, these modifiers alone.
struct KeyChord {
    int keyCode = -1; ///< negative for none
    quint64 mask = 0; ///< generic modifier bits, 0 for the key alone

    bool operator==(const KeyChord&) const = default;
};

enum class EventVerdict { Pass, Swallow };

/// Active taps can swallow events, listen-only ones ignore the verdict.
enum class EventTapMode { Active, ListenOnly };

/// A live watch over the keyboard of the whole session; ends with the object.
class EventTap {
public:
    using Callback = std::function<EventVerdict(const KeyEvent&)>;

    virtual ~EventTap() = default;

    [[nodiscard]] virtual bool isEnabled() const = 0;
    virtual void setEnabled(bool enabled) = 0;

    /// The chord that is the hotkey, or none. The applications don't get its key, nor the key that stands in
    /// for Fn, if Fn is in the mask and that key is no modifier by itself. Desktops on which a key must be
    /// claimed before it is pressed do so here; calling it with the same chord again costs nothing.
    virtual void claimChord(const std::optional<KeyChord>& chord) = 0;

    /// The key that sets the Fn bit beside a real Fn key. It keeps its own modifier bits.
    virtual void setFnStandIn(FnStandIn key) = 0;
};

/// Makes taps. The callback runs on the main thread and may not block.
class EventTapFactory {
public:
    virtual ~EventTapFactory() = default;

    /// Null when the session doesn't allow a tap of this mode.
    [[nodiscard]] virtual std::unique_ptr<EventTap> createTap(EventTapMode mode,
                                                              EventTap::Callback callback) = 0;
};

} // namespace velmora
