#pragma once

namespace velmora {

/// Types into the application that has the keyboard focus.
class KeyPoster {
public:
    virtual ~KeyPoster() = default;

    /// Posts the key chord by which the focused application pastes. Returns at once; without the right to
    /// post keys nothing happens and nothing is reported.
    virtual void postPasteChord() = 0;
};

} // namespace velmora
