#include "backend/auth_store.h"
#include "foundation/log.h"
#include "foundation/user_defaults.h"
#include "support/killed_writer.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSignalSpy>
#include <QTemporaryDir>

#include <gmock/gmock.h>
#include <sys/stat.h>

#include <atomic>
#include <filesystem>
#include <thread>

using namespace velmora;

namespace {

struct AuthStoreTest : testing::Test {
    QTemporaryDir root;
    const QString folder = root.path() + QStringLiteral("/data/Velmora");
    const QString file = folder + QStringLiteral("/auth-tokens.json");
    UserDefaults defaults{root.path() + QStringLiteral("/defaults.json")};

    void put(const QByteArray& bytes) const {
        QDir().mkpath(folder);
        QFile out(file);
        ASSERT_TRUE(out.open(QIODevice::WriteOnly));
        out.write(bytes);
    }
    [[nodiscard]] QByteArray content() const {
        QFile in(file);
        return in.open(QIODevice::ReadOnly) ? in.readAll() : QByteArray("no file");
    }
};

const Tokens pair{QStringLiteral("a.b.c"), QStringLiteral("r")};

} // namespace

TEST_F(AuthStoreTest, Start_NoFile_SignedOutAndTheFolderMade) {
    const AuthStore store(folder, defaults);
    EXPECT_FALSE(store.isLoggedIn());
    EXPECT_EQ(store.tokens(), std::nullopt);
    EXPECT_TRUE(QDir(folder).exists());
}

TEST_F(AuthStoreTest, Start_FileWithBothTokens_SignedIn) {
    put(R"({"refreshToken":"r","accessToken":"a.b.c"})");
    const AuthStore store(folder, defaults);
    EXPECT_TRUE(store.isLoggedIn());
    EXPECT_EQ(store.tokens(), pair);
}

TEST_F(AuthStoreTest, Start_FileWithAnAccessTokenAlone_SignedOutAndTheFileLeft) {
    const QByteArray half = R"({"accessToken":"a"})";
    put(half);
    const AuthStore store(folder, defaults);
    EXPECT_FALSE(store.isLoggedIn());
    EXPECT_EQ(content(), half);
}

TEST_F(AuthStoreTest, Start_CorruptFile_SignedOutAndTheFileLeft) {
    for (const QByteArray& bytes : {QByteArray(), QByteArray("{nope"), QByteArray("[]"),
                                    QByteArray(R"({"accessToken":1,"refreshToken":"r"})")}) {
        put(bytes);
        const AuthStore store(folder, defaults);
        EXPECT_FALSE(store.isLoggedIn()) << bytes.constData();
        EXPECT_EQ(content(), bytes);
    }
}

TEST_F(AuthStoreTest, ProgramKilledInTheMiddleOfASave_KeepsTheTokensThatWereThere) {
    AuthStore store(folder, defaults);
    store.save(pair.accessToken, pair.refreshToken);
    for (const qint64 bytes : {0, 1, 40}) {
        EXPECT_TRUE(test::killAtByte(bytes, [&] { store.save(QString(100, u'x'), QString(100, u'y')); }))
            << bytes;
        EXPECT_EQ(AuthStore(folder, defaults).tokens(), pair) << bytes;
        EXPECT_EQ(QDir(folder).entryList(QDir::Files | QDir::Hidden),
                  QStringList{QStringLiteral("auth-tokens.json")});
    }
}

TEST_F(AuthStoreTest, CorruptFile_IsSetAsideAtTheNextSignIn_AndTheLogSaysSo) {
    QStringList lines;
    const LogCapture capture([&lines](const QString& line) { lines.append(line); });
    put(R"({"accessToken":"a"})");
    AuthStore store(folder, defaults);
    store.save(QStringLiteral("b"), QStringLiteral("c"));
    store.save(QStringLiteral("d"), QStringLiteral("e"));
    QFile aside(file + QStringLiteral(".damaged"));
    ASSERT_TRUE(aside.open(QIODevice::ReadOnly));
    EXPECT_EQ(aside.readAll(), QByteArray(R"({"accessToken":"a"})"));
    EXPECT_TRUE(AuthStore(folder, defaults).isLoggedIn());
    EXPECT_EQ(
        lines,
        QStringList(QStringLiteral("[Velmora] sign-in: %1 is not readable, kept as %1.damaged").arg(file)));
}

