#include "platform/paste_line.h"

#include <QTextBoundaryFinder>

#include <algorithm>

namespace velmora {
namespace {

using namespace std::chrono_literals;

constexpr auto fetchPatience = 150ms; // with the owner of the user's clipboard
constexpr auto readPatience = 1s;
constexpr auto busyPatience = 1500ms; // with a window that has read of this text before: it is slow, not deaf
constexpr auto firstPongPatience = 600ms; // some windows claim to answer pings and don't
constexpr auto settlePatience = 5s;       // with a program that goes on asking
constexpr int missesToUnlearn = 3;
constexpr auto wakeUpPause = 40ms;   // for an answer that nobody fetches
constexpr auto shortestQuiet = 60ms; // where nobody answers pings
constexpr auto longestQuiet = 500ms;
constexpr auto learningQuiet = 300ms;
constexpr qsizetype longestPortion = 32 * 1024; // UTF-16 units
constexpr qsizetype keptPieces = 8;

// Of pings, until a program is through.
struct Rounds {
    int count;
    MainLoop::Duration pause;
};
constexpr Rounds usualRounds{3, 20ms};
constexpr Rounds firstRounds{5, 20ms};
constexpr Rounds doubtfulRounds{8, 60ms};

bool isBreak(QChar character) {
    return character == QLatin1Char('\n') || character == QLatin1Char('\r');
}

// As much of the text as fits into a portion, without cutting a character as the user knows it.
qsizetype portionOf(const QString& text) {
    if (text.size() <= longestPortion)
        return text.size();
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text.constData(), longestPortion + 1);
    finder.setPosition(longestPortion);
    const qsizetype cut = finder.isAtBoundary() ? longestPortion : finder.toPreviousBoundary();
    return cut > 0 ? cut : longestPortion;
}

} // namespace

PasteLine::PasteLine(MainLoop& loop, PasteSystem& system)
    : m_loop(loop)
    , m_system(system) {}

void PasteLine::beginText() {
    m_givenUp.clear();
    m_reading.clear();
    m_heldBreaks.clear();
}

void PasteLine::paste(const QString& piece) {
    const auto target = m_system.focused();
    if (!target || m_givenUp.contains(target->window)) {
        m_undelivered(piece);
        return;
    }
    auto* waiting = m_line.empty() ? nullptr : std::get_if<Paste>(&m_line.back());
    if (waiting && waiting->target == *target)
        waiting->text += piece;
    else
        add(Paste{*target, piece});
}

void PasteLine::pasteClipboard() {
    add(Chord{});
}

void PasteLine::write(const std::optional<QString>& text) {
    add(Write{text ? ClipboardContents::ofText(text->toUtf8()) : ClipboardContents()});
}

void PasteLine::save(Pasteboard::Saved as) {
    add(Save{as});
}

void PasteLine::putBack(Pasteboard::Saved saved) {
    add(PutBack{saved});
}

void PasteLine::add(Step step) {
    m_line.push_back(std::move(step));
    advance();
}

void PasteLine::advance() {
    while (!m_running && !m_line.empty() && !mustWait()) {
        if (hasForeignCopy(m_line.front())) {
            noteForeignCopy(fetch());
            continue;
        }
        const Step step = std::move(m_line.front());
        m_line.pop_front();
        std::visit([this](const auto& each) { perform(each); }, step);
    }
    if (isIdle())
        m_idle();
}

// One that the step would overwrite, or must leave alone.
bool PasteLine::hasForeignCopy(const Step& next) {
    const bool touches = std::holds_alternative<Paste>(next) || std::holds_alternative<PutBack>(next) ||
                         std::holds_alternative<GiveBack>(next);
    return touches && !m_kept.empty() && (m_copied || (m_ours && !m_system.ownsClipboard()));
}

PasteLine::Contents PasteLine::fetch() {
    m_ours.reset();
    m_copied = false;
    Contents contents = m_system.fetch([this] { advance(); });
    if (contents) {
        m_awaited = contents;
        m_fetchPatience = m_loop.after(fetchPatience, [this] {
            m_awaited.reset();
            advance();
        });
    }
    return contents;
}

// Whether another program's clipboard must come in first.
bool PasteLine::mustWait() {
    if (m_awaited && m_awaited->isComplete)
        m_awaited.reset();
    if (m_awaited)
        return true;
    const Kept* toRestore = nullptr;
    if (const auto* putBack = std::get_if<PutBack>(&m_line.front())) {
        const auto kept = m_kept.find(putBack->saved);
        toRestore = kept == m_kept.end() ? nullptr : &kept->second;
    } else if (std::holds_alternative<GiveBack>(m_line.front()) && !m_kept.empty()) {
        toRestore = &m_kept.begin()->second;
    }
    const auto isComing = [](const Contents& contents) { return contents && !contents->isComplete; };
    return toRestore && (isComing(toRestore->contents) || isComing(toRestore->newer));
}

