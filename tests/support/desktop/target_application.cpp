#include "support/desktop/target_application.h"

#include "platform/linux/x11_connection.h"
#include "support/desktop/wait_until.h"
#include "support/desktop/x11_selection_reader.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QUrl>

#include <unistd.h>

#include <csignal>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

xcb_window_t activeWindow(X11Connection& x) {
    return x.property32(x.root(), x.atom("_NET_ACTIVE_WINDOW"), XCB_ATOM_WINDOW);
}

QByteArray bytesOf(xcb_window_t window) {
    return {reinterpret_cast<const char*>(&window), sizeof window};
}

QString activeTitle() {
    X11Connection x;
    return QString::fromUtf8(x.property(activeWindow(x), x.atom("_NET_WM_NAME")));
}

void pressKeys(const char* chord) {
    QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("key"), QLatin1String(chord)});
}

constexpr const char* page = R"(<meta charset=utf-8><textarea autofocus></textarea><script>
const area = document.querySelector('textarea');
const show = () => document.title = 'text:' + encodeURIComponent(area.value);
area.oninput = show;
area.onfocus = show;
if (document.activeElement === area) show();
</script>)";

constexpr const char* tkEditor = R"(import os, sys, tkinter
window = tkinter.Tk(className="Tk")
text = tkinter.Text(window)
text.pack()
text.focus_force()
def save(event):
    if text.edit_modified():
        text.edit_modified(False)
        with open(sys.argv[1] + ".new", "w", encoding="utf-8") as file:
            file.write(text.get("1.0", "end-1c"))
        os.replace(sys.argv[1] + ".new", sys.argv[1])
text.bind("<<Modified>>", save)
window.mainloop()
)";

// Nothing is asked for, shown first or fetched.
constexpr const char* firefoxPreferences = R"(user_pref("browser.shell.checkDefaultBrowser", false);
user_pref("browser.aboutwelcome.enabled", false);
user_pref("browser.startup.homepage_override.mstone", "ignore");
user_pref("datareporting.policy.dataSubmissionEnabled", false);
user_pref("toolkit.telemetry.reportingpolicy.firstRun", false);
user_pref("app.normandy.enabled", false);
user_pref("browser.safebrowsing.downloads.enabled", false);
user_pref("network.captive-portal-service.enabled", false);
user_pref("network.connectivity-service.enabled", false);
user_pref("extensions.getAddons.cache.enabled", false);
user_pref("extensions.update.enabled", false);
user_pref("media.gmp-manager.updateEnabled", false);
user_pref("browser.search.update", false);
)";

// A browser cuts longer ones off.
constexpr qsizetype longestTitle = 2000;

// Of the field that has the focus.
QString everythingCopied() {
    X11Connection x;
    xcb_set_selection_owner(x.get(), XCB_WINDOW_NONE, x.atom("CLIPBOARD"), XCB_CURRENT_TIME);
    x.sync();
    pressKeys("ctrl+a");
    pressKeys("ctrl+c");
    const QString text = X11SelectionReader().read("CLIPBOARD").value_or(QString());
    pressKeys("Right");
    return text;
}

} // namespace

TargetApplication::TargetApplication() = default;

TargetApplication::~TargetApplication() {
    if (m_process.state() == QProcess::NotRunning)
        return;
    thaw();
    ::kill(static_cast<pid_t>(-m_process.processId()), SIGKILL);
    m_process.waitForFinished();
    // The next program may get the same window ID, and must not be taken for this one.
    X11Connection x;
    waitUntil([&] { return !x.property(x.root(), x.atom("_NET_CLIENT_LIST")).contains(bytesOf(m_window)); });
}

std::unique_ptr<TargetApplication> TargetApplication::mousepad() {
    return editorOfAFile(QStringLiteral("mousepad"), {QStringLiteral("--disable-server")}, "Mousepad");
}

