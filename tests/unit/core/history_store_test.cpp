#include "core/history_store.h"
#include "foundation/log.h"
#include "support/killed_writer.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace velmora;

namespace {

class HistoryStoreTest : public testing::Test {
protected:
    [[nodiscard]] QByteArray fileContent() const {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    [[nodiscard]] static HistoryItem item(const QString& text) {
        return {.date = Date(std::chrono::seconds(1'800'000'000)),
                .durationSec = 1.5,
                .rawText = text,
                .cleanedText = text,
                .appName = QStringLiteral("Mousepad"),
                .appBundleId = QStringLiteral("org.xfce.mousepad")};
    }
    void damage(const QByteArray& bytes) const {
        QDir().mkpath(folder.path());
        QFile file(path);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(bytes);
    }

    QTemporaryDir root;
    QDir folder{root.filePath(QStringLiteral("data/Velmora"))};
    QString path = folder.filePath(QStringLiteral("history.json"));
};

} // namespace

TEST_F(HistoryStoreTest, FirstStart_EmptyAndNoFileUntilTheFirstAdd) {
    HistoryStore store(folder.path());
    EXPECT_TRUE(store.items().empty());
    EXPECT_FALSE(QFile::exists(path));
    store.add(item(QStringLiteral("a")));
    EXPECT_TRUE(QFile::exists(path));
}

TEST_F(HistoryStoreTest, Add_NewestFirst_SurvivesANewObject) {
    HistoryStore store(folder.path());
    const HistoryItem first = item(QStringLiteral("first"));
    const HistoryItem second = item(QStringLiteral("second"));
    store.add(first);
    store.add(second);
    EXPECT_THAT(HistoryStore(folder.path()).items(), testing::ElementsAre(second, first));
}

TEST_F(HistoryStoreTest, Add_TheTwoHundredAndFirst_DropsTheOldest) {
    HistoryStore store(folder.path());
    for (int i = 0; i <= 200; ++i)
        store.add(item(QString::number(i)));
    EXPECT_EQ(store.items().size(), 200U);
    EXPECT_EQ(store.items().back().rawText, QStringLiteral("1"));
    EXPECT_EQ(QJsonDocument::fromJson(fileContent()).array().size(), 200);
}

TEST_F(HistoryStoreTest, DamagedFile_IsEmptyAndUntouchedUntilTheNextChange) {
    damage("[{\"id\": ");
    HistoryStore store(folder.path());
    EXPECT_TRUE(store.items().empty());
    EXPECT_EQ(fileContent(), QByteArray("[{\"id\": "));
    store.remove(QUuid::createUuid());
    EXPECT_EQ(QJsonDocument::fromJson(fileContent()).array().size(), 0);
}

TEST_F(HistoryStoreTest, DamagedFile_IsSetAsideAtTheNextChange_AndTheLogSaysSo) {
    QStringList lines;
    const LogCapture capture([&lines](const QString& line) { lines.append(line); });
    damage("[{\"id\": ");
    HistoryStore store(folder.path());
    store.add(item(QStringLiteral("a")));
    store.add(item(QStringLiteral("b")));
    QFile aside(path + QStringLiteral(".damaged"));
    ASSERT_TRUE(aside.open(QIODevice::ReadOnly));
    EXPECT_EQ(aside.readAll(), QByteArray("[{\"id\": "));
    EXPECT_EQ(HistoryStore(folder.path()).items().size(), 2U);
    EXPECT_EQ(
        lines,
        QStringList(QStringLiteral("[Velmora] history: %1 is not readable, kept as %1.damaged").arg(path)));
}

TEST_F(HistoryStoreTest, DamagedFile_MendedByAnotherSession_IsNotSetAside) {
    damage("[{\"id\": ");
    HistoryStore store(folder.path());
    damage("[]");
    store.add(item(QStringLiteral("a")));
    EXPECT_FALSE(QFile::exists(path + QStringLiteral(".damaged")));
}

TEST_F(HistoryStoreTest, WhatAKilledWriteHasLeft_GoesAtTheStart) {
    QDir().mkpath(folder.path());
    QFile left(path + QStringLiteral(".aB3dEf"));
    ASSERT_TRUE(left.open(QIODevice::WriteOnly));
    const HistoryStore store(folder.path());
    EXPECT_FALSE(left.exists());
}

TEST_F(HistoryStoreTest, ItemWithoutARequiredKey_MakesTheWholeFileUnreadable) {
    {
        HistoryStore store(folder.path());
        store.add(item(QStringLiteral("a")));
        store.add(item(QStringLiteral("b")));
    }
    QJsonArray items = QJsonDocument::fromJson(fileContent()).array();
    QJsonObject incomplete = items[0].toObject();
    incomplete.remove(QStringLiteral("durationSec"));
    items[0] = incomplete;
    damage(QJsonDocument(items).toJson());
    EXPECT_TRUE(HistoryStore(folder.path()).items().empty());
}

TEST_F(HistoryStoreTest, Remove_KnownId_KeepsTheOrderOfTheRest) {
    HistoryStore store(folder.path());
    const HistoryItem a = item(QStringLiteral("a"));
    const HistoryItem b = item(QStringLiteral("b"));
    const HistoryItem c = item(QStringLiteral("c"));
    for (const HistoryItem& one : {a, b, c})
        store.add(one);
    store.remove(b.id);
    EXPECT_THAT(HistoryStore(folder.path()).items(), testing::ElementsAre(c, a));
}

TEST_F(HistoryStoreTest, Remove_UnknownId_ListUnchangedAndFileRewritten) {
    HistoryStore store(folder.path());
    store.add(item(QStringLiteral("a")));
    QFile::remove(path);
    store.remove(QUuid::createUuid());
    EXPECT_EQ(store.items().size(), 1U);
    EXPECT_TRUE(QFile::exists(path));
}

TEST_F(HistoryStoreTest, AbsentApplication_RoundTripsAsAbsentAndLeavesNoKey) {
    HistoryItem anonymous = item(QStringLiteral("a"));
    anonymous.appName.reset();
    anonymous.appBundleId.reset();
    HistoryStore(folder.path()).add(anonymous);
    EXPECT_FALSE(fileContent().contains("appName"));
    EXPECT_THAT(HistoryStore(folder.path()).items(), testing::ElementsAre(anonymous));
}

TEST_F(HistoryStoreTest, File_DatesAreSecondsSince2001InPrettyPrintedJson) {
    HistoryItem dated = item(QStringLiteral("a"));
    dated.date = fromReferenceSeconds(12.5);
    HistoryStore(folder.path()).add(dated);
    EXPECT_TRUE(fileContent().contains("\"date\": 12.5,\n"));
}

TEST_F(HistoryStoreTest, WriteFails_ListInMemoryStaysRight) {
    QFile blocker(root.filePath(QStringLiteral("data")));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    HistoryStore store(folder.path());
    store.add(item(QStringLiteral("a")));
    EXPECT_EQ(store.items().size(), 1U);
    blocker.remove();
    QDir().mkpath(folder.path());
    store.add(item(QStringLiteral("b")));
    EXPECT_EQ(HistoryStore(folder.path()).items().size(), 2U);
}

TEST_F(HistoryStoreTest, FileAndFolder_AreTheUsersAlone) {
    HistoryStore(folder.path()).add(item(QStringLiteral("a")));
    const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ExeGroup | QFile::ReadOther |
                        QFile::WriteOther | QFile::ExeOther;
    EXPECT_EQ(QFile::permissions(path) & others, QFile::Permissions());
    EXPECT_EQ(QFile::permissions(folder.path()) & others, QFile::Permissions());
}

TEST_F(HistoryStoreTest, Changes_AreSignalled) {
    HistoryStore store(folder.path());
    QSignalSpy changes(&store, &HistoryStore::itemsChanged);
    const HistoryItem a = item(QStringLiteral("a"));
    store.add(a);
    store.remove(a.id);
    EXPECT_EQ(changes.count(), 2);
}

TEST_F(HistoryStoreTest, ProgramKilledInTheMiddleOfAWrite_KeepsWhatWasThere) {
    HistoryStore store(folder.path());
    for (const char* text : {"one", "two"})
        store.add(item(QLatin1String(text)));
    const HistoryItem next = item(QString(100'000, u'я'));
    for (const qint64 bytes : {0, 1, 200, 4'096, 100'000}) {
        EXPECT_TRUE(test::killAtByte(bytes, [&] { HistoryStore(folder.path()).add(next); })) << bytes;
        EXPECT_EQ(HistoryStore(folder.path()).items(), store.items()) << bytes;
    }
    store.add(next);
    EXPECT_EQ(HistoryStore(folder.path()).items(), store.items());
}
