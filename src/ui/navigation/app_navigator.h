#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// What the main window shows, so that any part of the program can send the user to a screen or a settings
/// tab.
class AppNavigator : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_UNCREATABLE("there is one, the program's")
    Q_PROPERTY(MainScreen screen READ screen WRITE setScreen NOTIFY screenChanged)
    Q_PROPERTY(QString settingsTab READ settingsTab WRITE setSettingsTab NOTIFY settingsTabChanged)
    Q_PROPERTY(bool showSettingsSheet READ showSettingsSheet NOTIFY showSettingsSheetChanged)

public:
    enum class MainScreen { History, Meetings };
    Q_ENUM(MainScreen)

    using QObject::QObject;

    [[nodiscard]] MainScreen screen() const { return m_screen; }
    void setScreen(MainScreen screen);
    [[nodiscard]] QString settingsTab() const { return m_settingsTab; }
    void setSettingsTab(const QString& tab);
    [[nodiscard]] bool showSettingsSheet() const { return m_showSettingsSheet; }

    Q_INVOKABLE void openSettings(const QString& tab = QStringLiteral("general"));
    Q_INVOKABLE void closeSettings();
    /// Both close the settings.
    Q_INVOKABLE void openHistory();
    Q_INVOKABLE void openMeetings();

Q_SIGNALS:
    void screenChanged();
    void settingsTabChanged();
    void showSettingsSheetChanged();

private:
    void showSheet(bool shown);

    MainScreen m_screen = MainScreen::History;
    QString m_settingsTab = QStringLiteral("general");
    bool m_showSettingsSheet = false;
};

using MainScreen = AppNavigator::MainScreen;

} // namespace velmora
