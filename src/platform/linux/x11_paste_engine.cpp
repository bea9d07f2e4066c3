#include "platform/linux/x11_paste_engine.h"

#include <xcb/xfixes.h>
#include <xcb/xtest.h>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr auto readPatience = 1s;
constexpr auto busyPatience = 3s;    // with a program that has pasted before: it is slow, not deaf
constexpr auto putBackPatience = 1s; // more, when only the put-back waits: late is better than the old text
constexpr auto settlePatience = 5s;  // with a program that goes on asking
constexpr auto shortestQuiet = 60ms; // after the last question that a target is known to ask
constexpr auto longestQuiet = 500ms;
constexpr auto learningQuiet = 250ms;
constexpr int missesToUnlearn = 3;
constexpr auto handOverPatience = 500ms;
constexpr std::size_t keptAnswers = 8;

} // namespace

X11PasteEngine::X11PasteEngine(MainLoop& loop, const QByteArray& display, const QStringList& moreTerminals)
    : m_loop(loop)
    , m_connection(display)
    , m_reader(display)
    , m_transfers(m_connection, loop)
    , m_clipboard(m_connection, m_transfers, "CLIPBOARD")
    , m_primary(m_connection, m_transfers, "PRIMARY")
    , m_poster(m_connection, moreTerminals) {
    if (!isUsable())
        return;
    for (X11SelectionOwner* owner : {&m_clipboard, &m_primary}) {
        owner->onAsked([this, owner](uint32_t client, quint64 serial) {
            if (isOfRunning(*owner, client, serial))
                asked();
        });
        owner->onRequested([this, owner](uint32_t client, quint64 serial) {
            if (!isOfRunning(*owner, client, serial))
                return;
            ++m_running->requests;
            finishAfter(readPatience);
        });
        owner->onTaken([this, owner](uint32_t client, quint64 serial) {
            if (!isOfRunning(*owner, client, serial))
                return;
            ++m_running->taken;
            settle();
        });
    }
    xcb_connection_t* x = m_connection.get();
    const XcbReply<xcb_xfixes_query_version_reply_t> version(
        xcb_xfixes_query_version_reply(x, xcb_xfixes_query_version(x, 1, 0), nullptr));
    m_fixesEvent = xcb_get_extension_data(x, &xcb_xfixes_id)->first_event;
    xcb_xfixes_select_selection_input(x, m_clipboard.window(), m_clipboard.selection(),
                                      XCB_XFIXES_SELECTION_EVENT_MASK_SET_SELECTION_OWNER);
    m_connection.listen([this] { dispatch(); });
}

X11PasteEngine::~X11PasteEngine() {
    if (!isUsable())
        return;
    // What the user is to find on the clipboard must not go down with the pieces that are still in line.
    m_running.reset();
    for (auto step = m_line.rbegin(); step != m_line.rend(); ++step) {
        if (const Write* write = std::get_if<Write>(&*step)) {
            perform(*write);
            break;
        }
    }
    handOver();
}

bool X11PasteEngine::canWorkWith(const X11Connection& connection) {
    return connection.isOpen() && connection.hasExtension(&xcb_test_id) &&
           connection.hasExtension(&xcb_xfixes_id);
}

void X11PasteEngine::dispatch() {
    while (const XcbEvent event = m_connection.nextEvent()) {
        if (typeOf(*event) == m_fixesEvent + XCB_XFIXES_SELECTION_NOTIFY)
            ownerChanged(reinterpret_cast<const xcb_xfixes_selection_notify_event_t&>(*event).owner);
        m_clipboard.handle(*event);
        m_primary.handle(*event);
        m_transfers.handle(*event);
    }
}

