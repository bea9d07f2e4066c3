#pragma once

#include "foundation/main_loop.h"

#include <QObject>

namespace velmora {

/// The loop of the thread it is made on, with Qt's event loop and the machine's clocks.
class QtMainLoop final : public MainLoop {
public:
    [[nodiscard]] TimePoint now() const override;
    [[nodiscard]] Date date() const override;
    void post(Work work) override;
    [[nodiscard]] Timer after(Duration delay, Work work) override;
    [[nodiscard]] Timer every(Duration interval, Work work) override;

private:
    Timer schedule(Duration interval, bool once, Work work);

    QObject m_context; // what is posted or scheduled ends with it
};

} // namespace velmora
