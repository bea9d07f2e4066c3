#include "foundation/log.h"
#include "foundation/user_defaults.h"
#include "support/killed_writer.h"
#include "support/wait.h"

#include <QDir>
#include <QFile>
#include <QLockFile>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QThread>

#include <gmock/gmock.h>

using namespace velmora;
using velmora::test::waitUntil;

namespace {

class UserDefaultsTest : public testing::Test {
protected:
    [[nodiscard]] QByteArray fileContent() const {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void writeFile(const QByteArray& bytes) const {
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QTemporaryDir folder;
    QString path = folder.filePath(QStringLiteral("deep/defaults.json"));
    const QString key = QStringLiteral("key");
};

} // namespace

TEST_F(UserDefaultsTest, Reading_NothingWritten_GivesNoneAndMakesNoFile) {
    const UserDefaults defaults(path);
    EXPECT_FALSE(defaults.contains(key));
    EXPECT_EQ(defaults.string(key), std::nullopt);
    EXPECT_FALSE(QFile::exists(path));
}

TEST_F(UserDefaultsTest, Writing_EachType_SurvivesANewObject) {
    {
        UserDefaults defaults(path);
        defaults.set(QStringLiteral("s"), QStringLiteral("Тихий"));
        defaults.set(QStringLiteral("i"), qint64{-1});
        defaults.set(QStringLiteral("r"), 0.4);
        defaults.set(QStringLiteral("b"), true);
    }
    const UserDefaults defaults(path);
    EXPECT_EQ(defaults.string(QStringLiteral("s")), QStringLiteral("Тихий"));
    EXPECT_EQ(defaults.integer(QStringLiteral("i")), -1);
    EXPECT_EQ(defaults.real(QStringLiteral("r")), 0.4);
    EXPECT_EQ(defaults.boolean(QStringLiteral("b")), true);
}

TEST_F(UserDefaultsTest, Reading_ValueOfAnotherType_GivesNone) {
    UserDefaults defaults(path);
    defaults.set(key, QStringLiteral("12"));
    EXPECT_EQ(defaults.integer(key), std::nullopt);
    EXPECT_EQ(defaults.real(key), std::nullopt);
    EXPECT_EQ(defaults.boolean(key), std::nullopt);
    defaults.set(key, 1.5);
    EXPECT_EQ(defaults.integer(key), std::nullopt);
    defaults.set(key, qint64{2});
    EXPECT_EQ(defaults.real(key), 2.0);
}

TEST_F(UserDefaultsTest, Remove_StoredKey_IsGoneFromTheFile) {
    UserDefaults defaults(path);
    defaults.set(key, true);
    defaults.remove(key);
    EXPECT_FALSE(defaults.contains(key));
    EXPECT_FALSE(fileContent().contains("key"));
}

TEST_F(UserDefaultsTest, Changed_OnlyWhenTheValueIsAnother) {
    UserDefaults defaults(path);
    QSignalSpy changes(&defaults, &UserDefaults::changed);
    defaults.set(key, true);
    defaults.set(key, true);
    defaults.set(key, false);
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(UserDefaultsTest, TwoWriters_DifferentKeys_NeitherIsLost) {
    UserDefaults one(path);
    UserDefaults other(path);
    one.set(QStringLiteral("a"), qint64{1});
    other.set(QStringLiteral("b"), qint64{2});
    one.set(QStringLiteral("c"), qint64{3});
    const UserDefaults reader(path);
    EXPECT_EQ(reader.integer(QStringLiteral("a")), 1);
    EXPECT_EQ(reader.integer(QStringLiteral("b")), 2);
    EXPECT_EQ(reader.integer(QStringLiteral("c")), 3);
}

TEST_F(UserDefaultsTest, TwoWriters_AtTheSameTime_EveryKeyIsKept) {
    const auto writeMany = [this](const char* prefix) {
        UserDefaults defaults(path);
        for (int i = 0; i < 20; ++i)
            defaults.set(QLatin1String(prefix) + QString::number(i), qint64{i});
    };
    const std::unique_ptr<QThread> one(QThread::create(writeMany, "a"));
    const std::unique_ptr<QThread> other(QThread::create(writeMany, "b"));
    one->start();
    other->start();
    one->wait();
    other->wait();
    const UserDefaults reader(path);
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(reader.integer(QStringLiteral("a%1").arg(i)), i);
        EXPECT_EQ(reader.integer(QStringLiteral("b%1").arg(i)), i);
    }
}

TEST_F(UserDefaultsTest, Changed_ByAnotherWriter_IsSeenAndReported) {
    UserDefaults watching(path);
    QSignalSpy changes(&watching, &UserDefaults::changed);
    UserDefaults other(path);
    other.set(key, QStringLiteral("ralt"));
    ASSERT_TRUE(waitUntil([&] { return !changes.isEmpty(); }));
    EXPECT_EQ(watching.string(key), QStringLiteral("ralt"));
}

TEST_F(UserDefaultsTest, Changed_ByAnEditorInPlace_IsSeenAndReported) {
    UserDefaults watching(path);
    watching.set(key, QStringLiteral("fn"));
    QSignalSpy changes(&watching, &UserDefaults::changed);
    writeFile(R"({"key":"rcmd"})");
    ASSERT_TRUE(waitUntil([&] { return !changes.isEmpty(); }));
    EXPECT_EQ(watching.string(key), QStringLiteral("rcmd"));
}

TEST_F(UserDefaultsTest, WriterKilledInTheMiddle_NothingIsLostAndTheNextWriteWorks) {
    const QString text(100'000, u'a');
    UserDefaults(path).set(key, text);
    for (const qint64 bytes : {200, 4'096, 50'000, 100'000}) {
        EXPECT_TRUE(test::killAtByte(bytes, [&] { UserDefaults(path).set(key, text + u'b'); })) << bytes;
        EXPECT_EQ(UserDefaults(path).string(key), text) << bytes;
        UserDefaults next(path);
        next.set(QStringLiteral("next"), bytes);
        EXPECT_TRUE(next.isSaved());
        EXPECT_EQ(UserDefaults(path).integer(QStringLiteral("next")), bytes);
        EXPECT_EQ(UserDefaults(path).string(key), text) << bytes;
    }
    EXPECT_FALSE(QFile::exists(path + QStringLiteral(".damaged")));
}

TEST_F(UserDefaultsTest, DamagedFile_ReadAsEmptyAndSetAsideAtTheNextWrite) {
    QStringList lines;
    const LogCapture capture([&lines](const QString& line) { lines.append(line); });
    QDir().mkpath(QFileInfo(path).path());
    writeFile("{\"key\": tru");
    UserDefaults defaults(path);
    EXPECT_FALSE(defaults.contains(key));
    EXPECT_EQ(fileContent(), QByteArray("{\"key\": tru"));
    defaults.set(key, true);
    EXPECT_EQ(UserDefaults(path).boolean(key), true);
    QFile aside(path + QStringLiteral(".damaged"));
    ASSERT_TRUE(aside.open(QIODevice::ReadOnly));
    EXPECT_EQ(aside.readAll(), QByteArray("{\"key\": tru"));
    EXPECT_EQ(lines.size(), 1);
}

TEST_F(UserDefaultsTest, WhatAKilledWriteHasLeft_GoesAtTheStart) {
    QDir().mkpath(QFileInfo(path).path());
    QFile left(path + QStringLiteral(".aBcDeF"));
    ASSERT_TRUE(left.open(QIODevice::WriteOnly));
    const UserDefaults defaults(path);
    EXPECT_FALSE(left.exists());
}

TEST_F(UserDefaultsTest, WhatAnotherIsWriting_StaysAtTheStart) {
    QDir().mkpath(QFileInfo(path).path());
    QFile written(path + QStringLiteral(".aBcDeF"));
    ASSERT_TRUE(written.open(QIODevice::WriteOnly));
    QLockFile writer(path + QStringLiteral(".lock"));
    ASSERT_TRUE(writer.lock());
    const UserDefaults defaults(path);
    EXPECT_TRUE(written.exists());
}

TEST_F(UserDefaultsTest, Write_FolderCannotBeWritten_KeepsTheValueInMemory) {
    const LogCapture silence([](const QString&) {});
    QFile blocker(folder.filePath(QStringLiteral("file")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    UserDefaults defaults(blocker.fileName() + QStringLiteral("/defaults.json"));
    defaults.set(key, true);
    EXPECT_EQ(defaults.boolean(key), true);
}

TEST_F(UserDefaultsTest, FileThatCannotBeWritten_IsKnownUntilAWriteReachesTheDisk) {
    UserDefaults defaults(path);
    EXPECT_TRUE(defaults.isSaved());
    QDir(folder.filePath(QStringLiteral("deep"))).removeRecursively();
    defaults.set(key, true);
    EXPECT_FALSE(defaults.isSaved());
    EXPECT_EQ(defaults.boolean(key), true);
    QDir().mkpath(folder.filePath(QStringLiteral("deep")));
    defaults.set(key, false);
    EXPECT_TRUE(defaults.isSaved());
    EXPECT_EQ(UserDefaults(path).boolean(key), false);
}