std::unique_ptr<TargetApplication> TargetApplication::xterm() {
    std::unique_ptr<TargetApplication> target(new TargetApplication);
    target->m_read = [t = target.get()] { return t->fileText("document"); };
    target->start(QStringLiteral("xterm"),
                  {QStringLiteral("-u8"), QStringLiteral("-e"), QStringLiteral("sh"), QStringLiteral("-c"),
                   target->catIntoTheDocument()},
                  "XTerm");
    const auto shellRuns = [&] { return QFile::exists(target->path("document")); };
    target->m_ready = target->m_ready && waitUntil(shellRuns);
    return target;
}

std::unique_ptr<TargetApplication> TargetApplication::qtEditor(const QString& program,
                                                               const QStringList& ownPieces) {
    std::unique_ptr<TargetApplication> target(new TargetApplication);
    target->m_read = [t = target.get()] { return t->fileText("document"); };
    target->start(program, QStringList{target->path("document")} + ownPieces, "qt_editor");
    return target;
}

std::unique_ptr<TargetApplication> TargetApplication::chromium() {
    std::unique_ptr<TargetApplication> target(new TargetApplication);
    QFile file(target->path("page.html"));
    if (file.open(QIODevice::WriteOnly))
        file.write(page);
    file.close();
    const QString mark = QStringLiteral("text:");
    target->m_read = [mark] {
        const QString title = activeTitle();
        if (title.size() > longestTitle)
            return everythingCopied();
        const qsizetype end = title.indexOf(QLatin1Char(' '));
        return title.startsWith(mark) ? QUrl::fromPercentEncoding(title.left(end).mid(mark.size()).toLatin1())
                                      : QString();
    };
    target->start(QStringLiteral("chromium"),
                  {QStringLiteral("--no-sandbox"), QStringLiteral("--no-first-run"),
                   QStringLiteral("--disable-gpu"), QStringLiteral("--disable-dev-shm-usage"),
                   QStringLiteral("--password-store=basic"),
                   QStringLiteral("--user-data-dir=") + target->path("profile"),
                   QStringLiteral("--app=file://") + file.fileName()},
                  "Chromium");
    const auto areaHasFocus = [&] { return activeTitle().startsWith(mark); };
    target->m_ready = target->m_ready && waitUntil(areaHasFocus);
    target->m_ready = target->m_ready && target->takesKeys();
    return target;
}

std::unique_ptr<TargetApplication> TargetApplication::gedit() {
    return editorOfAFile(QStringLiteral("gedit"), {QStringLiteral("--standalone")}, "Gedit");
}

std::unique_ptr<TargetApplication> TargetApplication::gnomeTextEditor() {
    return editorOfAFile(QStringLiteral("gnome-text-editor"), {QStringLiteral("--standalone")},
                         "gnome-text-editor");
}

std::unique_ptr<TargetApplication> TargetApplication::tk() {
    std::unique_ptr<TargetApplication> target(new TargetApplication);
    QFile script(target->path("editor.py"));
    if (script.open(QIODevice::WriteOnly))
        script.write(tkEditor);
    script.close();
    target->m_read = [t = target.get()] { return t->fileText("document"); };
    target->start(QStringLiteral("python3"), {script.fileName(), target->path("document")}, "Tk");
    return target;
}

std::unique_ptr<TargetApplication> TargetApplication::vteTerminal() {
    std::unique_ptr<TargetApplication> target(new TargetApplication);
    target->m_read = [t = target.get()] { return t->fileText("document"); };
    target->start(QStringLiteral("xfce4-terminal"),
                  {QStringLiteral("--disable-server"), QStringLiteral("-x"), QStringLiteral("sh"),
                   QStringLiteral("-c"), target->catIntoTheDocument()},
                  "Xfce4-terminal");
    target->m_ready = target->m_ready && waitUntil([&] { return QFile::exists(target->path("document")); });
    return target;
}

std::unique_ptr<TargetApplication> TargetApplication::writer() {
    std::unique_ptr<TargetApplication> target(new TargetApplication);
    target->m_read = [] { return everythingCopied(); };
    target->start(QStringLiteral("soffice"),
                  {QStringLiteral("-env:UserInstallation=file://") + target->path("profile"),
                   QStringLiteral("--writer"), QStringLiteral("--norestore"), QStringLiteral("--nologo"),
                   QStringLiteral("--nofirststartwizard")},
                  "libreoffice-writer");
    target->m_ready = target->m_ready && target->takesKeys();
    return target;
}

