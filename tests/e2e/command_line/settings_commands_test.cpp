#include "core/app_settings.h"
#include "support/wait.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;

namespace {

/// The program as a script runs it: nothing but a home, no display and no session.
class SettingsCommands : public testing::Test {
protected:
    struct Result {
        int exitCode = -1;
        QString output;
        QString errors;
    };

    [[nodiscard]] Result run(const QStringList& arguments) const {
        QProcess program;
        QProcessEnvironment environment;
        environment.insert(QStringLiteral("HOME"), home.path());
        environment.insert(QStringLiteral("XDG_CONFIG_HOME"), configuration);
        environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C"));
        program.setProcessEnvironment(environment);
        program.start(QStringLiteral(VELMORA_PROGRAM), arguments);
        EXPECT_TRUE(program.waitForFinished());
        EXPECT_EQ(program.exitStatus(), QProcess::NormalExit);
        return {program.exitCode(), QString::fromUtf8(program.readAllStandardOutput()),
                QString::fromUtf8(program.readAllStandardError())};
    }
    [[nodiscard]] Result set(const char* change) const {
        return run({QStringLiteral("--set"), QString::fromUtf8(change)});
    }
    [[nodiscard]] Result get(const char* key) const {
        return run({QStringLiteral("--get"), QString::fromUtf8(key)});
    }

    QTemporaryDir home;
    QString configuration = home.filePath(QStringLiteral("config"));
};

} // namespace

TEST_F(SettingsCommands, SetThenGet_PrintsTheValueAndANewline) {
    EXPECT_EQ(get("readySound").output, QStringLiteral("Тихий\n"));
    const Result changed = run({QStringLiteral("--set"), QStringLiteral("readySound=Системный"),
                                QStringLiteral("--set"), QStringLiteral("hotkeyCustomLabel=⌃ ="),
                                QStringLiteral("--set"), QStringLiteral("minDuration=0.25")});
    EXPECT_EQ(changed.exitCode, 0);
    EXPECT_EQ(changed.output + changed.errors, QString());
    EXPECT_EQ(get("readySound").output, QStringLiteral("Системный\n"));
    EXPECT_EQ(get("hotkeyCustomLabel").output, QStringLiteral("⌃ =\n"));
    EXPECT_EQ(get("minDuration").output, QStringLiteral("0.25\n"));
}

TEST_F(SettingsCommands, List_CanBeFedBackToSet) {
    EXPECT_EQ(set("hotkeyCustomLabel=⌃ =").exitCode, 0);
    const Result listed = run({QStringLiteral("--list-settings")});
    EXPECT_EQ(listed.exitCode, 0);
    const QStringList lines = listed.output.split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    EXPECT_EQ(lines.size(),
              AppSettings::staticMetaObject.propertyCount() - AppSettings::staticMetaObject.propertyOffset());
    EXPECT_EQ(lines.front(), QStringLiteral("minDuration=0.4"));
    QStringList arguments;
    for (const QString& line : lines)
        arguments << QStringLiteral("--set") << line;
    configuration = home.filePath(QStringLiteral("elsewhere"));
    EXPECT_EQ(run(arguments).exitCode, 0);
    EXPECT_EQ(run({QStringLiteral("--list-settings")}).output, listed.output);
}

TEST_F(SettingsCommands, UnknownKeyOrBadValue_OneLineAndExit2AndNothingStored) {
    for (const char* change : {"hudsize=large", "showHUD=maybe", "hotkeyCustomMask=-1", "hudSize"}) {
        const Result refused = run({QStringLiteral("--set"), QStringLiteral("hudSize=large"),
                                    QStringLiteral("--set"), QString::fromUtf8(change)});
        EXPECT_EQ(refused.exitCode, 2) << change;
        EXPECT_EQ(refused.output, QString());
        EXPECT_TRUE(refused.errors.startsWith(QLatin1String("velmora: "))) << change;
        EXPECT_EQ(refused.errors.count(QLatin1Char('\n')), 1) << change;
    }
    EXPECT_EQ(get("hudsize").exitCode, 2);
    EXPECT_EQ(get("hudSize").output, QStringLiteral("small\n"));
}

TEST_F(SettingsCommands, StoreThatCannotBeWritten_Exit1) {
    QFile inTheWay(configuration);
    ASSERT_TRUE(inTheWay.open(QIODevice::WriteOnly));
    const Result failed = set("hudSize=large");
    EXPECT_EQ(failed.exitCode, 1);
    EXPECT_TRUE(failed.errors.contains(QLatin1String("velmora: the settings can't be stored\n")));
}

TEST_F(SettingsCommands, InstanceThatIsRunning_SeesTheChange) {
    UserDefaults defaults(configuration + QStringLiteral("/Velmora/defaults.json"));
    const AppSettings settings(defaults);
    EXPECT_EQ(settings.hudSize(), QStringLiteral("small"));
    EXPECT_EQ(set("hudSize=large").exitCode, 0);
    EXPECT_TRUE(waitUntil([&] { return settings.hudSize() == QStringLiteral("large"); }));
}