TEST_F(AuthStoreTest, WhatAKilledWriteHasLeft_GoesAtTheStart) {
    QDir().mkpath(folder);
    QFile left(file + QStringLiteral(".aBcDeF"));
    ASSERT_TRUE(left.open(QIODevice::WriteOnly));
    const AuthStore store(folder, defaults);
    EXPECT_FALSE(left.exists());
}

TEST_F(AuthStoreTest, Save_WritesExactlyTheTwoKeys_ForTheUserAlone) {
    AuthStore store(folder, defaults);
    store.save(pair.accessToken, pair.refreshToken);
    EXPECT_EQ(content(), R"({"accessToken":"a.b.c","refreshToken":"r"})");
    struct stat status {};
    ASSERT_EQ(::stat(QFile::encodeName(file).constData(), &status), 0);
    EXPECT_EQ(status.st_mode & 07777, 0600U);
    EXPECT_EQ(AuthStore(folder, defaults).tokens(), pair);
    EXPECT_EQ(QDir(folder).entryList(QDir::Files | QDir::Hidden).size(), 1);
}

TEST_F(AuthStoreTest, Save_WhileAnotherThreadWatches_NoFileOfTheFolderIsEverOpenToOthersOrHalf) {
    const mode_t oldMask = ::umask(0);
    AuthStore store(folder, defaults);
    std::atomic<bool> done = false;
    std::atomic<int> looks = 0;
    std::atomic<int> openToOthers = 0;
    std::thread watcher([&, path = folder.toStdString()] {
        while (!done) {
            std::error_code ignored;
            for (const auto& entry : std::filesystem::directory_iterator(path, ignored)) {
                struct stat status {};
                if (::stat(entry.path().c_str(), &status) != 0)
                    continue;
                ++looks;
                if ((status.st_mode & 077) != 0)
                    ++openToOthers;
            }
        }
    });
    for (int i = 0; i < 100 || looks < 100; ++i) {
        store.save(QStringLiteral("access %1").arg(i), QStringLiteral("refresh %1").arg(i));
        EXPECT_EQ(AuthStore(folder, defaults).tokens(), store.tokens());
    }
    done = true;
    watcher.join();
    ::umask(oldMask);
    EXPECT_EQ(openToOthers, 0);
}

TEST_F(AuthStoreTest, Save_FolderCannotBeMade_SessionGoesOnInMemory) {
    QFile blocker(root.path() + QStringLiteral("/data"));
    ASSERT_TRUE(blocker.open(QIODevice::WriteOnly));
    AuthStore store(folder, defaults);
    store.save(pair.accessToken, pair.refreshToken);
    EXPECT_TRUE(store.isLoggedIn());
    EXPECT_EQ(store.tokens(), pair);
    EXPECT_FALSE(AuthStore(folder, defaults).isLoggedIn());
}

TEST_F(AuthStoreTest, Save_FileCannotBeReplaced_OldFileStays) {
    ASSERT_TRUE(QDir().mkpath(file + QStringLiteral("/in the way")));
    AuthStore store(folder, defaults);
    store.save(pair.accessToken, pair.refreshToken);
    EXPECT_TRUE(store.isLoggedIn());
    EXPECT_TRUE(QDir(file).exists());
    EXPECT_EQ(QDir(folder).entryList(QDir::Files | QDir::Hidden), QStringList());
}

TEST_F(AuthStoreTest, Clear_RemovesTokensAndFile) {
    AuthStore store(folder, defaults);
    store.save(pair.accessToken, pair.refreshToken);
    store.clear();
    EXPECT_FALSE(store.isLoggedIn());
    EXPECT_EQ(store.tokens(), std::nullopt);
    EXPECT_FALSE(QFile::exists(file));
    store.clear(); // and again, with nothing to delete
}