std::optional<QString> X11PasteEngine::string(const std::optional<QString>& ownWidgets) {
    dispatch();
    std::optional<QString> text;
    if (!m_line.empty())
        text = std::visit([](const auto& step) { return step.text; }, m_line.back());
    else if (m_clipboard.owns())
        text = QString::fromUtf8(m_clipboard.current().text);
    else {
        text = ownWidgets ? ownWidgets : m_reader.read("CLIPBOARD");
        if (std::exchange(m_foreignCopy, false))
            noteForeignCopy(text);
    }
    m_answers.push_back({text, {}});
    if (m_answers.size() > keptAnswers)
        m_answers.pop_front();
    return text;
}

void X11PasteEngine::write(const std::optional<QString>& text) {
    m_line.emplace_back(Write{text});
    advance();
}

void X11PasteEngine::paste(const std::optional<QString>& text) {
    m_line.emplace_back(Paste{text});
    if (m_running && m_running->overdue)
        m_running.reset();
    advance();
}

void X11PasteEngine::advance() {
    while (!m_running && !m_line.empty()) {
        const Step step = std::move(m_line.front());
        m_line.pop_front();
        lookAtForeignCopy();
        std::visit([this](const auto& each) { perform(each); }, step);
    }
}

void X11PasteEngine::perform(const Write& write) {
    std::optional<QString> text = write.text;
    const auto answer = std::ranges::find(m_answers, text, &Answer::text);
    if (answer != m_answers.end()) {
        const std::optional<std::optional<QString>> newer = answer->newer;
        m_answers.erase(answer);
        if (newer && m_clipboard.foreignOwner() != XCB_WINDOW_NONE)
            return;
        if (newer)
            text = *newer;
    }
    if (text)
        m_clipboard.offer(text->toUtf8(), false);
    else
        m_clipboard.clear();
    givePrimaryBack();
}

void X11PasteEngine::perform(const Paste& paste) {
    const auto target = m_poster.focusedTarget();
    if (!paste.text && !m_clipboard.owns()) { // another program's text: nobody will tell when it was read
        if (target)
            m_poster.postPasteChord(*target);
        return;
    }
    QByteArray text = paste.text ? paste.text->toUtf8() : m_clipboard.current().text;
    const bool secret = paste.text || m_clipboard.current().secret;
    if (target && target->isTerminal) {
        while (text.endsWith('\n') || text.endsWith('\r'))
            text.chop(1);
    }
    if (secret)
        m_lastPiece = text;
    putUp(text, secret, target.value_or(X11KeyPoster::Target()));
    if (!target || text.isEmpty())
        return;
    m_running.emplace(Running{.text = text, .secret = secret, .target = *target, .since = m_loop.now()});
    m_poster.postPasteChord(*target);
    finishAfter(m_habits.contains(target->client) ? busyPatience : readPatience);
}

void X11PasteEngine::putUp(const QByteArray& text, bool secret, const X11KeyPoster::Target& target) {
    m_clipboard.offer(text, secret, target.client);
    if (!target.isTerminal)
        return;
    if (!m_primaryBorrowed)
        m_primaryOfUser =
            m_primary.owns() ? QString::fromUtf8(m_primary.current().text) : m_reader.read("PRIMARY");
    m_primaryBorrowed = true;
    m_primary.offer(text, secret, target.client);
}

void X11PasteEngine::givePrimaryBack() {
    if (!std::exchange(m_primaryBorrowed, false) || !m_primary.owns())
        return;
    if (m_primaryOfUser)
        m_primary.offer(m_primaryOfUser->toUtf8(), false);
    else
        m_primary.clear();
}

bool X11PasteEngine::isOfRunning(const X11SelectionOwner& owner, uint32_t client, quint64 serial) const {
    return m_running && m_running->target.client == client && owner.owns() &&
           owner.current().serial == serial;
}

void X11PasteEngine::asked() {
    const MainLoop::TimePoint now = m_loop.now();
    if (m_running->lastAsked != MainLoop::TimePoint())
        m_running->longestPause = std::max(m_running->longestPause, now - m_running->lastAsked);
    m_running->lastAsked = now;
    settle();
}

