#include "core/relauncher.h"
#include "platform/linux/detached_process.h"
#include "support/wait.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;

namespace {

/// The session's instance, and a program that tries to become it and writes down how that went.
class RelaunchTest : public testing::Test {
protected:
    RelaunchTest() {
        const QString probe = QStringLiteral(INSTANCE_PROBE);
        QFile program(executable());
        EXPECT_TRUE(program.open(QIODevice::WriteOnly));
        program.write(QStringLiteral("#!/bin/sh\n'%1' claim; echo $? > '%2.part'; mv '%2.part' '%2'\n")
                          .arg(probe, outcome())
                          .toUtf8());
        program.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        program.close();
        old.start(probe, {QStringLiteral("hold")});
        EXPECT_TRUE(old.waitForReadyRead());
    }
    ~RelaunchTest() override { endOldProcess(); }

    static void run(const QString& script) {
        startDetached(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), script});
    }
    void endOldProcess() {
        old.kill();
        old.waitForFinished();
    }
    /// The exit status of the program's attempt.
    QByteArray waitForOutcome() const {
        EXPECT_TRUE(waitUntil([this] { return QFile::exists(outcome()); }));
        QFile file(outcome());
        return file.open(QIODevice::ReadOnly) ? file.readAll().trimmed() : QByteArray();
    }
    [[nodiscard]] QString executable() const { return folder.filePath(QStringLiteral("velmora")); }
    [[nodiscard]] QString outcome() const { return folder.filePath(QStringLiteral("outcome")); }

    QTemporaryDir folder;
    QProcess old;
};

} // namespace

TEST_F(RelaunchTest, Relaunch_BecomesTheInstanceAfterTheOldOne) {
    run(relaunchScript(executable(), old.processId()));
    endOldProcess();
    EXPECT_EQ(waitForOutcome(), "0");
}

TEST_F(RelaunchTest, DelayedRelaunch_BecomesTheInstanceAfterTheOldOne) {
    run(delayedRelaunchScript(executable(), old.processId()));
    endOldProcess();
    EXPECT_EQ(waitForOutcome(), "0");
}

TEST_F(RelaunchTest, StartedWhileTheOldOneLives_WouldBeRefused) {
    run(QLatin1Char('\'') + executable() + QLatin1Char('\''));
    EXPECT_EQ(waitForOutcome(), "1");
}
