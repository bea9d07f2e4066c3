#include "app/assembly/application.h"
#include "app/command_line.h"
#include "choose_platform.h"
#include "core/app_settings.h"
#include "foundation/user_folders.h"
#include "platform/linux/make_instance_link.h"
#include "quit_on_signals.h"
#include "ui/qml_engine.h"

#include <QApplication>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <functional>

using namespace velmora;

namespace {

constexpr int usageError = 2;

void print(std::FILE* stream, const QString& text) {
    std::fputs(text.toUtf8().constData(), stream);
}

/// Becomes the session's instance, or hands the command to the one there is.
int run(const InstanceCommand& command) {
    std::unique_ptr<Application> application;
    const std::unique_ptr<InstanceLink> link = makeInstanceLink();
    const bool claimed = link->claim([&application](const InstanceCommand& received) {
        if (application)
            application->queueCommand(received);
    });
    if (!claimed) {
        if (link->send(command))
            return EXIT_SUCCESS;
        print(stderr, QStringLiteral("velmora: an instance is running but does not answer\n"));
        return EXIT_FAILURE;
    }
    const QuitOnSignals quitOnSignals;
    application = std::make_unique<Application>();
    application->launch(command);
    return QCoreApplication::exec();
}

int send(const InstanceCommand& command) {
    if (makeInstanceLink()->send(command))
        return EXIT_SUCCESS;
    print(stderr, QStringLiteral("velmora: not running\n"));
    return EXIT_FAILURE;
}

/// Works on the stored settings, which the running instance watches: it isn't asked.
int withSettings(const std::function<void(SettingsByName&)>& work) {
    UserDefaults defaults(defaultsPath());
    AppSettings settings(defaults);
    SettingsByName byName(settings, defaults);
    try {
        work(byName);
        return EXIT_SUCCESS;
    } catch (const BadSetting& error) {
        print(stderr, QStringLiteral("velmora: %1\n").arg(error.localizedDescription()));
        return usageError;
    } catch (const Error& error) {
        print(stderr, QStringLiteral("velmora: %1\n").arg(error.localizedDescription()));
        return EXIT_FAILURE;
    }
}

struct Start {
    int operator()(const launch::Run& start) const { return run(start.command); }
    int operator()(const launch::Send& start) const { return send(start.command); }
    int operator()(const launch::SetSettings& start) const {
        return withSettings([&](SettingsByName& settings) { settings.set(start.changes); });
    }
    int operator()(const launch::GetSetting& start) const {
        return withSettings([&](const SettingsByName& settings) {
            print(stdout, settings.value(start.key) + QLatin1Char('\n'));
        });
    }
    int operator()(const launch::ListSettings&) const {
        return withSettings([](const SettingsByName& settings) {
            for (const WrittenSetting& each : settings.all())
                print(stdout, QStringLiteral("%1=%2\n").arg(each.key, each.value));
        });
    }
    int operator()(const launch::ShowVersion&) const {
        print(stdout, QStringLiteral("velmora %1\n").arg(QCoreApplication::applicationVersion()));
        return EXIT_SUCCESS;
    }
    int operator()(const launch::ShowHelp&) const {
        print(stdout, usage());
        return EXIT_SUCCESS;
    }
    int operator()(const launch::Invalid& start) const {
        print(
            stderr,
            QStringLiteral("velmora: can't make sense of \"%1\"; see velmora --help\n").arg(start.argument));
        return usageError;
    }
};

} // namespace

int main(int argc, char** argv) {
    QStringList arguments;
    for (int i = 1; i < argc; ++i) {
        arguments.append(QString::fromLocal8Bit(argv[i]));
        // A callback URL holds tokens, and every user of the machine can read the arguments of a process.
        std::fill_n(argv[i], std::strlen(argv[i]), '\0');
    }
    argc = 1; // Qt's own options stay its environment variables
    QCoreApplication::setApplicationName(QStringLiteral("Velmora"));
    QCoreApplication::setApplicationVersion(QStringLiteral(VELMORA_VERSION));

    const Launch launch = parseCommandLine(arguments);
    std::unique_ptr<QCoreApplication> application;
    if (std::holds_alternative<launch::Run>(launch)) {
        choosePlatform();
        chooseRendering();
        QGuiApplication::setDesktopFileName(QStringLiteral("app.velmora.Velmora"));
        QGuiApplication::setQuitOnLastWindowClosed(false);
        application = std::make_unique<QApplication>(argc, argv);
        forgetPlatform();
    } else {
        application = std::make_unique<QCoreApplication>(argc, argv);
    }
    return std::visit(Start{}, launch);
}
