#pragma once

#include <QString>

namespace velmora {

/// The user's clipboard, which the program borrows to put text into other applications.
class Pasteboard {
public:
    /// What was on it at some moment; only the pasteboard that gave it knows what that is.
    enum class Saved : quint64 {};

    virtual ~Pasteboard() = default;

    /// Keeps what is on it, to be put back later. Never waits for the program that it belongs to.
    [[nodiscard]] virtual Saved save() = 0;
    /// Puts back what was kept, in all the forms that could be had, and forgets it. The clipboard is empty
    /// afterwards if it was empty then.
    virtual void putBack(Saved saved) = 0;
    virtual void clearContents() = 0;
    virtual void setString(const QString& text) = 0;
};

} // namespace velmora
