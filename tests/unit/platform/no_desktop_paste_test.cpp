#include "foundation/log.h"
#include "platform/linux/no_desktop_paste.h"

#include <gtest/gtest.h>

namespace velmora::test {
namespace {

TEST(NoDesktopPaste, Chord_TextIsUndelivered) {
    NoDesktopPaste paste;
    QStringList undelivered;
    paste.onUndelivered([&](const QString& text) { undelivered << text; });
    paste.clearContents();
    paste.setString(QStringLiteral("текст"));
    EXPECT_EQ(undelivered, QStringList());
    paste.postPasteChord();
    EXPECT_EQ(undelivered, QStringList{QStringLiteral("текст")});
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
