#include "ui/settings/setting_labels.h"

#include <gtest/gtest.h>

using namespace velmora;

namespace {

struct Case {
    const char* label;
    const char* value;
};

void expectPairs(const SettingLabels& labels, const std::vector<Case>& cases) {
    QVariantList inOrder;
    for (const Case& c : cases) {
        EXPECT_EQ(labels.value(QString::fromUtf8(c.label)), QLatin1String(c.value));
        EXPECT_EQ(labels.label(QLatin1String(c.value)).toStdString(), c.label);
        inOrder.append(QString::fromUtf8(c.label));
    }
    EXPECT_EQ(labels.labels(), inOrder);
}

void expectUnknown(const SettingLabels& labels, const Case& standsFor) {
    for (const char* unknown : {"", "huge", "Сбоку"}) {
        EXPECT_EQ(labels.value(QString::fromUtf8(unknown)), QLatin1String(standsFor.value)) << unknown;
        EXPECT_EQ(labels.label(QString::fromUtf8(unknown)).toStdString(), standsFor.label) << unknown;
    }
}

} // namespace

TEST(SettingLabels, EachLabel_IsOneValue) {
    expectPairs(modeLabels, {{"Push-to-talk", "push-to-talk"}, {"Toggle", "toggle"}});
    expectPairs(hudStyleLabels, {{"Полосы", "bars"}, {"Волна", "wave"}, {"Точки", "dots"}});
    expectPairs(hudSizeLabels, {{"Малый", "small"}, {"Средний", "medium"}, {"Большой", "large"}});
    expectPairs(hudPositionLabels, {{"Сверху", "top"}, {"Снизу", "bottom"}});
}

TEST(SettingLabels, AnythingUnknown_StandsForOneOfThem) {
    expectUnknown(modeLabels, {"Push-to-talk", "push-to-talk"});
    expectUnknown(hudStyleLabels, {"Полосы", "bars"});
    expectUnknown(hudSizeLabels, {"Средний", "medium"});
    expectUnknown(hudPositionLabels, {"Сверху", "top"});
}
