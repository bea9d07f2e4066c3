#pragma once

#include <QString>

namespace velmora {

class AppNavigator;
class AppSettings;
class AudioInputs;
class AuthSession;
class AuthStore;
class HotkeyMonitor;
class InfoDictionary;
class KeyEventMonitors;
class LevelTest;
class MainLoop;
class PermissionManager;
class Relauncher;
class UserDefaults;
class Workspace;

/// What the settings show and change.
struct SettingsNeighbours {
    MainLoop& loop;
    AppNavigator& nav;
    PermissionManager& perms;
    AppSettings& settings;
    const UserDefaults& defaults; ///< in which they are stored
    AuthStore& authStore;
    AuthSession& authSession;
    Workspace& workspace;
    const InfoDictionary& info;
    Relauncher& relauncher;
    HotkeyMonitor& hotkey; ///< silent while another hotkey is captured
    KeyEventMonitors& keys;
    AudioInputs& inputs;
    LevelTest& levelTest;
};

} // namespace velmora
