#pragma once

#include <QCoro/QCoroTask>
#include <QString>

#include <stop_token>

namespace velmora {

template<typename T = void>
using Task = QCoro::Task<T>;

/// Owns the tasks that nobody awaits. Each gets the scope's stop token, which is requested when the scope
/// goes, so a scope that is the last member of its owner tells the tasks that the owner is gone: they must
/// look at the token after every wait before they touch the owner.
class TaskScope {
public:
    TaskScope() = default;
    ~TaskScope() { m_stop.request_stop(); }
    TaskScope(const TaskScope&) = delete;
    TaskScope& operator=(const TaskScope&) = delete;

    [[nodiscard]] std::stop_token token() const { return m_stop.get_token(); }

    /// Keeps `task` going to its end; a failure is logged under `name` and dropped.
    void start(QString name, Task<> task);

private:
    std::stop_source m_stop;
};

} // namespace velmora
