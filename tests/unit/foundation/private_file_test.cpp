#include "foundation/descriptor.h"
#include "foundation/life_claim.h"
#include "foundation/log.h"
#include "foundation/private_file.h"
#include "support/file_size_limit.h"
#include "support/other_process.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <fcntl.h>
#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;

namespace {

class PrivateFileTest : public testing::Test {
protected:
    static QByteArray contentOf(const QString& path) {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(none)");
    }
    static void write(const QString& path, const QByteArray& bytes) {
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    }
    [[nodiscard]] QStringList names() const {
        return QDir(folder.path()).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("history.json"));
};

} // namespace

TEST_F(PrivateFileTest, Replace_LeavesTheFileAloneInItsFolder) {
    ASSERT_TRUE(replacePrivateFile(path, "one"));
    ASSERT_TRUE(replacePrivateFile(path, "two"));
    EXPECT_EQ(contentOf(path), QByteArray("two"));
    EXPECT_EQ(names(), QStringList{QStringLiteral("history.json")});
}

TEST_F(PrivateFileTest, Replace_DiskFull_KeepsTheOldFileAndLeavesNothingBeside) {
    ASSERT_TRUE(replacePrivateFile(path, "old"));
    {
        const FileSizeLimit full(1000);
        EXPECT_FALSE(replacePrivateFile(path, QByteArray(5000, 'x')));
    }
    EXPECT_EQ(contentOf(path), QByteArray("old"));
    EXPECT_EQ(names(), QStringList{QStringLiteral("history.json")});
}

TEST_F(PrivateFileTest, Leftovers_OfKilledProcesses_GoAndOtherNamesStay) {
    const QStringList others{
        QStringLiteral("auth-tokens.json.aBcDeF"), QStringLiteral("history.json"),
        QStringLiteral("history.json.aBcDe"),      QStringLiteral("history.json.aBcDeFg"),
        QStringLiteral("history.json.backup"),     QStringLiteral("history.json.damaged"),
        QStringLiteral("my-history.json.aBcDeF")};
    for (const QString& name :
         others + QStringList{QStringLiteral("history.json.aBcDeF"), QStringLiteral("history.json.x1y2z3")})
        write(folder.filePath(name), "[");
    removeUnfinished(path);
    EXPECT_EQ(names(), others);
}

TEST_F(PrivateFileTest, Leftover_WhileItsProcessLives_Stays) {
    const QString unfinished = path + QStringLiteral(".aBcDeF");
    OtherProcess writer([&](const auto& ready) {
        const Descriptor file(::open(QFile::encodeName(unfinished).constData(), O_CREAT | O_WRONLY, 0600));
        if (claimForLife(file.get(), unfinished))
            ready();
        ::pause();
    });
    removeUnfinished(path);
    EXPECT_TRUE(QFile::exists(unfinished));
    writer.kill();
    removeUnfinished(path);
    EXPECT_FALSE(QFile::exists(unfinished));
}

// Nobody may take what another process is about to put in place for a leftover.
TEST_F(PrivateFileTest, Replace_WhileAnotherProcessClearsUp_NeverFails) {
    const OtherProcess cleaner([&](const auto& ready) {
        ready();
        while (true)
            removeUnfinished(path);
    });
    for (int i = 0; i < 1000; ++i)
        ASSERT_TRUE(replacePrivateFile(path, QByteArray::number(i))) << i;
}

TEST_F(PrivateFileTest, KeepDamaged_PutsItAsideInPlaceOfAnOlderOne_AndSaysSo) {
    QStringList lines;
    const LogCapture capture([&lines](const QString& line) { lines.append(line); });
    write(path + QStringLiteral(".damaged"), "older");
    write(path, "broken");
    keepDamaged("history", path);
    EXPECT_EQ(contentOf(path + QStringLiteral(".damaged")), QByteArray("broken"));
    EXPECT_FALSE(QFile::exists(path));
    EXPECT_EQ(
        lines,
        QStringList(QStringLiteral("[Velmora] history: %1 is not readable, kept as %1.damaged").arg(path)));
}
