#pragma once

#include "foundation/main_loop.h"
#include "platform/linux/x11_clipboard_fetch.h"
#include "platform/linux/x11_connection.h"
#include "platform/linux/x11_key_poster.h"
#include "platform/linux/x11_selection_owner.h"
#include "platform/linux/x11_selection_transfers.h"
#include "platform/paste_line.h"
#include "platform/paste_system.h"

#include <QStringList>

#include <memory>
#include <optional>
#include <vector>

namespace velmora {

/// The clipboard, the focus and the keys of an X server, with the line of pastes that works with them.
///
/// Terminals paste the PRIMARY selection, which is borrowed like the clipboard.
class X11PasteSystem final : public PasteSystem {
public:
    X11PasteSystem(MainLoop& loop, const QByteArray& display, const QStringList& moreTerminals);

    /// Whether the server has what is needed.
    [[nodiscard]] bool isUsable() const { return canWorkWith(m_connection); }
    [[nodiscard]] static bool canWorkWith(const X11Connection& connection);
    [[nodiscard]] PasteLine& line() { return m_line; }
    /// Calls back as soon as the line has nothing to do.
    void whenIdle(std::function<void()> call);
    /// Sees to it that the user finds on the clipboard what belongs there when this process is gone: with the
    /// desktop's clipboard manager, or with a process that `keep` starts for it. To be called when the line
    /// is idle.
    void leave(const std::function<void(const ClipboardContents&)>& keep);

    [[nodiscard]] std::optional<PasteTarget> focused() override;
    quint64 putUp(const QByteArray& text, const PasteTarget& target) override;
    bool postChord(const PasteTarget& target) override;
    [[nodiscard]] bool answersPings(const PasteTarget& target) override;
    void ping(const PasteTarget& target) override;
    void offer(const ClipboardContents& contents) override;
    void giveBackTheRest() override;
    [[nodiscard]] bool ownsClipboard() override;
    [[nodiscard]] std::shared_ptr<const FetchedClipboard> fetch(std::function<void()> done) override;

private:
    void dispatch();
    void handle(const xcb_generic_event_t& event);
    void listenForPongs(bool listen);
    [[nodiscard]] quint64 numberOf(const X11SelectionOwner& owner, quint64 offer) const;
    std::shared_ptr<const FetchedClipboard> fetch(xcb_atom_t selection, std::function<void()> done);
    [[nodiscard]] bool handOver();

    X11Connection m_connection;
    MainLoop& m_loop;
    X11SelectionTransfers m_transfers;
    X11SelectionOwner m_clipboard;
    X11SelectionOwner m_primary;
    X11KeyPoster m_poster;
    std::vector<std::weak_ptr<X11ClipboardFetch>> m_fetches;
    std::optional<std::shared_ptr<const FetchedClipboard>> m_primaryOfUser; // while it is borrowed
    quint64 m_lastPutUp = 0;
    bool m_targetAnswersPings = false; // that of the last one
    bool m_listensForPongs = false;
    uint32_t m_lastPing = 0;
    int m_fixesEvent = 0;
    std::function<void()> m_whenIdle = [] {};
    PasteLine m_line;
};

} // namespace velmora