std::unique_ptr<TargetApplication> TargetApplication::firefox() {
    std::unique_ptr<TargetApplication> target(new TargetApplication);
    QDir().mkpath(target->path("profile"));
    QFile preferences(target->path("profile/user.js"));
    if (preferences.open(QIODevice::WriteOnly))
        preferences.write(firefoxPreferences);
    preferences.close();
    QFile file(target->path("page.html"));
    if (file.open(QIODevice::WriteOnly))
        file.write(page);
    file.close();
    target->m_read = [] { return everythingCopied(); };
    target->start(QStringLiteral("firefox-esr"),
                  {QStringLiteral("--new-instance"), QStringLiteral("--profile"), target->path("profile"),
                   QStringLiteral("file://") + file.fileName()},
                  "firefox-esr");
    const auto areaHasFocus = [] { return activeTitle().startsWith(QStringLiteral("text:")); };
    target->m_ready = target->m_ready && waitUntil(areaHasFocus, 60s) && target->takesKeys();
    return target;
}

std::unique_ptr<TargetApplication> TargetApplication::editorOfAFile(const QString& program,
                                                                    const QStringList& options,
                                                                    const QByteArray& windowClass) {
    std::unique_ptr<TargetApplication> target(new TargetApplication);
    QFile file(target->path("document"));
    [[maybe_unused]] const bool created = file.open(QIODevice::WriteOnly);
    target->m_read = [t = target.get()] {
        pressKeys("ctrl+s");
        return t->fileText("document");
    };
    target->start(program, QStringList(options) << file.fileName(), windowClass);
    return target;
}

QString TargetApplication::catIntoTheDocument() const {
    return QStringLiteral("stty raw -echo; : >'%1'; exec cat >>'%1'").arg(path("document"));
}

// Keys are lost for a while after a window has come: wait until one gets through, then take it back.
bool TargetApplication::takesKeys() {
    const auto typed = [this] {
        pressKeys("a");
        return !m_read().isEmpty();
    };
    const auto empty = [this] {
        pressKeys("ctrl+a");
        pressKeys("BackSpace");
        return m_read().isEmpty();
    };
    return waitUntil(typed, 60s) && waitUntil(empty, 20s);
}

void TargetApplication::start(const QString& program, const QStringList& arguments,
                              const QByteArray& windowClass) {
    X11Connection x;
    // Nothing of a program that an earlier test has ended, such as its offer to restore a document.
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    for (const char* variable : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME", "XDG_STATE_HOME"})
        environment.insert(QLatin1String(variable), path("home"));
    m_process.setProcessEnvironment(environment);
    m_process.setChildProcessModifier([] { ::setpgid(0, 0); });
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.setStandardOutputFile(path("log"));
    m_process.start(program, arguments);
    m_ready = waitUntil([&] {
        m_window = activeWindow(x);
        // The window manager may still name the one before, when both have the same ID.
        const XcbReply<xcb_get_input_focus_reply_t> focus(
            xcb_get_input_focus_reply(x.get(), xcb_get_input_focus(x.get()), nullptr));
        return x.property(m_window, XCB_ATOM_WM_CLASS).split('\0').contains(windowClass) && focus &&
               x.clientOf(focus->focus) == x.clientOf(m_window);
    });
}

QString TargetApplication::document(const QString& expected) {
    QString text;
    const bool arrived = waitUntil([&] {
        text = m_read();
        return text == expected;
    });
    return arrived ? expected : text;
}

void TargetApplication::freeze() {
    ::kill(static_cast<pid_t>(-m_process.processId()), SIGSTOP);
}

void TargetApplication::thaw() {
    ::kill(static_cast<pid_t>(-m_process.processId()), SIGCONT);
}

QString TargetApplication::fileText(const char* name) const {
    QFile file(path(name));
    return file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
}

} // namespace velmora::test
