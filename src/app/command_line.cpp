#include "app/command_line.h"

#include <QHash>

namespace velmora {

Launch parseCommandLine(const QStringList& arguments) {
    static const QHash<QString, Launch> verbs{
        {QStringLiteral("--press"), launch::Send{instance_command::Press{}}},
        {QStringLiteral("--release"), launch::Send{instance_command::Release{}}},
        {QStringLiteral("--toggle"), launch::Send{instance_command::Toggle{}}},
        {QStringLiteral("--sign-in"), launch::Run{instance_command::SignIn{}}},
        {QStringLiteral("--version"), launch::ShowVersion{}},
        {QStringLiteral("--help"), launch::ShowHelp{}},
        {QStringLiteral("-h"), launch::ShowHelp{}},
    };
    if (arguments.isEmpty())
        return launch::Run{};
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

  velmora --version
  velmora --help
)");
}

} // namespace velmora
