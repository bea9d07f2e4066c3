#pragma once

#include <functional>

namespace velmora {

class AppSettings;
class AuthSession;
class AuthStore;
class InfoDictionary;
class MainLoop;
class PermissionManager;
class PipelineCoordinator;
class SignIn;
class UserDefaults;

/// What a new user is led through.
struct OnboardingNeighbours {
    MainLoop& loop;
    UserDefaults& defaults;
    AppSettings& settings;
    PermissionManager& perms;
    PipelineCoordinator& pipeline;
    AuthStore& authStore;
    AuthSession& authSession;
    SignIn& signIn;
    const InfoDictionary& info;
    std::function<void()> startTestRecording; ///< for those whose key doesn't work
};

} // namespace velmora
