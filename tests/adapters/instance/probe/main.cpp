// Another start of the program, as far as single instances go:
//   instance_probe claim            0 when it became the session's instance, which it is until it has said so
//   instance_probe hold             becomes the instance, says "held" and lives until it is killed
//   instance_probe send COMMAND…    0 when all were answered; a COMMAND that isn't a verb is a URL

#include "platform/linux/make_instance_link.h"

#include <QCoreApplication>

#include <cstdio>

using namespace velmora;

namespace {

InstanceCommand commandOf(const QString& word) {
    if (word == QLatin1String("activate"))
        return instance_command::Activate{};
    if (word == QLatin1String("press"))
        return instance_command::Press{};
    if (word == QLatin1String("release"))
        return instance_command::Release{};
    if (word == QLatin1String("toggle"))
        return instance_command::Toggle{};
    if (word == QLatin1String("sign-in"))
        return instance_command::SignIn{};
    return instance_command::OpenURL{word};
}

} // namespace

int main(int argc, char** argv) {
    const QCoreApplication application(argc, argv);
    const QStringList arguments = QCoreApplication::arguments();
    const auto link = makeInstanceLink();
    if (arguments[1] == QLatin1String("send")) {
        for (const QString& word : arguments.mid(2)) {
            if (!link->send(commandOf(word)))
                return EXIT_FAILURE;
        }
        return EXIT_SUCCESS;
    }
    if (!link->claim([](const InstanceCommand&) {}))
        return EXIT_FAILURE;
    if (arguments[1] == QLatin1String("claim"))
        return EXIT_SUCCESS;
    std::puts("held");
    std::fflush(stdout);
    return QCoreApplication::exec();
}
