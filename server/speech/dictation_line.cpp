#include "speech/dictation_line.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace velmora::server {

namespace {

/// What the pace is taken to be before there was anything to measure it by: half as long as the sound.
constexpr std::chrono::seconds guessedWork{30};
constexpr std::chrono::seconds guessedSound{60};
/// The pace is that of about so much sound.
constexpr std::chrono::minutes pacedBy{10};

} // namespace

DictationLine::DictationLine(unsigned turns, SteadyClock clock)
    : m_turns(turns)
    , m_clock(std::move(clock))
    , m_free(turns)
    , m_work(guessedWork)
    , m_sound(guessedSound) {}

DictationLine::Forecast DictationLine::forecast(const std::string& account, Duration sound) const {
    const std::scoped_lock lock(m_mutex);
    const auto workFor = [this](Duration time) {
        return std::chrono::duration_cast<Duration>(time * (std::chrono::duration<double>(m_work) / m_sound));
    };
    const Forecast unhindered{.wait = {}, .work = workFor(sound)};
    if (m_places.size() < m_turns) {
        return unhindered;
    }
    std::map<std::string, Duration> ahead;
    for (const auto* place : m_places) {
        ahead[place->m_account] += place->m_left;
    }
    // Until this one is done its account gets all this, and no other account gets more.
    const auto own = ahead[account] + sound;
    auto all = own;
    for (const auto& [other, left] : ahead) {
        all += other == account ? Duration() : std::min(left, own);
    }
    const auto end = std::max(unhindered.work, workFor(all) / m_turns);
    return {.wait = end - unhindered.work, .work = unhindered.work};
}

std::size_t DictationLine::waiting() const {
    const std::scoped_lock lock(m_mutex);
    return m_calls.size();
}

void DictationLine::callNext() {
    while (m_free > 0 && !m_calls.empty()) {
        const auto next = std::ranges::min_element(m_calls, {}, [this](const Call* call) {
            return std::tuple(startOf(call->place->m_account), call->place->m_number);
        });
        auto& call = **next;
        m_calls.erase(next);
        m_standing = startOf(call.place->m_account);
        m_ahead[call.place->m_account] = m_standing + call.sound;
        std::erase_if(m_ahead, [this](const auto& entry) { return entry.second <= m_standing; });
        --m_free;
        call.called = true;
        m_changed.notify_all();
    }
}

DictationLine::Duration DictationLine::startOf(const std::string& account) const {
    const auto found = m_ahead.find(account);
    return found == m_ahead.end() ? m_standing : std::max(m_standing, found->second);
}

void DictationLine::finish(Place& place, Duration sound, Duration work) {
    const std::scoped_lock lock(m_mutex);
    place.m_left = std::max(Duration(), place.m_left - sound);
    m_work += work;
    m_sound += sound;
    if (m_sound > pacedBy) {
        m_work /= 2;
        m_sound /= 2;
    }
    ++m_free;
    callNext();
}

DictationLine::Turn::Turn(Place& place, Duration sound, Time begin)
    : m_place(&place)
    , m_sound(sound)
    , m_begin(begin) {}

DictationLine::Turn::Turn(Turn&& other) noexcept
    : m_place(std::exchange(other.m_place, nullptr))
    , m_sound(other.m_sound)
    , m_begin(other.m_begin) {}

DictationLine::Turn::~Turn() {
    if (m_place) {
        auto& line = m_place->m_line;
        line.finish(*m_place, m_sound, std::chrono::duration_cast<Duration>(line.m_clock() - m_begin));
    }
}

DictationLine::Place::Place(DictationLine& line, std::string account, Duration sound)
    : m_line(line)
    , m_account(std::move(account))
    , m_left(sound) {
    const std::scoped_lock lock(line.m_mutex);
    m_number = line.m_numbers++;
    line.m_places.push_back(this);
}

DictationLine::Place::~Place() {
    const std::scoped_lock lock(m_line.m_mutex);
    m_line.m_places.remove(this);
}

std::optional<DictationLine::Turn> DictationLine::Place::turn(Duration sound, const std::stop_token& stop,
                                                              Time latest) {
    std::unique_lock lock(m_line.m_mutex);
    Call call{.place = this, .sound = sound};
    m_line.m_calls.push_back(&call);
    m_line.callNext();
    if (!m_line.m_changed.wait_until(lock, stop, latest, [&call] { return call.called; })) {
        m_line.m_calls.remove(&call);
        return std::nullopt;
    }
    return Turn(*this, sound, m_line.m_clock());
}

} // namespace velmora::server
