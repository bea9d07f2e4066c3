#pragma once

#include <QQmlEngine>

#include <functional>
#include <memory>

namespace velmora {

/// The engine of all views, made when the first of them needs it: a start that shows nothing loads none.
class UiEngine {
public:
    using Make = std::function<std::unique_ptr<QQmlEngine>()>;

    explicit UiEngine(Make make)
        : m_make(std::move(make)) {}

    [[nodiscard]] QQmlEngine& get() {
        if (!m_engine)
            m_engine = m_make();
        return *m_engine;
    }
    [[nodiscard]] bool isMade() const { return m_engine != nullptr; }

private:
    Make m_make;
    std::unique_ptr<QQmlEngine> m_engine;
};

} // namespace velmora
