#pragma once

#include "core/history_item.h"
#include "e2e/session/program.h"
#include "support/desktop/physical_keyboard.h"

#include <QJsonObject>
#include <QTemporaryDir>

#include <memory>
#include <optional>

namespace velmora::test {

/// The real programs on a desktop: the backend on a loopback port, the application signed in to it, a
/// keyboard and a voice.
class DictationSession {
public:
    /// Starts both for somebody who has the first run behind them, and signs in through the page; see
    /// isSignedIn() for the outcome. With `signIn` false it is the very first start.
    explicit DictationSession(bool signIn = true);
    ~DictationSession();
    DictationSession(const DictationSession&) = delete;
    DictationSession& operator=(const DictationSession&) = delete;

    [[nodiscard]] Program& application() { return *m_application; }
    [[nodiscard]] Program& backend() { return *m_backend; }
    /// Of the backend, and of the site with its pages.
    [[nodiscard]] QString address() const { return QStringLiteral("http://127.0.0.1:%1").arg(m_port); }
    void stopBackend() { m_backend.reset(); }
    /// On the same port and data. With `forgetKey`, access tokens issued so far are no good any more.
    void restartBackend(bool forgetKey = false);
    /// With `onX11` false it finds no display.
    void restartApplication(bool onX11 = true);

    /// Opens the sign-in page as the application does, and gives the page's address.
    [[nodiscard]] QString requestSignInPage();
    /// The address that the browser was last asked to open.
    [[nodiscard]] QString openedPage() const;
    /// Starts `velmora ARGUMENT` and gives its exit status.
    static int velmora(const QString& argument);
    [[nodiscard]] bool isSignedIn() const;
    [[nodiscard]] QByteArray storedTokens() const;

    PhysicalKeyboard& keyboard() { return m_keyboard; }
    /// Waits until the microphone is open.
    [[nodiscard]] static bool isRecording();
    /// Waits until nothing is recorded and no recording is left on the disk.
    [[nodiscard]] static bool isQuiet();
    /// Waits until the program is ready for the next dictation: its capsule is gone, which shows a dictation
    /// from its beginning to its end and a failure for six seconds.
    [[nodiscard]] static bool isReady();
    /// Speaks the sentence to its end into what feeds a microphone, the default one unless another is named.
    void speak(const QString& feed = QStringLiteral("virtual_mic_feed"));
    /// Holds the hotkey while the sentence is spoken.
    void dictateHolding();
    /// The newest finished dictation, once there are `count` of them.
    [[nodiscard]] std::optional<HistoryItem> dictation(std::size_t count) const;
    /// How many have been finished by now.
    [[nodiscard]] static std::size_t dictations();
    /// How many words of the sentence are in the text.
    [[nodiscard]] static int wordsHeard(const QString& text);

    /// Restarts the application with these user defaults, and the first run behind it.
    void setDefaults(const QByteArray& json);
    /// Sets a preference of the signed-in account.
    void setPreference(const QByteArray& json);
    /// What the backend says of the account that the application is signed in to.
    [[nodiscard]] QJsonObject account() const;
    /// Has velmora:// links open the application, as an installed one does.
    static void registerLinks();

    static const char* const sentence;
    static constexpr int wordsSpoken = 11;

private:
    /// No view may have complained until now.
    void endApplication();
    /// With the application's access token; the reply's body.
    QByteArray request(const QByteArray& method, const QString& path, const QByteArray& json = {}) const;
    [[nodiscard]] QString browserNote() const { return m_folder.filePath(QStringLiteral("opened-url")); }

    QTemporaryDir m_folder;
    int m_port = 0;
    std::unique_ptr<Program> m_backend;
    std::unique_ptr<Program> m_application;
    PhysicalKeyboard m_keyboard;
};

} // namespace velmora::test
