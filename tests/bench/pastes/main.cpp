// What becomes of a fast stream of pieces in real programs, on an idle machine, beside two compilers, and in
// programs that freeze again and again:  paste_bench [--pieces N] [--interval MS] [--only CONDITION]…
// [TARGET…]
#include "paste_stream.h"
#include "support/desktop/wait_until.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <optional>

using namespace std::chrono_literals;
using namespace velmora;
using namespace velmora::bench;
using velmora::test::TargetApplication;

namespace {

struct Target {
    const char* name;
    std::unique_ptr<TargetApplication> (*start)();
};

constexpr Target targets[] = {
    {"mousepad", &TargetApplication::mousepad},
    {"gedit", &TargetApplication::gedit},
    {"gnome-text-editor", &TargetApplication::gnomeTextEditor},
    {"qt", [] { return TargetApplication::qtEditor(QStringLiteral(QT_EDITOR)); }},
    {"tk", &TargetApplication::tk},
    {"xterm", &TargetApplication::xterm},
    {"vte", &TargetApplication::vteTerminal},
    {"writer", &TargetApplication::writer},
    {"chromium", &TargetApplication::chromium},
    {"firefox", &TargetApplication::firefox},
};
constexpr const char* conditions[] = {"idle", "busy", "frozen"};

/// Two compilers that work for as long as this lives.
class Compilers {
public:
    Compilers() {
        for (QProcess& compiler : m_compilers) {
            compiler.setChildProcessModifier([] { ::setpgid(0, 0); });
            compiler.start(QStringLiteral("sh"),
                           {QStringLiteral("-c"),
                            QStringLiteral("while :; do echo '#include <regex>\nstd::regex r(\"a*\");' | "
                                           "c++ -std=c++20 -O2 -x c++ -c -o /dev/null -; done")});
            compiler.waitForStarted();
        }
    }
    ~Compilers() {
        for (QProcess& compiler : m_compilers) {
            ::kill(static_cast<pid_t>(-compiler.processId()), SIGKILL);
            compiler.waitForFinished();
        }
    }
    Compilers(const Compilers&) = delete;
    Compilers& operator=(const Compilers&) = delete;

private:
    QProcess m_compilers[2];
};

Fate measure(TargetApplication& target, const QString& condition, int pieces, MainLoop::Duration interval) {
    std::optional<Compilers> compilers;
    if (condition == QLatin1String("busy"))
        compilers.emplace();
    QtMainLoop loop;
    Timer freezing;
    if (condition == QLatin1String("frozen"))
        freezing = loop.every(1200ms, [&] {
            target.freeze();
            loop.delay(400ms, [&] { target.thaw(); });
        });
    PasteStream stream(target, interval);
    return stream.run(pieces);
}

QStringList takeOptions(QStringList& arguments, const QString& name) {
    QStringList values;
    for (qsizetype at = arguments.indexOf(name); at >= 0 && at + 1 < arguments.size();
         at = arguments.indexOf(name)) {
        values << arguments[at + 1];
        arguments.remove(at, 2);
    }
    return values;
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    QStringList names = QCoreApplication::arguments().mid(1);
    const int pieces =
        takeOptions(names, QStringLiteral("--pieces")).value(0, QStringLiteral("2000")).toInt();
    const std::chrono::milliseconds interval(
        takeOptions(names, QStringLiteral("--interval")).value(0, QStringLiteral("20")).toInt());
    const QStringList only = takeOptions(names, QStringLiteral("--only"));
    std::printf("%d pieces, one every %d ms, in streams of 100\n", pieces,
                static_cast<int>(interval.count()));
    std::printf("%-18s %-7s %5s %8s %6s %12s  %s\n", "target", "machine", "lost", "doubled", "moved",
                "undelivered", "last piece to clipboard back, ms: median, p95, longest");
    bool isClean = true;
    for (const Target& each : targets) {
        if (!names.isEmpty() && !names.contains(QLatin1String(each.name)))
            continue;
        for (const char* condition : conditions) {
            if (!only.isEmpty() && !only.contains(QLatin1String(condition)))
                continue;
            const auto target = each.start();
            if (!target->isReady()) {
                std::printf("%-18s %-7s did not start\n", each.name, condition);
                isClean = false;
                continue;
            }
            const Fate fate = measure(*target, QLatin1String(condition), pieces, interval);
            std::printf("%-18s %-7s %5d %8d %6d %12d  %6.0f %6.0f %6.0f\n", each.name, condition, fate.lost,
                        fate.doubled, fate.outOfOrder, fate.undelivered, fate.clipboardBack.median(),
                        fate.clipboardBack.quantile(0.95), fate.clipboardBack.quantile(1));
            std::fflush(stdout);
            isClean = isClean && fate.lost == 0 && fate.doubled == 0 && fate.outOfOrder == 0 &&
                      fate.undelivered == 0;
        }
    }
    return isClean ? EXIT_SUCCESS : EXIT_FAILURE;
}