void PasteLine::noteForeignCopy(const Contents& copy) {
    for (auto& [saved, kept] : m_kept)
        kept.newer = copy;
}

void PasteLine::perform(const Paste& paste) {
    Paste left = paste;
    const QString text = takePortion(left);
    if (!left.text.isEmpty())
        m_line.emplace_front(std::move(left));
    if (text.isEmpty())
        return;
    if (m_system.focused() != paste.target) {
        giveUp(paste.target, text);
        return;
    }
    m_running.emplace(Running{.target = paste.target, .text = text, .since = m_loop.now()});
    putUpRunning();
    if (!m_system.postChord(paste.target)) {
        m_running.reset();
        giveUp(paste.target, text);
        return;
    }
    finishAfter(m_reading.contains(paste.target.window) ? busyPatience : readPatience);
}

// Line breaks at the end of a portion wait for the next one in a terminal: nothing is run unasked.
QString PasteLine::takePortion(Paste& paste) {
    const qsizetype size = portionOf(paste.text);
    QString text = paste.text.left(size);
    paste.text.remove(0, size);
    if (!paste.target.isTerminal)
        return text;
    if (m_heldFor == paste.target.window)
        text.prepend(m_heldBreaks);
    m_heldFor = paste.target.window;
    qsizetype end = text.size();
    while (end > 0 && isBreak(text[end - 1]))
        --end;
    m_heldBreaks = text.mid(end);
    text.truncate(end);
    return text;
}

void PasteLine::putUpRunning() {
    const QByteArray text = m_running->text.toUtf8();
    m_running->number = m_system.putUp(text, m_running->target);
    setOurs(ClipboardContents::ofPiece(text));
    m_pieceIsUp = true;
    m_recentPieces.append(text);
    if (m_recentPieces.size() > keptPieces)
        m_recentPieces.removeFirst();
}

void PasteLine::perform(const Chord& /*chord*/) {
    if (const auto target = m_system.focused())
        std::ignore = m_system.postChord(*target);
}

void PasteLine::perform(const Write& write) {
    offer(write.contents);
    m_recentPieces.clear();
    noteForeignCopy(m_ours); // what the user has asked for is not to be replaced by what was there before
}

void PasteLine::perform(const Save& save) {
    const bool isOurs = m_ours && m_system.ownsClipboard();
    m_kept[save.as] = {.contents = isOurs ? m_ours : fetch(), .newer = nullptr};
}

void PasteLine::perform(const PutBack& putBack) {
    const auto kept = m_kept.find(putBack.saved);
    if (kept == m_kept.end())
        return;
    restore(kept->second);
    m_kept.erase(kept);
}

void PasteLine::perform(const GiveBack& /*giveBack*/) {
    if (!m_kept.empty())
        restore(m_kept.begin()->second);
}

void PasteLine::restore(const Kept& kept) {
    // What the user has copied last stays with the program it belongs to.
    if (m_ours || isEcho(kept.newer))
        offer(whatToRestore(kept));
    m_system.giveBackTheRest();
}

ClipboardContents PasteLine::whatToRestore(const Kept& kept) const {
    const bool hasNewer = kept.newer && !kept.newer->contents.isEmpty() && !isEcho(kept.newer);
    const Contents& contents = hasNewer ? kept.newer : kept.contents;
    return contents ? contents->contents : ClipboardContents();
}

// A clipboard manager that puts up again what it has read.
bool PasteLine::isEcho(const Contents& contents) const {
    return contents && contents->contents.text() && m_recentPieces.contains(*contents->contents.text());
}

void PasteLine::offer(const ClipboardContents& contents) {
    m_system.offer(contents);
    m_pieceIsUp = false;
    setOurs(contents);
}

void PasteLine::setOurs(const ClipboardContents& contents) {
    m_ours = std::make_shared<FetchedClipboard>(FetchedClipboard{contents, true});
}

void PasteLine::giveUp(const PasteTarget& target, QString text) {
    m_givenUp.insert(target.window);
    std::erase_if(m_line, [&](const Step& step) {
        const auto* paste = std::get_if<Paste>(&step);
        if (!paste || paste->target.window != target.window)
            return false;
        text += paste->text;
        return true;
    });
    if (std::ranges::none_of(m_line, [](const Step& step) { return std::holds_alternative<Paste>(step); }))
        m_line.emplace_front(GiveBack{});
    m_undelivered(text);
}

