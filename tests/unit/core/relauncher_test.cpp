#include "core/relauncher.h"
#include "foundation/error.h"
#include "foundation/log.h"
#include "support/hand_loop.h"
#include "support/wait.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

class RelauncherTest : public testing::Test {
protected:
    [[nodiscard]] Relauncher makeRelauncher() {
        return Relauncher({.loop = loop,
                           .executable = QStringLiteral("/opt/it's/velmora"),
                           .processId = 42,
                           .start =
                               [this](const QString& program, const QStringList& arguments) {
                                   steps.push_back(program + QLatin1Char(' ') + arguments.value(0));
                                   script = arguments.value(1);
                                   if (startFails)
                                       throw PlainError(QStringLiteral("no such shell"));
                               },
                           .dismissModalUIThen =
                               [this](const std::function<void()>& then) {
                                   steps.push_back(QStringLiteral("dismiss"));
                                   then();
                               },
                           .terminate = [this] { steps.push_back(QStringLiteral("terminate")); }});
    }

    HandLoop loop;
    bool startFails = false;
    QStringList steps;
    QString script;
    QStringList logged;
    LogCapture capture{[this](const QString& line) { logged.push_back(line); }};
};

// Runs the scripts beside an old process that lives until the test ends it. The program that is launched
// again and the `sleep` of the scripts write down that they ran.
class RelaunchScriptTest : public testing::TestWithParam<const char*> {
protected:
    void SetUp() override {
        ASSERT_TRUE(QDir(folder.path()).mkpath(place()));
        makeProgram(executable(), QStringLiteral("echo ran >> '%1'").arg(launches()));
        makeProgram(folder.filePath(QStringLiteral("bin/sleep")),
                    QStringLiteral("echo $1 >> '%1'\nexec /bin/sleep $1").arg(sleeps()));
        old.start(QStringLiteral("/bin/cat"), {});
        ASSERT_TRUE(old.waitForStarted());
    }
    void TearDown() override { endOldProcess(); }

    void run(const QString& script) {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("PATH"), folder.filePath(QStringLiteral("bin:")) +
                                                       environment.value(QStringLiteral("PATH")));
        shell.setProcessEnvironment(environment);
        shell.start(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script});
        ASSERT_TRUE(shell.waitForStarted());
    }
    void endOldProcess() {
        old.closeWriteChannel();
        old.waitForFinished();
    }
    [[nodiscard]] static QStringList lines(const QString& path) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return {};
        return QString::fromUtf8(file.readAll()).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    }

    [[nodiscard]] static QString place() { return QString::fromUtf8(GetParam()); }
    [[nodiscard]] QString executable() const { return folder.filePath(place()) + QLatin1String("/velmora"); }
    [[nodiscard]] QString launches() const { return folder.filePath(QStringLiteral("launches")); }
    [[nodiscard]] QString sleeps() const { return folder.filePath(QStringLiteral("sleeps")); }

    QTemporaryDir folder;
    QProcess old;
    QProcess shell;

private:
    void makeProgram(const QString& path, const QString& commands) {
        ASSERT_TRUE(QDir(folder.path()).mkpath(QStringLiteral("bin")));
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write("#!/bin/sh\n" + commands.toUtf8() + "\n");
        file.close();
        ASSERT_TRUE(file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    }
};

} // namespace

TEST_P(RelaunchScriptTest, Relaunch_RunsTheProgramOnceTheOldProcessHasGone) {
    run(relaunchScript(executable(), old.processId()));
    ASSERT_TRUE(waitUntil([&] { return lines(sleeps()).size() >= 2; }));
    EXPECT_THAT(lines(launches()), IsEmpty());
    endOldProcess();
    EXPECT_TRUE(waitUntil([&] { return shell.state() == QProcess::NotRunning; }));
    EXPECT_EQ(shell.exitCode(), 0);
    EXPECT_THAT(lines(launches()), ElementsAre(QStringLiteral("ran")));
    EXPECT_EQ(lines(sleeps()).first(), QStringLiteral("0.1"));
}

TEST_P(RelaunchScriptTest, DelayedRelaunch_ItsShellEndsAtOnceAndTheHelperWaitsForTheOldProcess) {
    run(delayedRelaunchScript(executable(), old.processId()));
    EXPECT_TRUE(shell.waitForFinished());
    EXPECT_EQ(shell.exitCode(), 0);
    ASSERT_TRUE(waitUntil([&] { return lines(sleeps()).size() >= 3; }));
    EXPECT_THAT(lines(sleeps()).mid(0, 2), ElementsAre(QStringLiteral("0.5"), QStringLiteral("0.1")));
    EXPECT_THAT(lines(launches()), IsEmpty());
    endOldProcess();
    EXPECT_TRUE(waitUntil([&] { return !lines(launches()).isEmpty(); }));
    EXPECT_THAT(lines(launches()), ElementsAre(QStringLiteral("ran")));
}

INSTANTIATE_TEST_SUITE_P(Paths, RelaunchScriptTest,
                         testing::Values("plain", "it's a place", "say \"hello\"", "$HOME `x` \\ ; &",
                                         "Диктовка"));

TEST_F(RelauncherTest, Relaunch_StartsTheHelperThenClosesTheWindowsThenTerminates) {
    Relauncher relauncher = makeRelauncher();
    EXPECT_TRUE(relauncher.relaunch());
    EXPECT_THAT(steps, ElementsAre(QStringLiteral("/bin/sh -c"))); // the button's own turn ends first
    loop.runPosted();
    EXPECT_THAT(steps, ElementsAre(QStringLiteral("/bin/sh -c"), QStringLiteral("dismiss"),
                                   QStringLiteral("terminate")));
    EXPECT_EQ(script, QStringLiteral("while kill -0 42 2>/dev/null; do sleep 0.1; done\n"
                                     "exec '/opt/it'\\''s/velmora'"));
    EXPECT_THAT(logged, IsEmpty());
}

TEST_F(RelauncherTest, RelaunchWithoutAHelper_IsLoggedAndTheProcessStays) {
    startFails = true;
    Relauncher relauncher = makeRelauncher();
    EXPECT_FALSE(relauncher.relaunch());
    loop.runPosted();
    EXPECT_THAT(steps, ElementsAre(QStringLiteral("/bin/sh -c")));
    EXPECT_THAT(logged,
                ElementsAre(QStringLiteral("[Velmora] relaunch: failed to spawn helper: no such shell")));
}

TEST_F(RelauncherTest, RelaunchWithDelay_StartsTheDelayedHelper) {
    Relauncher relauncher = makeRelauncher();
    relauncher.relaunchWithDelay();
    loop.runPosted();
    EXPECT_THAT(steps, ElementsAre(QStringLiteral("/bin/sh -c"), QStringLiteral("dismiss"),
                                   QStringLiteral("terminate")));
    EXPECT_EQ(script, delayedRelaunchScript(QStringLiteral("/opt/it's/velmora"), 42));
}

TEST_F(RelauncherTest, RelaunchWithDelayWithoutAHelper_TerminatesAllTheSame) {
    startFails = true;
    Relauncher relauncher = makeRelauncher();
    relauncher.relaunchWithDelay();
    loop.runPosted();
    EXPECT_THAT(steps, ElementsAre(QStringLiteral("/bin/sh -c"), QStringLiteral("dismiss"),
                                   QStringLiteral("terminate")));
    EXPECT_THAT(logged, IsEmpty());
}
