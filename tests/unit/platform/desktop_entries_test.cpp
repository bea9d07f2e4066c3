#include "platform/linux/desktop_entries.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

class DesktopEntriesTest : public testing::Test {
protected:
    void write(const char* path, const char* text) {
        const QString full = m_folder.filePath(QLatin1String(path));
        QDir().mkpath(QFileInfo(full).path());
        QFile file(full);
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(text);
    }

    DesktopEntries entries(const char* locale = "ru_RU") {
        return DesktopEntries(
            {m_folder.filePath(QStringLiteral("own")), m_folder.filePath(QStringLiteral("all"))},
            QLatin1String(locale));
    }

    static QString id(const std::optional<DesktopEntry>& entry) { return entry ? entry->id : QString(); }

    QTemporaryDir m_folder;
};

constexpr const char* editor = R"([Desktop Entry]
Type=Application
Name=Editor
Name[ru]=Редактор
Name[ru_UA]=Другой
Icon=editor
Exec=env LC_ALL=C /opt/bin/editor-bin --new %U
StartupWMClass=Editor-Window

[Desktop Action New]
Name=New
Exec=other
)";

TEST_F(DesktopEntriesTest, WithID_ReadsTheEntryInTheUsersLanguage) {
    write("all/org.velmora.editor.desktop", editor);
    const auto entry = entries().withID(QStringLiteral("org.velmora.editor"));
    ASSERT_TRUE(entry);
    EXPECT_EQ(entry->name, QStringLiteral("Редактор"));
    EXPECT_EQ(entry->icon, QStringLiteral("editor"));
    EXPECT_EQ(entry->windowClass, QStringLiteral("Editor-Window"));
    EXPECT_EQ(entry->executable, QStringLiteral("editor-bin"));
}

TEST_F(DesktopEntriesTest, WithID_LanguageIsNotThere_NameAsItStands) {
    write("all/org.velmora.editor.desktop", editor);
    EXPECT_EQ(entries("de_DE").withID(QStringLiteral("org.velmora.editor"))->name, QStringLiteral("Editor"));
}

TEST_F(DesktopEntriesTest, WithID_FolderBelow_IsPartOfTheID) {
    write("all/kde/editor.desktop", editor);
    EXPECT_EQ(id(entries().withID(QStringLiteral("kde-editor"))), QStringLiteral("kde-editor"));
}

TEST_F(DesktopEntriesTest, WithID_UsersOwnFileHidesTheOther) {
    write("all/editor.desktop", editor);
    write("own/editor.desktop", "[Desktop Entry]\nType=Application\nName=Mine\nExec=mine\n");
    EXPECT_EQ(entries().withID(QStringLiteral("editor"))->name, QStringLiteral("Mine"));
    write("own/editor.desktop", "[Desktop Entry]\nType=Application\nName=Mine\nHidden=true\n");
    EXPECT_EQ(entries().withID(QStringLiteral("editor")), std::nullopt);
}

TEST_F(DesktopEntriesTest, WithID_NoApplication_IsNone) {
    write("all/link.desktop", "[Desktop Entry]\nType=Link\nName=Link\nURL=https://velmora.test\n");
    EXPECT_EQ(entries().withID(QStringLiteral("link")), std::nullopt);
}

TEST_F(DesktopEntriesTest, OfWindow_TriesWindowClassThenIDThenItsLastPart) {
    write("all/a.desktop", "[Desktop Entry]\nType=Application\nName=A\nStartupWMClass=Wanted\n");
    write("all/wanted.desktop", "[Desktop Entry]\nType=Application\nName=B\n");
    write("all/org.velmora.wanted.desktop", "[Desktop Entry]\nType=Application\nName=C\n");
    DesktopEntries known = entries();
    EXPECT_EQ(id(known.ofWindow(QStringLiteral("Wanted"), {})), QStringLiteral("a"));
    ASSERT_TRUE(QFile::remove(m_folder.filePath(QStringLiteral("all/a.desktop"))));
    EXPECT_EQ(id(entries().ofWindow(QStringLiteral("Wanted"), {})), QStringLiteral("wanted"));
    ASSERT_TRUE(QFile::remove(m_folder.filePath(QStringLiteral("all/wanted.desktop"))));
    EXPECT_EQ(id(entries().ofWindow(QStringLiteral("Wanted"), {})), QStringLiteral("org.velmora.wanted"));
    EXPECT_EQ(entries().ofWindow(QStringLiteral("Other"), {}), std::nullopt);
    EXPECT_EQ(entries().ofWindow({}, {}), std::nullopt);
}

TEST_F(DesktopEntriesTest, OfWindow_ClassCountsBeforeInstance) {
    write("all/a.desktop", "[Desktop Entry]\nType=Application\nName=A\nStartupWMClass=instance\n");
    write("all/b.desktop", "[Desktop Entry]\nType=Application\nName=B\nStartupWMClass=Class\n");
    EXPECT_EQ(id(entries().ofWindow(QStringLiteral("Class"), QStringLiteral("instance"))),
              QStringLiteral("b"));
    EXPECT_EQ(id(entries().ofWindow(QStringLiteral("Unknown"), QStringLiteral("instance"))),
              QStringLiteral("a"));
}

TEST_F(DesktopEntriesTest, OfExecutable_FindsTheProgramThatExecStarts) {
    write("all/editor.desktop", editor);
    EXPECT_EQ(id(entries().ofExecutable(QStringLiteral("editor-bin"))), QStringLiteral("editor"));
    EXPECT_EQ(entries().ofExecutable(QStringLiteral("env")), std::nullopt);
    EXPECT_EQ(entries().ofExecutable({}), std::nullopt);
}

TEST_F(DesktopEntriesTest, ApplicationIsInstalledLater_IsFound) {
    DesktopEntries known = entries();
    EXPECT_EQ(known.withID(QStringLiteral("editor")), std::nullopt);
    write("own/editor.desktop", editor);
    EXPECT_EQ(id(known.withID(QStringLiteral("editor"))), QStringLiteral("editor"));
}

TEST_F(DesktopEntriesTest, FileIsGarbage_IsPassedOver) {
    write("all/garbage.desktop", "\xff\xfe=\n[[[\n=\nName\n[Desktop Entry\n");
    EXPECT_EQ(entries().withID(QStringLiteral("garbage")), std::nullopt);
}

} // namespace
} // namespace velmora::test
