#pragma once

#include "platform/linux/x11_connection.h"

#include <QString>

#include <optional>
#include <thread>

namespace velmora::test {

/// The desktop's keeper of what programs that end leave on the clipboard.
class ClipboardManager {
public:
    ClipboardManager();
    ~ClipboardManager();
    ClipboardManager(const ClipboardManager&) = delete;
    ClipboardManager& operator=(const ClipboardManager&) = delete;

    /// What a program has handed over, if any has. Ends the service.
    [[nodiscard]] std::optional<QString> saved();

private:
    void serve(const std::stop_token& stop);
    void answer(const xcb_selection_request_event_t& request);

    X11Connection m_x;
    std::optional<QString> m_saved;
    std::jthread m_thread;
};

} // namespace velmora::test
