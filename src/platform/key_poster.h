#pragma once

#include <QString>

#include <functional>

namespace velmora {

/// Types into the application that has the keyboard focus.
class KeyPoster {
public:
    virtual ~KeyPoster() = default;

    /// What is pasted from now on is a text of its own: a window that failed to take the one before gets
    /// another chance.
    virtual void beginText() = 0;
    /// Posts the key chord by which the focused application pastes. Returns at once; without the right to
    /// post keys nothing happens and nothing is reported.
    virtual void postPasteChord() = 0;
    /// Who hears of what could not be pasted, once that is known; on the main thread.
    virtual void onUndelivered(std::function<void(const QString& text)> call) = 0;
};

} // namespace velmora
