#include "gallery/menu_bar_views.h"

#include "gallery/gallery_hands.h"
#include "gallery/gallery_world.h"
#include "ui/kit/accent_theme.h"
#include "ui/menu_bar/menu_bar_icon_painter.h"
#include "ui/menu_bar/menu_bar_popover_model.h"

namespace velmora::test {
namespace {

QVariantMap icon(const GalleryWorld& world, const char* name, MenuBarIconMode mode, const BrandBars& bars) {
    const MenuBarIconPainter painter(accentColor(accentThemeFromName(world.settings.themeColor())));
    // Files, for a view shows these at once, and other addresses only when it has read them.
    const auto saved = [&](int scale) {
        const QString path =
            world.folder.filePath(QStringLiteral("%1-%2.png").arg(QLatin1String(name)).arg(scale));
        painter.paint(mode, bars, scale).save(path);
        return QUrl::fromLocalFile(path);
    };
    return {{QStringLiteral("name"), QLatin1String(name)},
            {QStringLiteral("22"), saved(1)},
            {QStringLiteral("44"), saved(2)}};
}

GalleryView icons() {
    return {.name = QStringLiteral("menu-icons"),
            .module = "Gallery",
            .type = "TrayIconSheet",
            .size = {},
            .prepare = [](GalleryWorld& world) -> QVariantMap {
                const std::vector<float> levels{0.1F, 0.5F, 0.3F, 0.62F, 0.4F, 0.55F, 0.2F};
                return {{QStringLiteral("icons"),
                         QVariantList{
                             icon(world, "idle", MenuBarIconMode::Idle, restingBrandBars),
                             icon(world, "recording", MenuBarIconMode::Recording, voiceBars(levels)),
                             icon(world, "processing", MenuBarIconMode::Processing, waveBars(0.8)),
                             icon(world, "error", MenuBarIconMode::Error, restingBrandBars),
                         }}};
            }};
}

GalleryView popup(const char* name, const MenuBarPopoverModel::Snapshot& snapshot) {
    return {.name = QLatin1String(name),
            .module = "MenuBar",
            .type = "MenuBarPopoverView",
            .size = {},
            .prepare = [snapshot](GalleryWorld& world) -> QVariantMap {
                auto* popover = new MenuBarPopoverModel(snapshot, world.stage());
                return {{QStringLiteral("popover"), QVariant::fromValue(popover)}};
            }};
}

GalleryView ready(const char* name, const QString& keyLabel, const QString& note = {}) {
    return popup(name, {keyLabel, note, true, true, true});
}

QQuickItem* rowOf(QQuickItem& item, const QString& label) {
    if (item.property("label") == label)
        return &item;
    for (QQuickItem* child : item.childItems())
        if (QQuickItem* row = rowOf(*child, label))
            return row;
    return nullptr;
}

GalleryView worked() {
    GalleryView view = ready("menu-popup-worked", QStringLiteral("Right ⌥"));
    view.arrange = [](QQuickItem& root) {
        QMetaObject::invokeMethod(&root, "moveFocus", Q_ARG(QVariant, false));
        if (QQuickItem* row = rowOf(root, QStringLiteral("Настройки")))
            hover(*row);
    };
    return view;
}

} // namespace

std::vector<GalleryView> menuBarViews() {
    return {
        icons(),
        ready("menu-popup-record", QStringLiteral("Fn"), QStringLiteral("Fn здесь — правый Ctrl")),
        ready("menu-popup-option", QStringLiteral("Right ⌥")),
        ready("menu-popup-unnamed-key", QStringLiteral("?")),
        ready("menu-popup-long-key", QStringLiteral("⌃⌥⇧⌘ Scroll Lock")),
        worked(),
        popup("menu-popup-input-monitoring", {}),
        popup("menu-popup-accessibility", {.hotkeyActive = true, .inputMonitoringGranted = true}),
        popup("menu-popup-restart", {.inputMonitoringGranted = true, .accessibilityGranted = true}),
    };
}

} // namespace velmora::test
