#include "foundation/process_folder.h"
#include "support/other_process.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;

namespace {

class ProcessFolderTest : public testing::Test {
protected:
    [[nodiscard]] ProcessFolder make() const { return {root.path(), QStringLiteral("recordings")}; }
    [[nodiscard]] QStringList folders() const {
        return QDir(root.path()).entryList({QStringLiteral("recordings-*")}, QDir::Dirs);
    }
    static void fill(const QString& folder) {
        QFile file(folder + QStringLiteral("/.part"));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    }
    /// Lives with a folder in which there is a file.
    [[nodiscard]] OtherProcess otherOwner() const {
        return OtherProcess([this](const auto& ready) {
            ProcessFolder theirs = make();
            fill(theirs.path());
            ready();
            ::pause();
        });
    }

    QTemporaryDir root;
};

} // namespace

TEST_F(ProcessFolderTest, Path_MakesTheFolderForTheUserAlone_AndKeepsIt) {
    ProcessFolder folder = make();
    EXPECT_TRUE(folders().isEmpty());
    const QString path = folder.path();
    EXPECT_TRUE(QDir(path).exists());
    EXPECT_EQ(QFile::permissions(path) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    EXPECT_EQ(folder.path(), path);
}

TEST_F(ProcessFolderTest, End_TakesTheFolderWithWhatIsInIt) {
    {
        ProcessFolder folder = make();
        fill(folder.path());
    }
    EXPECT_TRUE(folders().isEmpty());
}

TEST_F(ProcessFolderTest, FolderThatWasTakenAway_IsMadeAgain) {
    ProcessFolder folder = make();
    QDir(folder.path()).removeRecursively();
    EXPECT_TRUE(QDir(folder.path()).exists());
}

TEST_F(ProcessFolderTest, ParentThatCannotBeWritten_GivesAPathAtWhichNothingCanBeMade) {
    ProcessFolder folder(root.filePath(QStringLiteral("absent")), QStringLiteral("recordings"));
    EXPECT_FALSE(QFile(folder.path() + QStringLiteral("/file")).open(QIODevice::WriteOnly));
}

TEST_F(ProcessFolderTest, RemoveAbandoned_LeavesThatOfALivingProcess_AndTakesItOnceThatIsKilled) {
    OtherProcess owner = otherOwner();
    ASSERT_EQ(folders().size(), 1);
    make().removeAbandoned();
    EXPECT_EQ(folders().size(), 1);
    owner.kill();
    make().removeAbandoned();
    EXPECT_TRUE(folders().isEmpty());
}

TEST_F(ProcessFolderTest, RemoveAbandoned_LeavesItsOwnAndOtherNames) {
    ProcessFolder folder = make();
    const QString path = folder.path();
    QDir(root.path()).mkdir(QStringLiteral("recordings-of-last-year"));
    QDir(root.path()).mkdir(QStringLiteral("somethin-123456"));
    folder.removeAbandoned();
    EXPECT_TRUE(QDir(path).exists());
    EXPECT_TRUE(QDir(root.path()).exists(QStringLiteral("recordings-of-last-year")));
    EXPECT_TRUE(QDir(root.path()).exists(QStringLiteral("somethin-123456")));
}

TEST_F(ProcessFolderTest, RemoveAbandoned_FollowsNoLink) {
    QDir(root.path()).mkdir(QStringLiteral("music"));
    fill(root.filePath(QStringLiteral("music")));
    ASSERT_TRUE(QFile::link(root.filePath(QStringLiteral("music")),
                            root.filePath(QStringLiteral("recordings-abcdef"))));
    make().removeAbandoned();
    EXPECT_TRUE(QFile::exists(root.filePath(QStringLiteral("music/.part"))));
}
