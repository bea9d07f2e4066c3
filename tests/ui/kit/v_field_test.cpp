#include "kit_fixture.h"

using namespace velmora::test;
using testing::Contains;
using testing::Not;

namespace {

const QString search = QStringLiteral("Поиск");

class VFieldTest : public KitTest {
protected:
    void showField(const QByteArray& more = {}) {
        showControls("VField { objectName: 'field'; placeholder: 'Поиск'; onTextEdited: page.note = value;" +
                     more + " }");
    }
    [[nodiscard]] QString value() const { return item("field")->property("value").toString(); }
};

} // namespace

TEST_F(VFieldTest, Typing_FillsItAndClearsThePlaceholder) {
    showField();
    EXPECT_THAT(host.texts(), Contains(search));
    host.click(search);
    host.type(QStringLiteral("ёлка"));
    EXPECT_EQ(value(), QStringLiteral("ёлка"));
    EXPECT_EQ(note(), QStringLiteral("ёлка"));
    EXPECT_THAT(host.texts(), Not(Contains(search)));
    for (int i = 0; i < 4; ++i)
        host.press(Qt::Key_Backspace);
    EXPECT_THAT(host.texts(), Contains(search));
}

TEST_F(VFieldTest, Tab_ReachesIt) {
    showField();
    host.press(Qt::Key_Tab);
    EXPECT_EQ(host.focused(), item("field"));
}

TEST_F(VFieldTest, SelectAllAndType_Replaces) {
    showField(" value: 'старое'");
    host.click(item("field"));
    host.press(Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(item("field")->property("selectedText"), QStringLiteral("старое"));
    host.type(QStringLiteral("н"));
    EXPECT_EQ(value(), QStringLiteral("н"));
}

TEST_F(VFieldTest, ReadAloud_IsNamedByLabelOrPlaceholder) {
    showField();
    EXPECT_EQ(accessibleRole(item("field")), QAccessible::EditableText);
    EXPECT_EQ(accessibleName(item("field")), search);
    item("field")->setProperty("label", QStringLiteral("Имя"));
    EXPECT_EQ(accessibleName(item("field")), QStringLiteral("Имя"));
}

TEST_F(VFieldTest, Secure_ShowsDotsAndIsReadAsAPassword) {
    showField(" value: 'тайна'; secure: true");
    EXPECT_EQ(item("field")->property("displayText"), QString(5, QChar(0x2022)));
    EXPECT_TRUE(stateOf(item("field")).passwordEdit);
}

TEST_F(VFieldTest, Focus_LightsTheFrame) {
    showField();
    EXPECT_NE(host.grab().pixelColor(100, 0), host.theme.accent());
    host.click(item("field"));
    EXPECT_EQ(host.grab().pixelColor(100, 0), host.theme.accent());
}

TEST_F(VFieldTest, IconAndWidth_AreTakenIntoAccount) {
    showField(" icon: VIcon.search; width: 140");
    EXPECT_EQ(item("field")->width(), 140);
    EXPECT_EQ(item("field")->property("leftPadding").toReal(), 32);
}

TEST_F(VFieldTest, Mono_IsInTheMonospacedFace) {
    showField(" mono: true");
    EXPECT_EQ(item("field")->property("font").value<QFont>().families().first(),
              QStringLiteral("JetBrains Mono"));
}

TEST_F(VFieldTest, Disabled_TakesNothing) {
    showField(" enabled: false");
    host.click(item("field"));
    host.type(QStringLiteral("а"));
    EXPECT_EQ(value(), QString());
}
