#include "platform/linux/x11_selection_owner.h"

#include <QString>

#include <algorithm>

namespace velmora {
namespace {

constexpr std::size_t keptOffers = 32;
constexpr const char* passwordHint = "x-kde-passwordManagerHint";
constexpr const char* textTargets[] = {"UTF8_STRING", ClipboardContents::plainText, "TEXT", "STRING"};

// Server times wrap around after 49 days.
bool isEarlier(xcb_timestamp_t a, xcb_timestamp_t b) {
    return static_cast<int32_t>(a - b) < 0;
}

} // namespace

X11SelectionOwner::X11SelectionOwner(X11Connection& connection, X11SelectionTransfers& transfers,
                                     const QByteArray& selection)
    : m_connection(connection)
    , m_transfers(transfers)
    , m_window(connection.createWindow(XCB_EVENT_MASK_PROPERTY_CHANGE))
    , m_selection(connection.atom(selection)) {}

X11SelectionOwner::~X11SelectionOwner() {
    if (m_connection.isOpen())
        xcb_destroy_window(m_connection.get(), m_window);
}

quint64 X11SelectionOwner::offer(const ClipboardContents& contents, uint32_t client) {
    const xcb_timestamp_t now = m_connection.serverTime(m_window);
    xcb_set_selection_owner(m_connection.get(), m_window, m_selection, now);
    if (!isOwnerNow()) {
        m_offers.clear();
        return 0;
    }
    if (m_offers.size() == keptOffers)
        m_offers.erase(m_offers.begin());
    m_offers.push_back({contents, client, now, ++m_lastNumber});
    return m_lastNumber;
}

void X11SelectionOwner::clear() {
    m_offers.clear();
    xcb_set_selection_owner(m_connection.get(), XCB_WINDOW_NONE, m_selection,
                            m_connection.serverTime(m_window));
}

void X11SelectionOwner::handle(const xcb_generic_event_t& event) {
    if (typeOf(event) == XCB_SELECTION_REQUEST) {
        const auto& request = reinterpret_cast<const xcb_selection_request_event_t&>(event);
        if (request.owner == m_window && request.selection == m_selection)
            answer(request);
    } else if (typeOf(event) == XCB_SELECTION_CLEAR) {
        const auto& lost = reinterpret_cast<const xcb_selection_clear_event_t&>(event);
        // One that was under way when we took the selection again is old news: ask who has it now.
        if (lost.owner == m_window && lost.selection == m_selection && !isOwnerNow())
            m_offers.clear();
    }
}

void X11SelectionOwner::answer(const xcb_selection_request_event_t& request) {
    xcb_selection_notify_event_t notify{};
    notify.response_type = XCB_SELECTION_NOTIFY;
    notify.time = request.time;
    notify.requestor = request.requestor;
    notify.selection = request.selection;
    notify.target = request.target;
    // Clients from before the present rules leave the property to the owner.
    const xcb_atom_t property = request.property == XCB_ATOM_NONE ? request.target : request.property;
    if (owns() && convert(offerFor(request), request.requestor, request.target, property))
        notify.property = property;
    xcb_send_event(m_connection.get(), false, request.requestor, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&notify));
}

bool X11SelectionOwner::convert(const Offer& offer, xcb_window_t reader, xcb_atom_t target,
                                xcb_atom_t property) {
    const auto named = [&](const char* name) { return target == m_connection.atom(name); };
    if (named("MULTIPLE"))
        return convertMultiple(offer, reader, property);

    const Question question{m_connection.clientOf(reader), offer.number, isText(target)};
    const auto send = [&](xcb_atom_t type, const auto& value) {
        m_transfers.send(reader, property, type, value, [this, question] {
            if (m_taken)
                m_taken(question);
        });
        if (m_answered)
            m_answered(question);
        return true;
    };
    if (named("TARGETS")) {
        std::vector<uint32_t> targets = formTargetsOf(offer.contents);
        for (const char* name : {"TARGETS", "TIMESTAMP", "MULTIPLE", "SAVE_TARGETS"})
            targets.push_back(m_connection.atom(name));
        return send(XCB_ATOM_ATOM, targets);
    }
    if (named("TIMESTAMP"))
        return send(XCB_ATOM_INTEGER, std::vector<uint32_t>{offer.since});
    if (named("SAVE_TARGETS"))
        return send(m_connection.atom("NULL"), std::vector<uint32_t>{});
    if (named(passwordHint))
        return offer.contents.secret && send(target, QByteArray("secret"));
    if (const QByteArray* text = offer.contents.text(); text && question.forText) {
        if (target == XCB_ATOM_STRING)
            return send(target, QString::fromUtf8(*text).toLatin1());
        return send(named("TEXT") ? m_connection.atom("UTF8_STRING") : target, *text);
    }
    const auto form = std::ranges::find_if(
        offer.contents.forms, [&](const auto& each) { return target == m_connection.atom(each.type); });
    return form != offer.contents.forms.end() && send(target, form->bytes);
}

// The property holds pairs of a target and the property for it; those that can't be had are marked.
bool X11SelectionOwner::convertMultiple(const Offer& offer, xcb_window_t reader, xcb_atom_t property) {
    const QByteArray value = m_connection.property(reader, property);
    std::vector<uint32_t> pairs(static_cast<std::size_t>(value.size()) / sizeof(uint32_t));
    if (pairs.empty() || pairs.size() % 2 != 0)
        return false;
    std::memcpy(pairs.data(), value.constData(), pairs.size() * sizeof(uint32_t));
    const xcb_atom_t multiple = m_connection.atom("MULTIPLE");
    for (std::size_t at = 0; at < pairs.size(); at += 2) {
        if (pairs[at] == multiple || !convert(offer, reader, pairs[at], pairs[at + 1]))
            pairs[at + 1] = XCB_ATOM_NONE;
    }
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, reader, property,
                        m_connection.atom("ATOM_PAIR"), 32, static_cast<uint32_t>(pairs.size()),
                        pairs.data());
    return true;
}

bool X11SelectionOwner::isText(xcb_atom_t target) {
    return std::ranges::any_of(textTargets,
                               [&](const char* name) { return target == m_connection.atom(name); });
}

std::vector<uint32_t> X11SelectionOwner::formTargets() {
    return formTargetsOf(current().contents);
}

std::vector<uint32_t> X11SelectionOwner::formTargetsOf(const ClipboardContents& contents) {
    std::vector<uint32_t> targets;
    if (contents.text()) {
        for (const char* name : textTargets)
            targets.push_back(m_connection.atom(name));
    }
    for (const ClipboardContents::Form& form : contents.forms) {
        if (form.type != ClipboardContents::plainText)
            targets.push_back(m_connection.atom(form.type));
    }
    if (contents.secret)
        targets.push_back(m_connection.atom(passwordHint));
    return targets;
}

const X11SelectionOwner::Offer&
X11SelectionOwner::offerFor(const xcb_selection_request_event_t& request) const {
    if (request.time == XCB_CURRENT_TIME || !isEarlier(request.time, current().since))
        return current();
    const uint32_t client = m_connection.clientOf(request.requestor);
    for (auto offer = m_offers.rbegin(); offer != m_offers.rend(); ++offer) {
        if (!isEarlier(request.time, offer->since))
            return offer->client == client ? *offer : current();
    }
    return current();
}

} // namespace velmora
