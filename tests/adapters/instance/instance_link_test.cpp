#include "platform/linux/dbus_instance_link.h"
#include "platform/linux/local_socket_instance_link.h"
#include "platform/linux/make_instance_link.h"
#include "support/desktop/wait_until.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QFileInfo>
#include <QLocalSocket>
#include <QProcess>
#include <QRegularExpression>

#include <gmock/gmock.h>

#include <csignal>

using namespace velmora;
using namespace velmora::test;
using testing::ElementsAre;

namespace {

/// Sessions have a D-Bus, or they don't and the user's runtime folder must do.
class InstanceLinkTest : public testing::TestWithParam<bool> {
protected:
    static bool sessionHasBus() { return GetParam(); }

    std::unique_ptr<InstanceLink> makeLink() const {
        if (sessionHasBus())
            return makeInstanceLink();
        return std::make_unique<LocalSocketInstanceLink>();
    }
    bool claim() {
        return link->claim([this](const InstanceCommand& command) { received.push_back(command); });
    }

    static std::unique_ptr<QProcess> start(const QStringList& arguments) {
        auto process = std::make_unique<QProcess>();
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        if (!sessionHasBus())
            environment.insert(QStringLiteral("DBUS_SESSION_BUS_ADDRESS"),
                               QStringLiteral("unix:path=/nowhere"));
        process->setProcessEnvironment(environment);
        process->setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process->start(QStringLiteral(INSTANCE_PROBE), arguments);
        return process;
    }
    /// Whether another process has had success, while this one goes on with its own events.
    static bool probe(const QStringList& arguments) {
        const auto process = start(arguments);
        EXPECT_TRUE(waitUntil([&] { return process->state() == QProcess::NotRunning; }));
        return process->exitStatus() == QProcess::NormalExit && process->exitCode() == EXIT_SUCCESS;
    }
    static std::unique_ptr<QProcess> holdElsewhere() {
        auto process = start({QStringLiteral("hold")});
        EXPECT_TRUE(process->waitForReadyRead());
        return process;
    }

    std::unique_ptr<InstanceLink> link = makeLink();
    std::vector<InstanceCommand> received;
};

const QString url = QStringLiteral("velmora://auth?token=a%20b&state=%0A\u0439");

} // namespace

TEST_P(InstanceLinkTest, First_Claims) {
    EXPECT_TRUE(claim());
}

TEST_P(InstanceLinkTest, Second_IsRefusedWhileTheFirstLives) {
    ASSERT_TRUE(claim());
    EXPECT_FALSE(probe({QStringLiteral("claim")}));
    link.reset();
    EXPECT_TRUE(probe({QStringLiteral("claim")}));
}

TEST_P(InstanceLinkTest, CommandsOfOthers_ArriveInOrder) {
    ASSERT_TRUE(claim());
    EXPECT_TRUE(probe({QStringLiteral("send"), QStringLiteral("activate"), QStringLiteral("press"),
                       QStringLiteral("release"), url, QStringLiteral("toggle"), QStringLiteral("sign-in")}));
    using namespace instance_command;
    EXPECT_THAT(received, ElementsAre(Activate{}, Press{}, Release{}, OpenURL{url}, Toggle{}, SignIn{}));
}

TEST_P(InstanceLinkTest, ManySenders_AllAreHeard) {
    ASSERT_TRUE(claim());
    std::vector<std::unique_ptr<QProcess>> senders;
    for (int i = 0; i < 5; ++i)
        senders.push_back(
            start({QStringLiteral("send"), QStringLiteral("press"), QStringLiteral("release")}));
    for (const auto& sender : senders) {
        EXPECT_TRUE(waitUntil([&] { return sender->state() == QProcess::NotRunning; }));
        EXPECT_EQ(sender->exitCode(), EXIT_SUCCESS);
    }
    EXPECT_EQ(std::ranges::count(received, InstanceCommand(instance_command::Press{})), 5);
    EXPECT_EQ(std::ranges::count(received, InstanceCommand(instance_command::Release{})), 5);
}

TEST_P(InstanceLinkTest, NoInstance_NothingIsSentAndNoneIsStarted) {
    EXPECT_FALSE(link->send(instance_command::Activate{}));
    EXPECT_FALSE(probe({QStringLiteral("send"), QStringLiteral("press")}));
    EXPECT_TRUE(probe({QStringLiteral("claim")}));
}

TEST_P(InstanceLinkTest, InstanceElsewhere_IsReachedUntilItEnds) {
    const auto first = holdElsewhere();
    EXPECT_FALSE(claim());
    EXPECT_TRUE(link->send(instance_command::Press{}));
    EXPECT_TRUE(link->send(instance_command::OpenURL{url}));
    first->kill();
    first->waitForFinished();
    EXPECT_FALSE(link->send(instance_command::Release{}));
}

