#include "foundation/qt_main_loop.h"
#include "foundation/user_folders.h"
#include "platform/linux/desktop_privacy_rights.h"
#include "platform/linux/pulse_connection.h"
#include "platform/linux/pulse_devices.h"
#include "support/desktop/environment.h"
#include "support/fake_desktop.h"
#include "support/wait.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gmock/gmock.h>

using namespace velmora;
using namespace velmora::test;
using testing::ElementsAre;
using testing::IsEmpty;

namespace {

/// A desktop with the programs that the test installs, which write down how they were started.
class OpenSettingsTest : public testing::Test {
protected:
    void install(const QStringList& programs) {
        for (const QString& program : programs) {
            QFile file(folder.filePath(program));
            ASSERT_TRUE(file.open(QIODevice::WriteOnly));
            file.write(QStringLiteral("#!/bin/sh\necho \"%1 $*\" > '%2.part'\n/bin/mv '%2.part' '%2'\n")
                           .arg(program, started())
                           .toUtf8());
            file.setPermissions(QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        }
    }
    /// The program that is started, and its arguments.
    QString programFor(PrivacyRight right, const QByteArray& desktop) {
        const Environment current("XDG_CURRENT_DESKTOP", desktop);
        rights.openSettings(right);
        EXPECT_TRUE(waitUntil([this] { return QFile::exists(started()); }));
        QFile file(started());
        EXPECT_TRUE(file.open(QIODevice::ReadOnly));
        const QString line = QString::fromUtf8(file.readAll()).trimmed();
        file.remove();
        return line;
    }
    void openOn(const QByteArray& desktop, PrivacyRight right) {
        const Environment current("XDG_CURRENT_DESKTOP", desktop);
        rights.openSettings(right);
    }
    [[nodiscard]] QString started() const { return folder.filePath(QStringLiteral("started.txt")); }
    static QUrl help(const QString& section) {
        QUrl url = QUrl::fromLocalFile(resourcePath(QStringLiteral("help/permissions.html")));
        url.setFragment(section);
        return url;
    }

    QTemporaryDir folder;
    Environment path{"PATH", folder.path().toLocal8Bit()};
    QtMainLoop loop;
    FakeWorkspace workspace;
    PulseConnection connection;
    PulseDevices devices{connection};
    DesktopPrivacyRights rights{loop, connection, devices, workspace};
};

} // namespace

TEST_F(OpenSettingsTest, EachDesktop_ShowsItsOwnSoundPage) {
    install({QStringLiteral("gnome-control-center"), QStringLiteral("systemsettings"),
             QStringLiteral("pavucontrol"), QStringLiteral("cinnamon-settings"),
             QStringLiteral("mate-volume-control"), QStringLiteral("xfce4-settings-manager")});
    const auto sound = PrivacyRight::Microphone;
    EXPECT_EQ(programFor(sound, "GNOME"), QStringLiteral("gnome-control-center sound"));
    EXPECT_EQ(programFor(sound, "ubuntu:GNOME"), QStringLiteral("gnome-control-center sound"));
    EXPECT_EQ(programFor(sound, "KDE"), QStringLiteral("systemsettings kcm_pulseaudio"));
    EXPECT_EQ(programFor(sound, "X-Cinnamon"), QStringLiteral("cinnamon-settings sound"));
    EXPECT_EQ(programFor(sound, "MATE"), QStringLiteral("mate-volume-control"));
    EXPECT_EQ(programFor(sound, "XFCE"), QStringLiteral("pavucontrol"));
    EXPECT_EQ(programFor(sound, "sway"), QStringLiteral("pavucontrol"));
    EXPECT_THAT(workspace.opened, IsEmpty());
}

TEST_F(OpenSettingsTest, PlaybackOfOthers_IsOnTheSoundPageToo) {
    install({QStringLiteral("gnome-control-center")});
    EXPECT_EQ(programFor(PrivacyRight::ScreenRecording, "GNOME"),
              QStringLiteral("gnome-control-center sound"));
}

TEST_F(OpenSettingsTest, DesktopsFirstChoiceNotInstalled_TakesTheNext) {
    install({QStringLiteral("kcmshell5"), QStringLiteral("xfce4-settings-manager")});
    EXPECT_EQ(programFor(PrivacyRight::Microphone, "KDE"), QStringLiteral("kcmshell5 kcm_pulseaudio"));
    EXPECT_EQ(programFor(PrivacyRight::Microphone, "XFCE"), QStringLiteral("xfce4-settings-manager"));
}

TEST_F(OpenSettingsTest, NothingInstalled_OpensTheHelpPageAtTheRightsSection) {
    openOn("GNOME", PrivacyRight::Microphone);
    openOn("", PrivacyRight::ScreenRecording);
    EXPECT_THAT(workspace.opened,
                ElementsAre(help(QStringLiteral("microphone")), help(QStringLiteral("screen-recording"))));
}

TEST_F(OpenSettingsTest, KeysAndPasting_HaveNoPageOnAnyDesktop) {
    install({QStringLiteral("gnome-control-center"), QStringLiteral("pavucontrol")});
    openOn("GNOME", PrivacyRight::InputMonitoring);
    openOn("GNOME", PrivacyRight::Accessibility);
    EXPECT_THAT(workspace.opened,
                ElementsAre(help(QStringLiteral("input-monitoring")), help(QStringLiteral("accessibility"))));
    EXPECT_FALSE(QFile::exists(started()));
}

TEST(HelpPage, EveryRight_HasItsSection) {
    QFile page(QStringLiteral(HELP_PAGE));
    ASSERT_TRUE(page.open(QIODevice::ReadOnly));
    const QByteArray text = page.readAll();
    for (const char* section : {"microphone", "input-monitoring", "accessibility", "screen-recording"})
        EXPECT_TRUE(text.contains(QByteArray("<section id=\"") + section + "\"")) << section;
}
