#include "e2e/session/dictation_session.h"

#include "core/history_store.h"
#include "e2e/session/free_port.h"
#include "e2e/session/sign_in_page.h"
#include "foundation/user_folders.h"
#include "platform/linux/x11_connection.h"
#include "support/desktop/default_browser.h"
#include "support/desktop/wait_until.h"
#include "support/onboarded_defaults.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QJsonDocument>
#include <QNetworkAccessManager>
#include <QNetworkReply>
#include <QRegularExpression>
#include <QStandardPaths>

#include <gmock/gmock.h>

namespace velmora::test {
namespace {

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void write(const QString& path, const QByteArray& content) {
    QDir().mkpath(QFileInfo(path).path());
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(content);
}

bool hasRecordings() {
    return QDirIterator(QStandardPaths::writableLocation(QStandardPaths::RuntimeLocation),
                        {QStringLiteral("velmora-*.m4a")}, QDir::Files, QDirIterator::Subdirectories)
        .hasNext();
}

/// Whether there is a window of the program that the window manager doesn't manage: its others are windows to
/// work with.
bool capsuleShows(X11Connection& x) {
    const XcbReply<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(x.get(), xcb_query_tree(x.get(), x.root()), nullptr));
    for (int i = 0; tree && i < xcb_query_tree_children_length(tree.get()); ++i) {
        const xcb_window_t window = xcb_query_tree_children(tree.get())[i];
        const XcbReply<xcb_get_window_attributes_reply_t> attributes(
            xcb_get_window_attributes_reply(x.get(), xcb_get_window_attributes(x.get(), window), nullptr));
        if (attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE && attributes->override_redirect &&
            x.property(window, XCB_ATOM_WM_CLASS).startsWith("velmora"))
            return true;
    }
    return false;
}

} // namespace

const char* const DictationSession::sentence = "open the window and look at the people in the street";

DictationSession::DictationSession(bool signIn)
    : m_port(freePort()) {
    // The session's browser notes the address that it was asked to open.
    const QString script = m_folder.filePath(QStringLiteral("browser"));
    const QByteArray note = browserNote().toUtf8();
    write(script,
          "#!/bin/sh\nprintf %s \"$1\" > '" + note + ".part'; mv '" + note + ".part' '" + note + "'\n");
    QFile::setPermissions(script, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    makeDefaultBrowser(script);
    QProcess::execute(QStringLiteral("flite"),
                      {QStringLiteral("-voice"), QStringLiteral("kal16"), QStringLiteral("-t"),
                       QLatin1String(sentence), QStringLiteral("-o"),
                       m_folder.filePath(QStringLiteral("voice.wav"))});
    QDir(applicationSupportFolder()).removeRecursively();
    if (!signIn) {
        QFile::remove(defaultsPath());
        restartBackend();
        restartApplication();
        return;
    }
    write(defaultsPath(), onboardedDefaults());
    restartBackend();
    restartApplication();
    velmora(createAccount(requestSignInPage(), QStringLiteral("me@example.org"),
                          QStringLiteral("correct horse")));
    if (isSignedIn())
        restartApplication(); // without the window that asks who isn't signed in to do so
}

DictationSession::~DictationSession() {
    endApplication();
}

void DictationSession::endApplication() {
    if (m_application) {
        EXPECT_THAT(m_application->output().toStdString(), testing::Not(testing::HasSubstr("qrc:")));
    }
    m_application.reset();
}

void DictationSession::restartBackend(bool forgetKey) {
    m_backend.reset();
    const QString data = m_folder.filePath(QStringLiteral("server"));
    if (forgetKey) {
        for (const QString& name : QDir(data).entryList({QStringLiteral("*key*")}))
            QFile::remove(data + QLatin1Char('/') + name);
    }
    m_backend = std::make_unique<Program>(
        QStringLiteral(VELMORA_SERVER_PROGRAM),
        QStringList{QStringLiteral("--listen"), QStringLiteral("127.0.0.1:%1").arg(m_port),
                    QStringLiteral("--data"), data, QStringLiteral("--local-user")});
    (void)m_backend->says("listens on");
}

void DictationSession::restartApplication(bool onX11) {
    endApplication();
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("VelmorBackendURL"), address());
    environment.insert(QStringLiteral("VelmorLandingURL"), address());
    if (!onX11) {
        environment.remove(QStringLiteral("DISPLAY"));
        environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    }
    m_application = std::make_unique<Program>(QStringLiteral(VELMORA_PROGRAM), QStringList(), environment);
    (void)m_application->says(onX11 ? "tap active" : "tap failed");
}