TEST_P(InstanceLinkTest, InstanceKilled_TheNextClaims) {
    const auto first = holdElsewhere();
    first->kill(); // it leaves what it can't clear away
    first->waitForFinished();
    EXPECT_TRUE(claim());
    EXPECT_TRUE(probe({QStringLiteral("send"), QStringLiteral("toggle")}));
    EXPECT_THAT(received, ElementsAre(instance_command::Toggle{}));
}

TEST_P(InstanceLinkTest, InstanceThatDoesNotAnswer_IsNotWaitedForForever) {
    const auto first = holdElsewhere();
    ::kill(static_cast<pid_t>(first->processId()), SIGSTOP);
    EXPECT_FALSE(link->send(instance_command::Activate{}));
    EXPECT_FALSE(claim());
    first->kill();
    first->waitForFinished();
}

INSTANTIATE_TEST_SUITE_P(Sessions, InstanceLinkTest, testing::Bool(),
                         [](const auto& session) { return session.param ? "WithBus" : "WithoutBus"; });

TEST(LocalSocketInstanceLink, Socket_IsTheUsersAlone) {
    LocalSocketInstanceLink link;
    ASSERT_TRUE(link.claim([](const InstanceCommand&) {}));
    const QFileInfo socket(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/velmora.socket"));
    ASSERT_TRUE(socket.exists());
    EXPECT_FALSE(socket.permissions() &
                 (QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther));
}

TEST(LocalSocketInstanceLink, LineThatIsNoCommand_IsAnsweredAndIgnored) {
    std::vector<InstanceCommand> received;
    LocalSocketInstanceLink link;
    ASSERT_TRUE(link.claim([&](const InstanceCommand& command) { received.push_back(command); }));
    QLocalSocket other;
    other.connectToServer(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/velmora.socket"));
    ASSERT_TRUE(other.waitForConnected());
    other.write("nonsense\nopen \nto");
    other.write("ggle\n");
    QByteArray answers;
    EXPECT_TRUE(waitUntil([&] { return (answers += other.readAll()).size() == 9; }));
    EXPECT_EQ(answers, "ok\nok\nok\n");
    EXPECT_THAT(received, ElementsAre(instance_command::OpenURL{}, instance_command::Toggle{}));
}

TEST(DbusInstanceLink, Interface_IsTheOneDesktopsCall) {
    std::vector<InstanceCommand> received;
    DbusInstanceLink link;
    ASSERT_TRUE(link.claim([&](const InstanceCommand& command) { received.push_back(command); }));
    const QString name = QStringLiteral("desktop");
    const QDBusConnection desktop = QDBusConnection::connectToBus(QDBusConnection::SessionBus, name);
    const auto call = [&](const char* interface, const char* method, const QVariantList& arguments) {
        QDBusMessage message = QDBusMessage::createMethodCall(
            QStringLiteral("app.velmora.Velmora"), QStringLiteral("/app/velmora/Velmora"),
            QLatin1String(interface), QLatin1String(method));
        message.setArguments(arguments);
        const QDBusPendingCall pending = desktop.asyncCall(message);
        EXPECT_TRUE(waitUntil([&] { return pending.isFinished(); }));
        EXPECT_FALSE(pending.isError()) << pending.error().message().toStdString();
        return pending.reply().arguments().value(0).toString();
    };
    constexpr const char* application = "org.freedesktop.Application";
    const QVariantMap noData;
    call(application, "Open",
         {QStringList{QStringLiteral("velmora://auth?a=1"), QStringLiteral("velmora://auth?a=2")}, noData});
    call(application, "Activate", {noData});
    call(application, "ActivateAction", {QStringLiteral("toggle"), QVariantList(), noData});
    call(application, "ActivateAction", {QStringLiteral("nonsense"), QVariantList(), noData});
    using namespace instance_command;
    EXPECT_THAT(received, ElementsAre(OpenURL{QStringLiteral("velmora://auth?a=1")},
                                      OpenURL{QStringLiteral("velmora://auth?a=2")}, Activate{}, Toggle{}));

    const QString description = call("org.freedesktop.DBus.Introspectable", "Introspect", {});
    const auto types = [&](const QString& method) {
        const qsizetype begin = description.indexOf(QStringLiteral("<method name=\"%1\">").arg(method));
        const QString part =
            description.mid(begin, description.indexOf(QStringLiteral("</method>"), begin) - begin);
        QStringList found;
        static const QRegularExpression argument(QStringLiteral("<arg [^>]*type=\"([^\"]+)\""));
        for (auto match = argument.globalMatch(part); match.hasNext();)
            found << match.next().captured(1);
        return found.join(QLatin1Char(' '));
    };
    EXPECT_EQ(types(QStringLiteral("Activate")), QStringLiteral("a{sv}"));
    EXPECT_EQ(types(QStringLiteral("Open")), QStringLiteral("as a{sv}"));
    EXPECT_EQ(types(QStringLiteral("ActivateAction")), QStringLiteral("s av a{sv}"));
    QDBusConnection::disconnectFromBus(name);
}
