#include "foundation/log.h"
#include "platform/linux/no_desktop_paste.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

TEST(NoDesktopPaste, Text_IsKeptInMemory) {
    NoDesktopPaste paste;
    EXPECT_FALSE(paste.string());
    paste.setString(QStringLiteral("текст"));
    EXPECT_EQ(paste.string(), QStringLiteral("текст"));
    paste.clearContents();
    EXPECT_FALSE(paste.string());
}

TEST(NoDesktopPaste, Chords_AreToldInTheLogOnce) {
    QStringList lines;
    const LogCapture capture([&](const QString& line) { lines << line; });
    NoDesktopPaste paste;
    paste.postPasteChord();
    paste.postPasteChord();
    EXPECT_EQ(lines,
              QStringList{QStringLiteral("[Velmora] paste: no X11 session, the text stays in the history")});
}

} // namespace
} // namespace velmora::test
