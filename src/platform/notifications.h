#pragma once

#include <QString>

#include <functional>

namespace velmora {

/// What the desktop tells the user, with one thing to do about it.
struct Notification {
    QString title;
    QString body;
    QString actionLabel;
    std::function<void()> action;
};

/// The desktop's notifications. There is one at a time: a new one takes the place of the last.
class Notifications {
public:
    virtual ~Notifications() = default;

    /// Returns at once. Where the desktop shows none, nothing is seen.
    virtual void show(const Notification& notification) = 0;
};

} // namespace velmora
