#include "support/ui/view_host.h"

#include <gtest/gtest.h>

using namespace velmora::test;

TEST(LineSpacing, Applied_AllLinesAreAsFarApart) {
    const auto heightOf = [](const char* spacing) {
        ViewHost host;
        host.showSource(QByteArray("import QtQuick\nimport Velmora.MainWindow\n"
                                   "TextEdit { width: 200; height: 200; text: 'раз\\nдва\\nтри\\nчетыре'\n") +
                        spacing + "}");
        return host.root()->property("contentHeight").toReal();
    };
    const qreal plain = heightOf("");
    const qreal spaced = heightOf("Component.onCompleted: LineSpacing.apply(textDocument, 1.5)");
    EXPECT_NEAR(spaced, plain * 1.5, 4);
}