bool PasteLine::isRunning(quint64 client, quint64 number) const {
    return m_running && m_running->target.client == client && m_running->number == number;
}

void PasteLine::answered(quint64 client, quint64 number, bool forText) {
    if (!isRunning(client, number))
        return;
    Running& paste = *m_running;
    const MainLoop::TimePoint now = m_loop.now();
    if (paste.answers++ > 0)
        paste.longestPause = std::max(paste.longestPause, now - paste.lastAnswer);
    paste.lastAnswer = now;
    paste.pongs = 0;
    if (forText)
        paste.hasRead = true;
    settle();
}

void PasteLine::taken(quint64 client, quint64 number) {
    if (!isRunning(client, number))
        return;
    ++m_running->taken;
    m_taking.insert(client);
    settle();
}

bool PasteLine::hasPings(const PasteTarget& target) {
    return m_system.answersPings(target) && m_pongs.value(target.window, true);
}

void PasteLine::ponged(quint64 window) {
    m_pongs[window] = true;
    if (!m_running || m_running->target.window != window || !std::exchange(m_running->isPinged, false))
        return;
    // It works its events off in their order: it has seen these answers, even if it doesn't show it.
    m_running->taken = std::max(m_running->taken, m_running->answersBeforePing);
    if (m_running->taken == m_running->answers)
        ++m_running->pongs;
    settle();
}

// A program may ask several times in one paste, and some give it up when the clipboard changes before they
// are through, which may be a while after their last question. So wait until it has fetched every answer, and
// then until it has come back to its events again and again without another question; longer when it usually
// asks more. Each ping also wakes a program that has missed our answer.
void PasteLine::settle() {
    const Running& paste = *m_running;
    if (!paste.hasRead || m_loop.now() - paste.since > settlePatience)
        return;
    const bool pings = hasPings(paste.target);
    const auto patience = m_pongs.contains(paste.target.window) ? busyPatience : firstPongPatience;
    const Habit habit = m_habits.value(paste.target.window);
    const bool isFetching = paste.taken < paste.answers;
    if (isFetching && (pings || m_taking.contains(paste.target.client))) {
        finishAfter(pings ? patience : busyPatience);
        pingAfter(wakeUpPause);
    } else if (pings) {
        const Rounds rounds = habit.answers == 0               ? firstRounds
                              : paste.answers >= habit.answers ? usualRounds
                                                               : doubtfulRounds;
        finishAfter(paste.pongs < rounds.count ? patience : 0ms);
        pingAfter(rounds.pause);
    } else if (habit.answers == 0) {
        finishAfter(learningQuiet);
    } else if (paste.answers < habit.answers) {
        finishAfter(longestQuiet);
    } else {
        finishAfter(std::clamp<MainLoop::Duration>(2 * paste.longestPause, shortestQuiet, longestQuiet));
    }
}

void PasteLine::pingAfter(MainLoop::Duration time) {
    if (m_running->isPinged || !hasPings(m_running->target))
        return;
    m_running->ping = m_loop.after(time, [this] {
        m_system.ping(m_running->target);
        m_running->isPinged = true;
        m_running->answersBeforePing = m_running->answers;
    });
}

void PasteLine::finishAfter(MainLoop::Duration time) {
    m_running->end = m_loop.after(time, [this] { expire(); });
}

void PasteLine::expire() {
    const Running paste = *std::exchange(m_running, std::nullopt);
    if (paste.isPinged && !m_pongs.contains(paste.target.window))
        m_pongs[paste.target.window] = false;
    if (!paste.hasRead) {
        giveUp(paste.target, paste.text);
    } else {
        m_reading.insert(paste.target.window);
        m_habits[paste.target.window].learn(paste.answers);
    }
    advance();
}

void PasteLine::Habit::learn(int latest) {
    if (latest >= answers || ++misses == missesToUnlearn) {
        answers = latest;
        misses = 0;
    }
}

void PasteLine::copiedElsewhere() {
    if (m_system.ownsClipboard())
        return; // old news
    m_copied = true;
    // The target is about to read: it must find its text, once, whatever was copied in between. The copy's
    // owner answers what it was asked while it had the clipboard.
    if (!m_running || m_running->answers > 0 || std::exchange(m_running->reclaimed, true))
        return;
    m_copied = false;
    noteForeignCopy(m_system.fetch([this] { advance(); }));
    putUpRunning();
}

std::optional<ClipboardContents> PasteLine::whatToLeave() const {
    if (!m_ours || !m_system.ownsClipboard())
        return std::nullopt;
    if (!m_kept.empty())
        return whatToRestore(m_kept.begin()->second);
    return m_pieceIsUp ? ClipboardContents() : m_ours->contents;
}

} // namespace velmora
