#pragma once

#include "platform/linux/x11_connection.h"

#include <QObject>

namespace velmora {

/// Held while this process posts keys on a server's XTEST keyboard, so that its own event taps don't take
/// them for the user's. Must be held until the server has worked the keys off, that is, over a round trip.
/// Any thread.
class X11InjectionGuard {
public:
    X11InjectionGuard();
    ~X11InjectionGuard();
    X11InjectionGuard(const X11InjectionGuard&) = delete;
    X11InjectionGuard& operator=(const X11InjectionGuard&) = delete;
};

/// Tells a tap which events of the XTEST keyboard, on its connection, were posted under a guard. Those still
/// on their way when the guard goes are told by their sequence: the server puts out none of them after a
/// request that was made later.
class X11InjectionFilter : public QObject {
    Q_OBJECT

public:
    explicit X11InjectionFilter(X11Connection& connection);

    [[nodiscard]] bool isOwn(uint32_t eventSequence) const;

private:
    void fence();

    X11Connection& m_connection;
    int m_fencedEnds;
    uint32_t m_fence; // sequence of the request behind which nothing of a guard that has ended can come
};

} // namespace velmora
