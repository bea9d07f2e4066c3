#include "platform/linux/x11_clipboard_fetch.h"

#include <QString>

#include <algorithm>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr auto patience = 1500ms;
constexpr qsizetype mostBytes = 16 * 1024 * 1024;
constexpr const char* passwordHint = "x-kde-passwordManagerHint";
constexpr const char* texts[] = {"UTF8_STRING", ClipboardContents::plainText,
                                 "STRING"}; // the first one counts
constexpr const char* others[] = {"text/html", "text/uri-list", "image/png", "x-special/gnome-copied-files"};

} // namespace

X11ClipboardFetch::X11ClipboardFetch(X11Connection& connection, MainLoop& loop, xcb_atom_t selection,
                                     std::function<void()> done)
    : m_connection(connection)
    , m_selection(selection)
    , m_owner(connection.ownerOf(selection))
    , m_property(connection.atom("VELMORA_TRANSFER"))
    , m_done(std::move(done))
    , m_patience(loop.after(patience, [this] { finish(); })) {
    ask("TARGETS");
    ask(texts[0]);
}

X11ClipboardFetch::~X11ClipboardFetch() {
    for (const Answer& answer : m_answers)
        xcb_destroy_window(m_connection.get(), answer.window);
}

void X11ClipboardFetch::ask(const char* name) {
    Answer& answer = m_answers.emplace_back();
    answer.name = name;
    answer.target = m_connection.atom(name);
    answer.window = m_connection.createWindow(XCB_EVENT_MASK_PROPERTY_CHANGE);
    xcb_convert_selection(m_connection.get(), answer.window, m_selection, answer.target, m_property,
                          m_connection.serverTime(answer.window));
}

void X11ClipboardFetch::handle(const xcb_generic_event_t& event) {
    if (m_result.isComplete)
        return;
    if (typeOf(event) == XCB_SELECTION_NOTIFY)
        answered(reinterpret_cast<const xcb_selection_notify_event_t&>(event));
    else if (typeOf(event) == XCB_PROPERTY_NOTIFY)
        valueCame(reinterpret_cast<const xcb_property_notify_event_t&>(event));
}

void X11ClipboardFetch::answered(const xcb_selection_notify_event_t& notify) {
    const auto answer = std::ranges::find(m_answers, notify.requestor, &Answer::window);
    if (answer == m_answers.end() || answer->state != State::Asked)
        return;
    if (notify.property == XCB_ATOM_NONE)
        answer->state = State::Refused;
    else
        take(*answer);
    goOn();
}

void X11ClipboardFetch::valueCame(const xcb_property_notify_event_t& notify) {
    if (notify.atom != m_property || notify.state != XCB_PROPERTY_NEW_VALUE)
        return;
    const auto answer = std::ranges::find(m_answers, notify.window, &Answer::window);
    if (answer == m_answers.end() || answer->state != State::Incremental)
        return;
    take(*answer);
    goOn();
}

// Reading deletes, which asks an incremental owner for more.
void X11ClipboardFetch::take(Answer& answer) {
    const auto words = static_cast<uint32_t>((mostBytes - m_size) / 4);
    const XcbReply<xcb_get_property_reply_t> reply(xcb_get_property_reply(
        m_connection.get(),
        xcb_get_property(m_connection.get(), true, answer.window, m_property, XCB_ATOM_ANY, 0, words),
        nullptr));
    if (!reply || reply->bytes_after > 0) {
        m_size -= answer.bytes.size();
        answer.state = State::Refused;
        return;
    }
    if (reply->type == XCB_ATOM_NONE)
        return; // the notice of a value that was taken already
    if (reply->type == m_connection.atom("INCR")) {
        answer.state = State::Incremental;
        return;
    }
    const int size = xcb_get_property_value_length(reply.get());
    answer.type = reply->type;
    answer.bytes.append(static_cast<const char*>(xcb_get_property_value(reply.get())), size);
    m_size += size;
    if (answer.state == State::Asked || size == 0)
        answer.state = isAcceptable(answer) ? State::Here : State::Refused;
}

// Some owners answer every question with the one thing they have, and only its type tells.
bool X11ClipboardFetch::isAcceptable(const Answer& answer) {
    const bool isText = std::ranges::any_of(texts, [&](const char* name) { return name == answer.name; });
    if (isText)
        return answer.type == answer.target || answer.type == XCB_ATOM_STRING ||
               answer.type == m_connection.atom("UTF8_STRING");
    return answer.type == answer.target || &answer == &m_answers.front();
}

// Once the answers are here, the next question, for some owners can work off but one long answer. Only while
// the owner is still the one that answers.
void X11ClipboardFetch::goOn() {
    const auto isOpen = [](const Answer& answer) {
        return answer.state == State::Asked || answer.state == State::Incremental;
    };
    if (std::ranges::any_of(m_answers, isOpen))
        return;
    const char* next = m_connection.ownerOf(m_selection) == m_owner ? nextForm() : nullptr;
    if (next)
        ask(next);
    else
        finish();
}

// Another form of the text, if the last one was refused, and then whatever else is worth keeping.
const char* X11ClipboardFetch::nextForm() {
    const auto wasAsked = [this](const char* name) { return find(name) != nullptr; };
    if (!text()) {
        const auto other = std::ranges::find_if_not(texts, wasAsked);
        if (other != std::end(texts))
            return *other;
    }
    const auto other =
        std::ranges::find_if(others, [&](const char* name) { return isOffered(name) && !wasAsked(name); });
    return other == std::end(others) ? nullptr : *other;
}

void X11ClipboardFetch::finish() {
    m_patience.invalidate();
    if (const Answer* answer = text())
        m_result.contents.forms.push_back({ClipboardContents::plainText, utf8Of(*answer)});
    for (const char* name : others) {
        const Answer* answer = find(name);
        if (answer && answer->state == State::Here)
            m_result.contents.forms.push_back({name, answer->bytes});
    }
    m_result.contents.secret = isOffered(passwordHint);
    m_result.isComplete = true;
    const auto done = m_done; // may end this object
    done();
}

const X11ClipboardFetch::Answer* X11ClipboardFetch::find(const char* name) const {
    const auto answer = std::ranges::find(m_answers, name, &Answer::name);
    return answer == m_answers.end() ? nullptr : &*answer;
}

const X11ClipboardFetch::Answer* X11ClipboardFetch::text() const {
    for (const char* name : texts) {
        const Answer* answer = find(name);
        if (answer && answer->state == State::Here)
            return answer;
    }
    return nullptr;
}

QByteArray X11ClipboardFetch::utf8Of(const Answer& answer) {
    QByteArray text = answer.bytes;
    while (text.endsWith('\0')) // some owners count the end of their C string
        text.chop(1);
    return answer.type == XCB_ATOM_STRING ? QString::fromLatin1(text).toUtf8() : text;
}

bool X11ClipboardFetch::isOffered(const char* name) {
    const Answer& targets = m_answers.front();
    return targets.state == State::Here && containsAtom(targets.bytes, m_connection.atom(name));
}

} // namespace velmora
