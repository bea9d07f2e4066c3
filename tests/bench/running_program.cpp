#include "running_program.h"

#include "backend/auth_store.h"
#include "core/history_store.h"
#include "foundation/user_defaults.h"
#include "lasting_token.h"
#include "pass.h"
#include "result.h"
#include "support/onboarded_defaults.h"

#include <QFile>

using namespace std::chrono_literals;

namespace velmora::bench {
namespace {

constexpr auto settling = 3s; // what the start leaves to be done

void fillHistory(const QString& folder, int items) {
    HistoryStore history(folder);
    const Date now = std::chrono::floor<std::chrono::microseconds>(std::chrono::system_clock::now());
    for (int i = items; i-- > 0;) {
        const QString text =
            QStringLiteral(
                "Запись номер %1: договорились созвониться в четверг и посмотреть, что получилось; "
                "если успеем, покажем это всей команде до конца недели.")
                .arg(i);
        history.add({.date = now - std::chrono::minutes(7 * i),
                     .durationSec = 4.0 + i % 30,
                     .rawText = text,
                     .cleanedText = text,
                     .appName = QStringLiteral("Редактор"),
                     .appBundleId = QStringLiteral("org.example.notes")});
    }
}

} // namespace

RunningProgram::RunningProgram(int historyItems, const QByteArray& defaults) {
    const QString config = configFolder();
    const QString data = m_home.filePath(QStringLiteral("data"));
    const QString support = data + QStringLiteral("/Velmora");
    fillHistory(support, historyItems);
    QDir().mkpath(config + QStringLiteral("/Velmora"));
    QFile file(defaultsPath());
    if (!file.open(QIODevice::WriteOnly) || file.write(test::onboardedDefaults(defaults)) < 0)
        throw NotMeasured(file.errorString());
    file.close();
    UserDefaults states(m_home.filePath(QStringLiteral("states.json")));
    AuthStore(support, states).save(lastingToken(), QStringLiteral("refresh"));

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("XDG_CONFIG_HOME"), config);
    environment.insert(QStringLiteral("XDG_DATA_HOME"), data);
    environment.insert(QStringLiteral("VelmorBackendURL"),
                       QStringLiteral("http://127.0.0.1:%1").arg(m_server.port()));
    m_program = std::make_unique<test::Program>(QStringLiteral(VELMORA_PROGRAM), QStringList(), environment);
    if (!m_program->says("tap active"))
        throw NotMeasured(QStringLiteral("the program's hotkey does not work"));
    pass(settling);
}

QString RunningProgram::configFolder() const {
    return m_home.filePath(QStringLiteral("config"));
}

QString RunningProgram::defaultsPath() const {
    return configFolder() + QStringLiteral("/Velmora/defaults.json");
}

void RunningProgram::startAgain() {
    if (QProcess::execute(QStringLiteral(VELMORA_PROGRAM), QStringList()) != 0)
        throw NotMeasured(QStringLiteral("the running program does not answer"));
}

} // namespace velmora::bench
