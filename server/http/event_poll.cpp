#include "http/event_poll.h"

#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <system_error>

namespace velmora::server {

namespace {

constexpr EventPoll::Id wakeId = std::numeric_limits<EventPoll::Id>::max();

int checked(int result) {
    if (result < 0) {
        throw std::system_error(errno, std::generic_category(), "waiting for connections");
    }
    return result;
}

} // namespace

EventPoll::EventPoll()
    : m_poll(checked(::epoll_create1(EPOLL_CLOEXEC)))
    , m_wake(checked(::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK))) {
    control(EPOLL_CTL_ADD, m_wake, wakeId, EPOLLIN);
}

EventPoll::~EventPoll() {
    ::close(m_wake);
    ::close(m_poll);
}

void EventPoll::add(int descriptor, Id id) {
    control(EPOLL_CTL_ADD, descriptor, id, EPOLLONESHOT);
}

void EventPoll::arm(int descriptor, Id id, For what) {
    control(EPOLL_CTL_MOD, descriptor, id, EPOLLONESHOT | (what == For::Reading ? EPOLLIN : EPOLLOUT));
}

void EventPoll::wake() const {
    const std::uint64_t one = 1;
    // It fails only when it is awake already.
    static_cast<void>(::write(m_wake, &one, sizeof one) == sizeof one);
}

void EventPoll::wait(std::chrono::steady_clock::time_point deadline, const std::function<void(Id)>& ready) {
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    std::array<epoll_event, 64> events{};
    const int count = ::epoll_wait(m_poll, events.data(), static_cast<int>(events.size()),
                                   static_cast<int>(std::clamp<std::int64_t>(left.count(), 0, 60'000)));
    for (int i = 0; i < count; ++i) {
        if (const Id id = events[static_cast<std::size_t>(i)].data.u64; id != wakeId) {
            ready(id);
        } else {
            std::uint64_t ignored = 0;
            static_cast<void>(::read(m_wake, &ignored, sizeof ignored) == sizeof ignored);
        }
    }
}

void EventPoll::control(int operation, int descriptor, Id id, std::uint32_t events) {
    epoll_event event{};
    event.events = events;
    event.data.u64 = id;
    checked(::epoll_ctl(m_poll, operation, descriptor, &event));
}

} // namespace velmora::server