void DictationSession::setDefaults(const QByteArray& json) {
    write(defaultsPath(), onboardedDefaults(json));
    restartApplication();
}

QString DictationSession::requestSignInPage() {
    QFile::remove(browserNote());
    velmora(QStringLiteral("--sign-in"));
    return openedPage();
}

QString DictationSession::openedPage() const {
    waitUntil([this] { return QFile::exists(browserNote()); });
    return QString::fromUtf8(contentOf(browserNote()));
}

int DictationSession::velmora(const QString& argument) {
    return QProcess::execute(QStringLiteral(VELMORA_PROGRAM), {argument});
}

bool DictationSession::isSignedIn() const {
    return waitUntil([this] { return !storedTokens().isEmpty(); });
}

QByteArray DictationSession::storedTokens() const {
    return contentOf(applicationSupportFolder() + QStringLiteral("/auth-tokens.json"));
}

bool DictationSession::isRecording() {
    return waitUntil(hasRecordings);
}

bool DictationSession::isQuiet() {
    return waitUntil([] { return !hasRecordings(); });
}

bool DictationSession::isReady() {
    X11Connection x;
    return waitUntil([&x] { return !capsuleShows(x); });
}

void DictationSession::speak(const QString& feed) {
    QProcess::execute(QStringLiteral("paplay"),
                      {QStringLiteral("--device=") + feed, m_folder.filePath(QStringLiteral("voice.wav"))});
}

void DictationSession::dictateHolding() {
    m_keyboard.press(key::rightControl);
    (void)isRecording();
    speak();
    m_keyboard.release(key::rightControl);
}

std::optional<HistoryItem> DictationSession::dictation(std::size_t count) const {
    std::optional<HistoryItem> newest;
    waitUntil([&newest, count] {
        const HistoryStore history(applicationSupportFolder());
        if (history.items().size() >= count)
            newest = history.items().front();
        return newest.has_value();
    });
    return newest;
}

std::size_t DictationSession::dictations() {
    return HistoryStore(applicationSupportFolder()).items().size();
}

int DictationSession::wordsHeard(const QString& text) {
    static const QRegularExpression separators(QStringLiteral("\\W+"));
    QStringList heard = text.toLower().split(separators, Qt::SkipEmptyParts);
    int count = 0;
    for (const QString& word : QString::fromLatin1(sentence).split(QLatin1Char(' ')))
        count += heard.removeOne(word) ? 1 : 0;
    return count;
}

void DictationSession::setPreference(const QByteArray& json) {
    request("PATCH", QStringLiteral("/v1/me/preferences"), json);
}

QJsonObject DictationSession::account() const {
    const QByteArray reply = request("GET", QStringLiteral("/v1/auth/me"));
    return QJsonDocument::fromJson(reply).object().value(QStringLiteral("user")).toObject();
}

void DictationSession::registerLinks() {
    QProcess::execute(QStringLiteral(VELMORA_REGISTER_LINKS), {QStringLiteral(VELMORA_PROGRAM)});
}

QByteArray DictationSession::request(const QByteArray& method, const QString& path,
                                     const QByteArray& json) const {
    const QString token =
        QJsonDocument::fromJson(storedTokens()).object().value(QStringLiteral("accessToken")).toString();
    QNetworkAccessManager network;
    QNetworkRequest request(QUrl(address() + path, QUrl::StrictMode));
    request.setRawHeader("Authorization", "Bearer " + token.toLatin1());
    request.setHeader(QNetworkRequest::ContentTypeHeader, QStringLiteral("application/json"));
    const std::unique_ptr<QNetworkReply> reply(network.sendCustomRequest(request, method, json));
    waitUntil([&reply] { return reply->isFinished(); });
    return reply->readAll();
}

} // namespace velmora::test
