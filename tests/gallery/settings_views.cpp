#include "gallery/settings_views.h"

#include "gallery/gallery_hands.h"
#include "gallery/gallery_world.h"
#include "support/settings_stage.h"
#include "ui/settings/settings_sheet_model.h"

#include <QQuickWindow>
#include <QTest>

namespace velmora::test {
namespace {

constexpr QSize usual(820, 660);
constexpr QSize small(760, 560);
constexpr QSize low(760, 420);

/// What the settings need beyond the world's objects.
class SheetStage final : public QObject {
public:
    SheetStage(GalleryWorld& world, const QString& tab)
        : QObject(world.stage())
        , settings(world.loop, world.defaults, world.settings, world.auth, world.workspace, m_info)
        , m_model(settings.neighbours) {
        settings.nav.openSettings(tab);
    }

    [[nodiscard]] QVariantMap properties() {
        return {{QStringLiteral("model"), QVariant::fromValue(&m_model)}};
    }
    void grant(const std::set<PrivacyRight>& rights) {
        settings.rights.granted = rights;
        settings.perms.refresh();
    }

private:
    InfoDictionary m_info{{{QStringLiteral("CFBundleShortVersionString"), QStringLiteral("1.2.0")},
                           {QStringLiteral("VelmorLandingURL"), QStringLiteral("https://velmora.app/")}}};

public:
    SettingsStage settings;

private:
    SettingsSheetModel m_model;
};

const std::set<PrivacyRight> allRights{PrivacyRight::Microphone, PrivacyRight::InputMonitoring,
                                       PrivacyRight::Accessibility};

/// `name` begins with the tab's id.
GalleryView sheet(
    const char* name, QSize size, std::function<void(SheetStage&)> set = [](SheetStage&) {},
    std::function<void(QQuickItem&)> arrange = [](QQuickItem&) {}) {
    return {.name = QStringLiteral("settings-") + QLatin1String(name),
            .module = "Settings",
            .type = "SettingsSheet",
            .size = size,
            .prepare =
                [tab = QString::fromLatin1(name).section(QLatin1Char('-'), 0, 0), set](GalleryWorld& world) {
                    auto& stage = *new SheetStage(world, tab);
                    set(stage);
                    return stage.properties();
                },
            .arrange = std::move(arrange)};
}

void signIn(SheetStage& stage) {
    stage.settings.signIn("anna@example.org");
}

void grantAll(SheetStage& stage) {
    stage.grant(allRights);
}

void takeKeyboard(QQuickItem& item) {
    QMetaObject::invokeMethod(&item, "takeFocus");
}

} // namespace

std::vector<GalleryView> settingsViews() {
    return {
        sheet("general", usual),
        sheet("general-signed-in", usual, signIn),
        sheet("general-small", small, signIn),
        sheet("general-long-address", small,
              [](SheetStage& stage) {
                  stage.settings.signIn(
                      "anna-maria.konstantinopolskaya-preobrazhenskaya.personal.account@very-"
                      "long-subdomain.of-some-company.example.org");
              }),
        sheet("general-keyboard", usual, signIn,
              [](QQuickItem& item) {
                  takeKeyboard(item);
                  tab(item);
              }),
        sheet("recording-sheet", usual, signIn),
        sheet("recording-sheet-small", small, signIn),
        sheet("ai-signed-out", usual),
        sheet("ai-loading", usual, [](SheetStage& stage) { stage.settings.signIn(); }),
        sheet("ai", usual, signIn),
        sheet("ai-keyboard", usual, signIn,
              [](QQuickItem& item) {
                  takeKeyboard(item);
                  tab(item, 2);
              }),
        sheet("permissions", usual, grantAll),
        sheet("permissions-none", usual),
        sheet("permissions-some", usual,
              [](SheetStage& stage) {
                  stage.grant({PrivacyRight::InputMonitoring, PrivacyRight::Accessibility});
              }),
        sheet("permissions-low", low, grantAll,
              [](QQuickItem& item) {
                  takeKeyboard(item);
                  tab(item, 4);
              }),
        sheet("about", usual, signIn),
        sheet("about-keyboard", usual, signIn,
              [](QQuickItem& item) {
                  takeKeyboard(item);
                  QTest::keyClick(item.window(), Qt::Key_Tab, Qt::ControlModifier);
                  QTest::keyClick(item.window(), Qt::Key_Tab, Qt::ControlModifier | Qt::ShiftModifier);
              }),
        sheet("unknown", usual, signIn),
    };
}

} // namespace velmora::test
