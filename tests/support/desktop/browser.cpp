#include "support/desktop/browser.h"

#include "support/desktop/default_browser.h"
#include "support/desktop/wait_until.h"

#include <QDir>
#include <QFile>
#include <QProcess>

#include <unistd.h>

#include <array>
#include <csignal>

namespace velmora::test {
namespace {

using namespace std::chrono_literals;

/// Its start alone takes many seconds on a busy machine.
constexpr auto patience = 60s;
/// After this a click without effect is taken for lost: the browser drops those that come too soon after
/// something has appeared, lest one that was meant for something else hits it. Clicking on quickly keeps it
/// suspicious.
constexpr auto effectTime = 3s;

constexpr uint8_t wheelDown = 5;

const QString program = QStringLiteral("Chromium");

/// No offers to translate or to keep a password, which cover the page.
constexpr const char* preferences =
    R"({"translate": {"enabled": false}, "credentials_enable_service": false})";

constexpr const char* script = R"(#!/bin/sh
export ACCESSIBILITY_ENABLED=1
exec chromium --no-sandbox --no-first-run --no-default-browser-check --start-maximized --disable-gpu \
    --disable-dev-shm-usage --password-store=basic --force-renderer-accessibility --lang=en \
    --user-data-dir='%1' "$@" >'%2' 2>&1
)";

void write(const QString& path, const QByteArray& content) {
    QFile file(path);
    if (file.open(QIODevice::WriteOnly))
        file.write(content);
}

using Matches = std::function<bool(const AccessibleObject&)>;

std::optional<AccessibleObject> find(const Matches& matches) {
    const QList<AccessibleObject> objects = accessibleObjects(program);
    const auto found = std::ranges::find_if(objects, matches);
    return found == objects.end() ? std::nullopt : std::optional(*found);
}

/// A label has the name of its field: only the field can be worked.
Matches controlNamed(const QString& name) {
    return [name](const AccessibleObject& each) { return each.focusable && each.name == name; };
}

bool isLinkQuestion(const AccessibleObject& each) {
    return each.role == QStringLiteral("dialog") && each.name.startsWith(QStringLiteral("Open ")) &&
           each.name.endsWith(QLatin1Char('?'));
}

/// Whether nothing of the kind shows; the bus must have answered for all there is.
bool isGone(const Matches& matches) {
    bool complete = false;
    const QList<AccessibleObject> objects = accessibleObjects(program, &complete);
    return complete && std::ranges::none_of(objects, matches);
}

bool isPage(const AccessibleObject& each) {
    return each.role == QStringLiteral("document web") && !each.extents.isEmpty();
}

/// Waits until it shows and has come to rest.
std::optional<AccessibleObject> waitForResting(const Matches& matches) {
    std::optional<AccessibleObject> last;
    const bool rests = waitUntil(
        [&] {
            const std::optional<AccessibleObject> now = find(matches);
            const bool same = now && last && now->extents == last->extents && !now->extents.isEmpty();
            last = now;
            return same;
        },
        patience);
    return rests ? last : std::nullopt;
}

bool isBelowThePage(const AccessibleObject& control) {
    const std::optional<AccessibleObject> page = find(isPage);
    return page && control.extents.center().y() > page->extents.bottom();
}

} // namespace

Browser::Browser() {
    QDir().mkpath(profile() + QStringLiteral("/Default"));
    write(profile() + QStringLiteral("/Default/Preferences"), preferences);
    const QString starter = m_folder.filePath(QStringLiteral("browser"));
    write(starter,
          QString::fromLatin1(script).arg(profile(), m_folder.filePath(QStringLiteral("log"))).toUtf8());
    QFile::setPermissions(starter, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    makeDefaultBrowser(starter);
}

Browser::~Browser() {
    const auto process = static_cast<pid_t>(pid());
    if (process <= 0)
        return;
    const auto ended = [process] { return ::kill(process, 0) != 0; };
    ::kill(process, SIGTERM);
    if (!waitUntil(ended)) {
        ::kill(process, SIGKILL);
        waitUntil(ended);
    }
}

void Browser::open(const QString& url) {
    QProcess::execute(QStringLiteral("xdg-open"), {url});
}

bool Browser::shows(const QString& name) {
    return waitUntil(
        [&] { return find([&](const AccessibleObject& each) { return each.name == name; }).has_value(); },
        patience);
}

bool Browser::click(const QString& name) {
    const Matches matches = controlNamed(name);
    for (auto waited = 0s; waited < patience; waited += effectTime) {
        const std::optional<AccessibleObject> control = waitForResting(matches);
        if (!control)
            return false;
        if (isBelowThePage(*control)) {
            turnWheel(matches, *control);
            continue;
        }
        m_pointer.click(control->extents.center());
        // It has the focus then, unless it has led to another page; which may have one of the same name.
        const auto noticed = [&] {
            const std::optional<AccessibleObject> now = find(matches);
            return now ? now->focused || now->id != control->id : isGone(matches);
        };
        if (waitUntil(noticed, effectTime))
            return true;
    }
    return false;
}

void Browser::turnWheel(const std::function<bool(const AccessibleObject&)>& matches,
                        const AccessibleObject& control) {
    if (const std::optional<AccessibleObject> page = find(isPage))
        m_pointer.moveTo(page->extents.center());
    m_pointer.click(wheelDown);
    waitUntil(
        [&] {
            const std::optional<AccessibleObject> now = find(matches);
            return now && now->extents != control.extents;
        },
        effectTime);
}

bool Browser::type(const QString& field, const QString& text) {
    if (!click(field))
        return false;
    QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("type"), text});
    return waitUntil(
        [&] {
            const std::optional<AccessibleObject> now = find(controlNamed(field));
            // A password shows as so many dots.
            return now && (now->role == QStringLiteral("password text") ? now->text.size() == text.size()
                                                                        : now->text == text);
        },
        patience);
}

bool Browser::allowLink() {
    // "Open Velmora?" has a button "Open Velmora".
    return answerLink([](const QString& question) { return question.chopped(1); });
}

bool Browser::declineLink() {
    return answerLink([](const QString&) { return QStringLiteral("Cancel"); });
}

bool Browser::answerLink(const std::function<QString(const QString&)>& button) {
    const std::optional<AccessibleObject> question = waitForResting(isLinkQuestion);
    if (!question)
        return false;
    const auto answered = [] { return isGone(isLinkQuestion); };
    for (auto waited = 0s; waited < patience && !answered(); waited += effectTime) {
        if (const auto answer = find(controlNamed(button(question->name))))
            m_pointer.click(answer->extents.center());
        if (waitUntil(answered, effectTime))
            return true;
    }
    return answered();
}

QString Browser::description() {
    QString text;
    for (const AccessibleObject& each : accessibleObjects(program)) {
        if (!each.name.isEmpty())
            text += each.role + QStringLiteral(" \"") + each.name + QStringLiteral("\"\n");
    }
    return text;
}

qint64 Browser::pid() const {
    // Its lock on the profile is a link to "HOST-PID".
    const QByteArray lock = QFile::encodeName(profile() + QStringLiteral("/SingletonLock"));
    std::array<char, 512> target{};
    const ssize_t size = ::readlink(lock.constData(), target.data(), target.size());
    const QByteArray owner(target.data(), std::max<ssize_t>(size, 0));
    return owner.mid(owner.lastIndexOf('-') + 1).toLongLong();
}

} // namespace velmora::test
