#include "app/command_line.h"

#include <QHash>

namespace velmora {
namespace {

/// Pairs of --set and KEY=VALUE.
Launch parseChanges(const QStringList& arguments) {
    launch::SetSettings set;
    for (qsizetype i = 0; i < arguments.size(); i += 2) {
        if (arguments[i] != QLatin1String("--set") || i + 1 == arguments.size())
            return launch::Invalid{arguments[i]};
        const QString& change = arguments[i + 1];
        const qsizetype equals = change.indexOf(QLatin1Char('='));
        if (equals <= 0)
            return launch::Invalid{change};
        set.changes.push_back({change.left(equals), change.mid(equals + 1)});
    }
    return set;
}

} // namespace

Launch parseCommandLine(const QStringList& arguments) {
    static const QHash<QString, Launch> verbs{
        {QStringLiteral("--press"), launch::Send{instance_command::Press{}}},
        {QStringLiteral("--release"), launch::Send{instance_command::Release{}}},
        {QStringLiteral("--toggle"), launch::Send{instance_command::Toggle{}}},
        {QStringLiteral("--sign-in"), launch::Run{instance_command::SignIn{}}},
        {QStringLiteral("--list-settings"), launch::ListSettings{}},
        {QStringLiteral("--version"), launch::ShowVersion{}},
        {QStringLiteral("--help"), launch::ShowHelp{}},
        {QStringLiteral("-h"), launch::ShowHelp{}},
    };
    if (arguments.isEmpty())
        return launch::Run{};
    if (arguments.front() == QLatin1String("--set"))
        return parseChanges(arguments);
    if (arguments.front() == QLatin1String("--get") && arguments.size() == 2)
        return launch::GetSetting{arguments[1]};
    if (arguments.size() > 1)
        return launch::Invalid{arguments[1]};
    const QString& argument = arguments.front();
    if (argument.startsWith(QLatin1String("velmora:")))
        return launch::Run{instance_command::OpenURL{argument}};
    const auto verb = verbs.constFind(argument);
    return verb != verbs.cend() ? *verb : Launch(launch::Invalid{argument});
}

QString usage() {
    return QStringLiteral(R"(Velmora: speak into any application.

  velmora             start, or bring up the instance that is running
  velmora URL         hand a velmora:// URL to it, as the browser does after sign-in
  velmora --sign-in   open the sign-in page in the browser

For key bindings of a desktop on which keys can't be watched:
  velmora --press     the hotkey went down
  velmora --release   the hotkey went up
  velmora --toggle    start dictating, or stop

For scripts; a program that is running follows at once:
  velmora --set KEY=VALUE [--set KEY=VALUE ...]
                      change settings, all of them or none
  velmora --get KEY   print a setting
  velmora --list-settings
                      print all of them as KEY=VALUE

  velmora --version
  velmora --help
)");
}

} // namespace velmora
