#include "gallery/kit_views.h"

#include "gallery/gallery_hands.h"

#include <QQuickWindow>
#include <QTest>

namespace velmora::test {
namespace {

GalleryView sheet(const char* name, const char* type) {
    return {.name = QLatin1String(name), .module = "Gallery", .type = type, .size = {}};
}

GalleryView buttons() {
    GalleryView view = sheet("kit-buttons", "ButtonSheet");
    view.arrange = [](QQuickItem& root) {
        part(root, "focused").forceActiveFocus(Qt::TabFocusReason);
        hover(part(root, "hovered"));
    };
    return view;
}

// The buttons while they are held down.
GalleryView pressedButtons() {
    GalleryView view = sheet("kit-buttons-pressed", "ButtonSheet");
    view.arrange = [](QQuickItem& root) {
        for (QQuickItem* item : root.findChildren<QQuickItem*>()) {
            if (item->inherits("QQuickAbstractButton"))
                item->setProperty("down", true);
        }
    };
    return view;
}

// The choices with the keyboard on one of them.
GalleryView choicesAt(const char* name, int tabs) {
    GalleryView view = sheet(name, "ChoiceSheet");
    view.arrange = [tabs](QQuickItem& root) { tab(root, tabs); };
    return view;
}

// One with the focus, and one with its list open and the pointer in it.
GalleryView menus() {
    GalleryView view = sheet("kit-menus", "MenuSheet");
    view.arrange = [](QQuickItem& root) {
        QQuickItem& opened = part(root, "opened");
        click(opened);
        QTest::mouseMove(opened.window(), opened.mapToScene(QPointF(60, 55)).toPoint());
    };
    return view;
}

GalleryView focusedMenu() {
    GalleryView view = sheet("kit-menus-focused", "MenuSheet");
    view.arrange = [](QQuickItem& root) { part(root, "focused").forceActiveFocus(Qt::TabFocusReason); };
    return view;
}

GalleryView toolTip() {
    GalleryView view = sheet("kit-tool-tip", "ToolTipSheet");
    view.size = {320, 160};
    view.arrange = [](QQuickItem& root) { hover(part(root, "hovered")); };
    return view;
}

GalleryView fields() {
    GalleryView view = sheet("kit-fields", "FieldSheet");
    view.arrange = [](QQuickItem& root) {
        QQuickItem& field = part(root, "field");
        field.forceActiveFocus(Qt::MouseFocusReason);
        QMetaObject::invokeMethod(&field, "selectAll");
    };
    return view;
}

} // namespace

std::vector<GalleryView> kitViews() {
    return {
        buttons(),
        pressedButtons(),
        toolTip(),
        choicesAt("kit-choices-segment", 1),
        choicesAt("kit-choices-toggle", 3),
        choicesAt("kit-choices-slider", 5),
        choicesAt("kit-choices-pill", 7),
        sheet("kit-choices", "ChoiceSheet"),
        menus(),
        focusedMenu(),
        fields(),
        sheet("kit-cards", "CardSheet"),
        sheet("kit-brand", "BrandSheet"),
        sheet("kit-icons", "IconSheet"),
        sheet("kit-colors", "ColorSheet"),
    };
}

} // namespace velmora::test