TEST_F(AuthStoreTest, Signals_TellOfChangesOnly) {
    AuthStore store(folder, defaults);
    const QSignalSpy tokens(&store, &AuthStore::tokensChanged);
    const QSignalSpy loggedIn(&store, &AuthStore::isLoggedInChanged);
    store.save(pair.accessToken, pair.refreshToken);
    EXPECT_THAT((std::array{tokens.size(), loggedIn.size()}), testing::ElementsAre(1, 1));
    store.save(pair.accessToken, QStringLiteral("r2"));
    EXPECT_THAT((std::array{tokens.size(), loggedIn.size()}), testing::ElementsAre(2, 1));
    store.clear();
    store.clear();
    EXPECT_THAT((std::array{tokens.size(), loggedIn.size()}), testing::ElementsAre(3, 2));
}

TEST_F(AuthStoreTest, IssuedState_Is48LowercaseHexDigits_NewEachTimeAndStoredUnderItsKey) {
    AuthStore store(folder, defaults);
    const QString first = store.issuePendingAuthState();
    const QString second = store.issuePendingAuthState();
    static const QRegularExpression form(QStringLiteral("\\A[0-9a-f]{48}\\z"));
    EXPECT_TRUE(form.match(first).hasMatch()) << qPrintable(first);
    EXPECT_NE(first, second);
    EXPECT_EQ(defaults.string(QStringLiteral("pendingAuthState")), second);
    EXPECT_EQ(defaults.string(QStringLiteral("pendingAsanaState")), std::nullopt);
    const QString asana = store.issueAsanaPendingState();
    const QString drive = store.issueGoogleDrivePendingState();
    EXPECT_EQ(defaults.string(QStringLiteral("pendingAsanaState")), asana);
    EXPECT_EQ(defaults.string(QStringLiteral("pendingGoogleDriveState")), drive);
    EXPECT_TRUE(store.consumePendingAuthState(second));
    EXPECT_TRUE(store.consumeAsanaPendingState(asana));
    EXPECT_TRUE(store.consumeGoogleDrivePendingState(drive));
}

TEST_F(AuthStoreTest, ConsumeState_SecondTime_IsRejected) {
    AuthStore store(folder, defaults);
    const QString state = store.issuePendingAuthState();
    EXPECT_TRUE(store.consumePendingAuthState(state));
    EXPECT_FALSE(store.consumePendingAuthState(state));
}

TEST_F(AuthStoreTest, ConsumeState_WrongTry_SpendsTheState) {
    AuthStore store(folder, defaults);
    const QString state = store.issuePendingAuthState();
    EXPECT_FALSE(store.consumePendingAuthState(state.toUpper() + QStringLiteral("x")));
    EXPECT_FALSE(defaults.contains(QStringLiteral("pendingAuthState")));
    EXPECT_FALSE(store.consumePendingAuthState(state));
}

TEST_F(AuthStoreTest, ConsumeState_EmptyStoredAndEmptyGiven_IsRejected) {
    AuthStore store(folder, defaults);
    defaults.set(QStringLiteral("pendingAuthState"), QString());
    EXPECT_FALSE(store.consumePendingAuthState(QString()));
    EXPECT_FALSE(defaults.contains(QStringLiteral("pendingAuthState")));
}

TEST_F(AuthStoreTest, ConsumeState_NothingStored_IsRejected) {
    AuthStore store(folder, defaults);
    EXPECT_FALSE(store.consumePendingAuthState(QString()));
    EXPECT_FALSE(store.consumeAsanaPendingState(QStringLiteral("x")));
}

TEST_F(AuthStoreTest, ConsumeState_StateOfASupersededAttempt_IsRejected) {
    AuthStore store(folder, defaults);
    const QString first = store.issuePendingAuthState();
    (void)store.issuePendingAuthState();
    EXPECT_FALSE(store.consumePendingAuthState(first));
}

TEST_F(AuthStoreTest, PendingState_SurvivesARestart) {
    const QString state = AuthStore(folder, defaults).issuePendingAuthState();
    UserDefaults reread(root.path() + QStringLiteral("/defaults.json"));
    EXPECT_TRUE(AuthStore(folder, reread).consumePendingAuthState(state));
}
