#include "backend/auth_callback.h"
#include "backend/auth_session.h"
#include "backend/auth_store.h"
#include "backend/backend_dictate_client.h"
#include "backend/dictate_client_error.h"
#include "backend/qt_http_transport.h"
#include "e2e/session/program.h"
#include "e2e/session/sign_in_page.h"
#include "figures.h"
#include "foundation/qt_main_loop.h"
#include "foundation/user_defaults.h"
#include "foundation/worker.h"
#include "support/desktop/wait_until.h"

#include <QFile>
#include <QProcess>
#include <QRandomGenerator>
#include <QRegularExpression>
#include <QTemporaryDir>

namespace velmora::bench {
namespace {

constexpr int runs = 20;
constexpr qsizetype mebibyte = 1 << 20;

// No audio, so that the server's answer follows the last byte at once.
void writeNoise(const QString& path, qsizetype bytes) {
    std::vector<quint32> noise(std::size_t(bytes) / sizeof(quint32));
    QRandomGenerator(1).fillRange(noise.data(), qsizetype(noise.size()));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) ||
        file.write(reinterpret_cast<const char*>(noise.data()), bytes) != bytes)
        throw NotMeasured(QStringLiteral("can't write ") + path);
}

/// The real server, and the client of the application signed in to it.
class Connection {
public:
    Connection() {
        if (!m_server.says("listens on"))
            throw NotMeasured(QStringLiteral("the server did not start"));
        static const QRegularExpression address(QStringLiteral(R"(127\.0\.0\.1:\d+)"));
        m_url = QStringLiteral("http://") + address.match(QString::fromUtf8(m_server.output())).captured();
        const QString page = m_url + QStringLiteral("/auth?source=app&state=bench");
        const AuthCallback callback = parseAuthCallback(
            test::createAccount(page, QStringLiteral("me@example.org"), QStringLiteral("correct horse")));
        m_store.save(callback.item(QStringLiteral("token")), callback.item(QStringLiteral("refresh")));
        m_session.emplace(m_transport, m_store, m_loop, QUrl(m_url, QUrl::StrictMode));
        m_client.emplace(m_transport, *m_session, m_loop, m_reader);
    }

    /// The time until the server has refused the file, in milliseconds.
    double post(const QString& file) {
        std::optional<double> time;
        TaskScope scope;
        scope.start(QStringLiteral("upload"), dictate(*m_client, file, time));
        if (!test::waitUntil([&time] { return time.has_value(); }, std::chrono::seconds(20)))
            throw NotMeasured(QStringLiteral("no answer to the upload"));
        return *time;
    }

    /// The same with curl, without the start of the process.
    double postWithCurl(const QString& file) {
        QProcess curl;
        curl.start(QStringLiteral("curl"),
                   {QStringLiteral("--silent"), QStringLiteral("--noproxy"), QStringLiteral("*"),
                    QStringLiteral("--output"), QStringLiteral("/dev/null"), QStringLiteral("--write-out"),
                    QStringLiteral("%{http_code} %{time_total}"), QStringLiteral("--header"),
                    QStringLiteral("Expect:"), QStringLiteral("--header"),
                    QStringLiteral("Authorization: Bearer ") + m_store.tokens()->accessToken,
                    QStringLiteral("--form"), QStringLiteral("file=@%1;type=audio/m4a").arg(file),
                    m_url + QStringLiteral("/v1/dictate")});
        if (!curl.waitForFinished() || curl.exitCode() != 0)
            throw NotMeasured(QStringLiteral("curl: ") + QString::fromUtf8(curl.readAllStandardError()));
        const QList<QByteArray> words = curl.readAllStandardOutput().split(' ');
        if (words.front() != "422")
            throw NotMeasured(QStringLiteral("curl got ") + QString::fromLatin1(words.front()));
        return words.back().toDouble() * 1000;
    }

private:
    static Task<> dictate(DictateService& client, QString file, std::optional<double>& time) {
        const auto start = Clock::now();
        AsyncStream<DictateEvent> events = client.dictate(file);
        try {
            while (const std::optional<DictateEvent> event = co_await events.next()) {
            }
        } catch (const DictateClientError&) { // it is no audio
            time = milliseconds(start, Clock::now());
        }
    }

    QTemporaryDir m_folder;
    test::Program m_server{QStringLiteral(VELMORA_SERVER_PROGRAM),
                           {QStringLiteral("--listen"), QStringLiteral("127.0.0.1:0"),
                            QStringLiteral("--data"), m_folder.filePath(QStringLiteral("server"))}};
    QString m_url;
    QtMainLoop m_loop;
    UserDefaults m_defaults{m_folder.filePath(QStringLiteral("defaults.json"))};
    AuthStore m_store{m_folder.path(), m_defaults};
    QtHttpTransport m_transport{m_loop};
    ThreadWorker m_reader;
    std::optional<AuthSession> m_session;
    std::optional<BackendDictateClient> m_client;
};

Result measureSize(Connection& connection, const QString& file, int mebibytes) {
    const auto megabytesPerSecond = [&](double time) {
        return double(mebibytes) * double(mebibyte) / time / 1000;
    };
    Samples client, curl;
    for (int run = -1; run < runs; ++run) { // the first one warms up
        const double clientTime = connection.post(file);
        const double curlTime = connection.postWithCurl(file);
        if (run < 0)
            continue;
        client.add(megabytesPerSecond(clientTime));
        curl.add(megabytesPerSecond(curlTime));
    }
    return {QStringLiteral("upload of %1 MiB").arg(mebibytes),
            QStringLiteral("MB/s"),
            client,
            QStringLiteral("curl, same file, same server"),
            curl,
            target::ShareOfBaseline{0.9}};
}

} // namespace

std::vector<Result> measureUpload(DictationRuns&) {
    const QTemporaryDir folder;
    Connection connection;
    std::vector<Result> results;
    for (const int mebibytes : {10, 40}) {
        const QString file = folder.filePath(QStringLiteral("%1.m4a").arg(mebibytes));
        writeNoise(file, mebibytes * mebibyte);
        results.push_back(measureSize(connection, file, mebibytes));
    }
    return results;
}

} // namespace velmora::bench
