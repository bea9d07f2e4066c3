#include "support/desktop/target_application.h"

#include "platform/linux/x11_connection.h"
#include "support/desktop/wait_until.h"

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
    std::unique_ptr<TargetApplication> target(new TargetApplication);
    QFile file(target->path("document"));
    [[maybe_unused]] const bool created = file.open(QIODevice::WriteOnly);
    target->m_read = [t = target.get()] {
        pressKeys("ctrl+s");
        return t->fileText("document");
    };
    target->start(QStringLiteral("mousepad"), {QStringLiteral("--disable-server"), file.fileName()},
                  "Mousepad");
    return target;
}

std::unique_ptr<TargetApplication> TargetApplication::xterm() {
    std::unique_ptr<TargetApplication> target(new TargetApplication);
    target->m_read = [t = target.get()] { return t->fileText("document"); };
    target->start(QStringLiteral("xterm"),
                  {QStringLiteral("-u8"), QStringLiteral("-e"), QStringLiteral("sh"), QStringLiteral("-c"),
                   QStringLiteral("stty raw -echo; : >'%1'; exec cat >>'%1'").arg(target->path("document"))},
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
    // Keys are lost for a while yet: wait until one comes through, then take back what there is of it.
    const auto typed = [&] {
        pressKeys("a");
        return !target->m_read().isEmpty();
    };
    const auto empty = [&] {
        pressKeys("ctrl+a");
        pressKeys("BackSpace");
        return target->m_read().isEmpty();
    };
    target->m_ready = target->m_ready && waitUntil(typed) && waitUntil(empty);
    return target;
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
