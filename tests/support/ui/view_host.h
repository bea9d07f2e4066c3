#pragma once

#include "support/fake_color_scheme.h"
#include "ui/kit/v_theme.h"
#include "ui/qml_engine.h"

#include <QAccessible>
#include <QQmlEngine>
#include <QQuickItem>
#include <QQuickView>
#include <QTemporaryDir>

namespace velmora::test {

/// A view of the program in a window of its own, worked as a person would: by the pointer and the keyboard.
class ViewHost {
public:
    ViewHost();

    /// Shows the view of that type: `module` is the last part of its module's name, as in "Kit". Without a
    /// size the window is as large as the view asks for. A view that has errors or warns fails the test.
    void show(const char* module, const char* type, const QVariantMap& properties = {}, QSize size = {});
    /// A component written in the test, which may use all modules; for controls that need a frame around
    /// them.
    void showSource(const QByteArray& qml, const QVariantMap& properties = {});
    /// Ends the view, before what it looks at ends.
    void close() { m_view.reset(); }

    [[nodiscard]] QQuickItem* root() const { return m_view->rootObject(); }
    [[nodiscard]] QQuickView& window() const { return *m_view; }
    /// The visible item whose accessible name it is, else the one with that objectName. Fails the test when
    /// there is none.
    [[nodiscard]] QQuickItem* find(const QString& name) const;
    /// Whether find() would find one.
    [[nodiscard]] bool has(const QString& name) const;
    /// Every text that is visible, in the order of the item tree.
    [[nodiscard]] QStringList texts() const;

    void click(QQuickItem* item) const;
    void click(const QString& name) const { click(find(name)); }
    void hover(QQuickItem* item) const;
    void press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) const;
    /// Types into whatever has the focus.
    void type(const QString& text) const;
    /// The item that has the keyboard focus.
    [[nodiscard]] QQuickItem* focused() const { return m_view->activeFocusItem(); }
    [[nodiscard]] QImage grab() const { return m_view->grabWindow(); }

    QTemporaryDir folder;
    UserDefaults defaults{folder.filePath(QStringLiteral("defaults.json"))};
    AppSettings settings{defaults};
    FakeColorScheme scheme;
    VTheme theme{settings, scheme};

private:
    void finishShowing(QSize size);

    std::unique_ptr<QQmlEngine> m_engine = makeQmlEngine();
    std::unique_ptr<QQuickView> m_view;
};

[[nodiscard]] QString accessibleName(QQuickItem* item);
[[nodiscard]] QAccessible::Role accessibleRole(QQuickItem* item);

} // namespace velmora::test
