#include "dictation_runs.h"

#include "dictating_application.h"
#include "pass.h"
#include "read_watch.h"
#include "result.h"
#include "scripted_server.h"
#include "support/desktop/physical_keyboard.h"
#include "support/desktop/target_application.h"
#include "support/desktop/wait_until.h"

using namespace std::chrono_literals;

namespace velmora::bench {
namespace {

constexpr int runs = 20;
constexpr auto held = 400ms;    // more than a tap, and longer than the shortest recording that counts
constexpr auto pause = 250ms;   // between pieces, so that each finds an idle paste queue
constexpr auto settled = 500ms; // the clipboard comes back and the last piece is read
constexpr std::size_t singlePieces = 3;
constexpr std::size_t pieces = singlePieces + 3; // two together, and what `done` adds

struct Script {
    std::vector<ScriptedServer::Step> steps;
    QString text;
};

Script makeScript(int run) {
    const QByteArray number = QByteArray::number(run);
    QByteArray text;
    const auto chunk = [&](const char* name) {
        const QByteArray piece = name + number + " ";
        text += piece;
        return "event: chunk\ndata: {\"delta\":\"" + piece + "\"}\n\n";
    };
    Script script;
    script.steps.push_back({0ms, "event: status\ndata: {\"stage\":\"transcribing\"}\n\n"});
    for (const char* name : {"one", "two", "three"})
        script.steps.push_back({pause, chunk(name)});
    const QByteArray four = chunk("four");
    script.steps.push_back({pause, four + chunk("five")});
    text += "rest" + number + " ";
    script.steps.push_back({pause, "event: done\ndata: {\"text\":\"" + text + "\",\"wordCount\":6}\n\n"});
    script.text = QString::fromLatin1(text);
    return script;
}

/// A user with an editor in front.
class Desk {
public:
    Desk() {
        if (!m_editor->isReady())
            throw NotMeasured(QStringLiteral("the editor is not ready"));
        waitFor("hotkey", [this] { return m_application.isReady(); });
    }

    /// Has the editor make the window with which it reads the clipboard, and everything else be ready.
    void warmUp() { (void)dictate(0); }

    DictationTimes measure(int run) {
        const Observation seen = dictate(run);
        const std::vector<Clock::time_point> read = lastAnswers(seen.answersTaken);
        const auto sent = seen.exchange.sent.begin() + 1; // behind the status
        DictationTimes times;
        times.pressToAudio = milliseconds(seen.pressed, seen.audio);
        times.releaseToRequest = milliseconds(seen.released, seen.exchange.firstByte);
        times.request = seen.exchange.request;
        for (std::size_t piece = 0; piece < singlePieces; ++piece)
            times.textToRead.push_back(milliseconds(sent[std::ptrdiff_t(piece)], read[piece]));
        times.pairToRead = milliseconds(sent[3], read[4]);
        times.doneToIdle = milliseconds(sent[4], std::max(seen.idle, read[5]));
        return times;
    }

    /// Whether all of it is in the editor.
    [[nodiscard]] bool isComplete() { return m_editor->document(m_text) == m_text; }

private:
    struct Observation {
        Clock::time_point pressed, audio, released, idle;
        ScriptedServer::Exchange exchange;
        std::vector<Clock::time_point> answersTaken;
    };

    Observation dictate(int run) {
        const Script script = makeScript(run);
        m_text += script.text;
        m_server.setScript(script.steps);
        const ReadWatch reads;

        Observation seen;
        seen.pressed = Clock::now();
        m_keyboard.press(test::key::rightControl);
        waitFor("audio", [this] { return m_application.firstBuffer().has_value(); });
        seen.audio = *m_application.firstBuffer();
        pass(held);
        (void)m_application.takeIdle();
        seen.released = Clock::now();
        m_keyboard.release(test::key::rightControl);
        std::optional<Clock::time_point> idle;
        waitFor("end of the dictation", [&] { return (idle = m_application.takeIdle()).has_value(); });
        seen.idle = *idle;
        pass(settled);
        std::optional<ScriptedServer::Exchange> exchange = m_server.takeExchange();
        if (!exchange)
            throw NotMeasured(QStringLiteral("the server saw no dictation"));
        seen.exchange = *std::move(exchange);
        seen.answersTaken = reads.answersTaken();
        return seen;
    }

    void waitFor(const char* what, const std::function<bool()>& condition) {
        if (!test::waitUntil([&] { return condition() || !m_application.failure().isEmpty(); }) ||
            !m_application.failure().isEmpty())
            throw NotMeasured(
                QStringLiteral("waiting for %1: %2").arg(QLatin1String(what), m_application.failure()));
    }

    // The editor asks for several things at each paste, the same ones every time, and for the text last.
    static std::vector<Clock::time_point> lastAnswers(const std::vector<Clock::time_point>& taken) {
        const std::size_t each = taken.size() / pieces;
        if (each == 0 || taken.size() % pieces != 0)
            throw NotMeasured(QStringLiteral("%1 answers taken for %2 pieces").arg(taken.size()).arg(pieces));
        std::vector<Clock::time_point> last;
        for (std::size_t piece = 1; piece <= pieces; ++piece)
            last.push_back(taken[piece * each - 1]);
        return last;
    }

    std::unique_ptr<test::TargetApplication> m_editor = test::TargetApplication::mousepad();
    ScriptedServer m_server;
    DictatingApplication m_application{m_server.port()};
    test::PhysicalKeyboard m_keyboard;
    QString m_text;
};

} // namespace

const std::vector<DictationTimes>& DictationRuns::get() {
    if (!m_dictations.empty())
        return m_dictations;
    Desk desk;
    desk.warmUp();
    for (int run = 1; run <= runs; ++run)
        m_dictations.push_back(desk.measure(run));
    if (!desk.isComplete()) {
        m_dictations.clear();
        throw NotMeasured(QStringLiteral("text was lost on the way to the editor"));
    }
    return m_dictations;
}

} // namespace velmora::bench
