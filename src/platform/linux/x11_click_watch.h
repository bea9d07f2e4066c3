#pragma once

#include "platform/click_watch.h"

#include <memory>

namespace velmora {

class X11Connection;

/// The presses that the X server sees, whoever has grabbed the pointer. Needs XInput 2.1.
class X11ClickWatch final : public ClickWatch {
    Q_OBJECT

public:
    explicit X11ClickWatch(QObject* parent = nullptr);
    ~X11ClickWatch() override;

    void setEnabled(bool enabled) override;

private:
    void open();
    void readEvents();

    std::unique_ptr<X11Connection> m_connection; ///< while it is on
    uint8_t m_inputOpcode = 0;
};

} // namespace velmora
