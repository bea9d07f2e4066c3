#include "platform/linux/x11_workspace.h"
#include "support/desktop/target_application.h"
#include "support/desktop/wait_until.h"

#include <QFile>
#include <QTemporaryDir>

namespace velmora::test {
namespace {

RunningApplication application(const char* name, const char* id) {
    return {QString::fromUtf8(name), QString::fromUtf8(id)};
}

TEST(X11Workspace, MousepadIsInFront_IsKnownByItsDesktopFile) {
    const auto target = TargetApplication::mousepad();
    ASSERT_TRUE(target->isReady());
    X11Workspace workspace;
    EXPECT_TRUE(waitUntil(
        [&] { return workspace.frontmostApplication() == application("Mousepad", "org.xfce.mousepad"); }));
}

TEST(X11Workspace, XtermIsInFront_IsKnownByItsWindowClass) {
    const auto target = TargetApplication::xterm();
    ASSERT_TRUE(target->isReady());
    X11Workspace workspace;
    EXPECT_TRUE(
        waitUntil([&] { return workspace.frontmostApplication() == application("XTerm", "debian-xterm"); }));
}

TEST(X11Workspace, ApplicationHasNoDesktopFile_IsCalledByItsWindowClass) {
    const auto target = TargetApplication::qtEditor(QStringLiteral(QT_EDITOR));
    ASSERT_TRUE(target->isReady());
    X11Workspace workspace;
    EXPECT_TRUE(waitUntil([&] {
        return workspace.frontmostApplication() ==
               RunningApplication{QStringLiteral("qt_editor"), std::nullopt};
    }));
}

TEST(X11Workspace, NoWindow_NoApplicationIsInFront) {
    X11Workspace workspace;
    EXPECT_TRUE(waitUntil([&] { return !workspace.frontmostApplication(); }));
}

TEST(X11Workspace, NoServer_NoApplicationIsInFront) {
    EXPECT_EQ(X11Workspace(":987").frontmostApplication(), std::nullopt);
}

TEST(XdgWorkspace, OpenURL_StartsTheDesktopsOpenerWithIt) {
    const QTemporaryDir folder;
    const QString told = folder.filePath(QStringLiteral("told"));
    QFile opener(folder.filePath(QStringLiteral("xdg-open")));
    ASSERT_TRUE(opener.open(QIODevice::WriteOnly));
    opener.write("#!/bin/sh\nprintf %s \"$*\" >'" + told.toUtf8() + ".part' && mv '" + told.toUtf8() +
                 ".part' '" + told.toUtf8() + "'\n");
    opener.close();
    ASSERT_TRUE(opener.setPermissions(QFile::ReadOwner | QFile::ExeOwner));
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", folder.path().toUtf8() + ':' + path);
    const bool opened = XdgWorkspace().openURL(QUrl(QStringLiteral("https://velmora.test/a?b=$(c)&d=ё")));
    qputenv("PATH", path);

    EXPECT_TRUE(opened);
    ASSERT_TRUE(waitUntil([&] { return QFile::exists(told); }));
    QFile file(told);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(file.readAll(), "https://velmora.test/a?b=$(c)&d=%D1%91");
}

TEST(XdgWorkspace, OpenURL_NothingToOpenWith) {
    const QByteArray path = qgetenv("PATH");
    qputenv("PATH", "/nonexistent");
    EXPECT_FALSE(XdgWorkspace().openURL(QUrl(QStringLiteral("https://velmora.test"))));
    qputenv("PATH", path);
    EXPECT_FALSE(XdgWorkspace().openURL(QUrl(QStringLiteral("--version"))));
}

} // namespace
} // namespace velmora::test
