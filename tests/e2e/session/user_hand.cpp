#include "e2e/session/user_hand.h"

#include "support/desktop/pointer.h"
#include "support/desktop/wait_until.h"

#include <QProcess>

#include <algorithm>

namespace velmora::test {

QByteArray output(const QString& tool, const QStringList& arguments) {
    QProcess process;
    process.start(tool, arguments);
    process.waitForFinished();
    return process.readAllStandardOutput();
}

void press(const QStringList& keys) {
    QProcess::execute(QStringLiteral("xdotool"), QStringList{QStringLiteral("key")} + keys);
}

void type(const QString& text) {
    QProcess::execute(QStringLiteral("xdotool"), {QStringLiteral("type"), text});
}

QString clipboard() {
    return QString::fromUtf8(
        output(QStringLiteral("xclip"),
               {QStringLiteral("-selection"), QStringLiteral("clipboard"), QStringLiteral("-o")}));
}

QImage screenshot() {
    return QImage::fromData(
        output(QStringLiteral("import"),
               {QStringLiteral("-window"), QStringLiteral("root"), QStringLiteral("png:-")}));
}

bool shows(const QString& name) {
    return waitForAccessible(applicationName, name).has_value();
}

bool hides(const QString& name) {
    return waitUntil([&] {
        bool complete = false;
        const QList<AccessibleObject> objects = accessibleObjects(applicationName, &complete);
        return complete &&
               std::ranges::none_of(objects, [&](const AccessibleObject& each) { return each.name == name; });
    });
}

bool click(const QString& name) {
    const std::optional<AccessibleObject> target = waitForAccessible(applicationName, name);
    if (target)
        Pointer().click(target->extents.center());
    return target.has_value();
}

bool holds(const QString& field, const QString& text) {
    return waitUntil([&] {
        const QList<AccessibleObject> objects = accessibleObjects(applicationName);
        return std::ranges::any_of(
            objects, [&](const AccessibleObject& each) { return each.name == field && each.text == text; });
    });
}

} // namespace velmora::test
