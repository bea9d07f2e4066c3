#include "foundation/error.h"
#include "platform/linux/detached_process.h"
#include "support/wait.h"

#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;

TEST(DetachedProcess, Program_IsStartedWithItsArguments) {
    const QTemporaryDir folder;
    const QString marker = folder.filePath(QStringLiteral("it ran"));
    startDetached(QStringLiteral("/bin/sh"), {QStringLiteral("-c"), QStringLiteral("touch \"$0\""), marker});
    EXPECT_TRUE(waitUntil([&] { return QFile::exists(marker); }));
}

TEST(DetachedProcess, NoSuchProgram_IsAFailureWithAReason) {
    try {
        startDetached(QStringLiteral("/nowhere/sh"), {});
        FAIL();
    } catch (const Error& error) {
        EXPECT_FALSE(error.localizedDescription().isEmpty());
    }
}