// Some programs read twice, or ask on after they have read, and give the paste up when the owner changes
// meanwhile. So wait for as many reads as they are known to make, and then for twice their usual pause.
void X11PasteEngine::settle() {
    const Running& paste = *m_running;
    if (paste.requests == 0 || paste.taken < paste.requests || m_loop.now() - paste.since > settlePatience)
        return;
    const Habit habit = m_habits.value(paste.target.client);
    if (habit.reads == 0)
        finishAfter(learningQuiet);
    else if (paste.taken < habit.reads)
        finishAfter(readPatience);
    else
        finishAfter(std::clamp<MainLoop::Duration>(2 * std::max(habit.pause, paste.longestPause),
                                                   shortestQuiet, longestQuiet));
}

void X11PasteEngine::finishAfter(MainLoop::Duration time) {
    m_running->end = m_loop.after(time, [this] { expire(); });
}

void X11PasteEngine::expire() {
    if (m_running->requests == 0 && !m_running->overdue && !isPasteWaiting()) {
        m_running->overdue = true;
        finishAfter(putBackPatience);
        return;
    }
    learn();
    m_running.reset();
    advance();
}

void X11PasteEngine::learn() {
    if (m_running->taken == 0)
        return;
    Habit& habit = m_habits[m_running->target.client];
    habit.pause = std::max(habit.pause * 4 / 5, m_running->longestPause); // forgets a bad moment by and by
    if (m_running->taken >= habit.reads || ++habit.misses == missesToUnlearn) {
        habit.reads = m_running->taken;
        habit.misses = 0;
    }
}

bool X11PasteEngine::isPasteWaiting() const {
    return std::ranges::any_of(m_line, [](const Step& step) { return std::holds_alternative<Paste>(step); });
}

void X11PasteEngine::ownerChanged(xcb_window_t owner) {
    if (owner == XCB_WINDOW_NONE || owner == m_clipboard.window())
        return;
    m_foreignCopy = true;
    // The target is about to read: it must find its text, once, whatever was copied in between.
    if (m_running && m_running->requests == 0 && !std::exchange(m_running->reclaimed, true)) {
        lookAtForeignCopy();
        putUp(m_running->text, m_running->secret, m_running->target);
    }
}

void X11PasteEngine::lookAtForeignCopy() {
    if (m_clipboard.owns() && m_clipboard.foreignOwner() != XCB_WINDOW_NONE)
        m_foreignCopy = true; // its notice is still on the way
    if (std::exchange(m_foreignCopy, false) && m_clipboard.foreignOwner() != XCB_WINDOW_NONE)
        noteForeignCopy(m_reader.read("CLIPBOARD"));
}

void X11PasteEngine::noteForeignCopy(const std::optional<QString>& text) {
    if (text && text->toUtf8() == m_lastPiece)
        return; // a clipboard manager that puts up again what it has read
    for (Answer& answer : m_answers)
        answer.newer = text;
}

void X11PasteEngine::handOver() {
    const xcb_atom_t manager = m_connection.atom("CLIPBOARD_MANAGER");
    if (!m_clipboard.owns() || m_clipboard.current().secret ||
        m_connection.ownerOf(manager) == XCB_WINDOW_NONE)
        return;
    const xcb_atom_t property = m_connection.atom("VELMORA_SAVE");
    const xcb_atom_t targets[] = {m_connection.atom("UTF8_STRING"), XCB_ATOM_STRING};
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_clipboard.window(), property,
                        XCB_ATOM_ATOM, 32, std::size(targets), targets);
    xcb_convert_selection(m_connection.get(), m_clipboard.window(), manager,
                          m_connection.atom("SAVE_TARGETS"), property,
                          m_connection.serverTime(m_clipboard.window()));
    while (const XcbEvent event = m_connection.waitForEvent(handOverPatience)) {
        if (typeOf(*event) == XCB_SELECTION_NOTIFY)
            return;
        m_clipboard.handle(*event);
        m_transfers.handle(*event);
    }
}

} // namespace velmora
