#include "fake_notifier_tray.h"

#include "support/desktop/wait_until.h"

#include <QDBusArgument>
#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QMutex>
#include <QtEndian>

#include <gtest/gtest.h>

#include <atomic>

namespace velmora::test {
namespace {

const QString watcherService = QStringLiteral("org.kde.StatusNotifierWatcher");
const QString watcherPath = QStringLiteral("/StatusNotifierWatcher");
const QString itemPath = QStringLiteral("/StatusNotifierItem");
const QString itemInterface = QStringLiteral("org.kde.StatusNotifierItem");

QDBusConnection hostBus() {
    return QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("host"));
}

QDBusMessage ask(const QDBusMessage& question) {
    const QDBusPendingCall answer = hostBus().asyncCall(question);
    EXPECT_TRUE(waitUntil([&] { return answer.isFinished(); })) << "no answer";
    EXPECT_FALSE(answer.isError()) << answer.error().message().toStdString();
    return answer.reply();
}

} // namespace

class FakeNotifierTray::Watcher : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.kde.StatusNotifierWatcher")
    Q_PROPERTY(bool IsStatusNotifierHostRegistered READ hasHost)
    Q_PROPERTY(QStringList RegisteredStatusNotifierItems READ items)
    Q_PROPERTY(int ProtocolVersion READ protocolVersion)

public:
    explicit Watcher(bool withHost)
        : m_hasHost(withHost) {}

    void start() {
        QDBusConnection bus =
            QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("watcher"));
        EXPECT_TRUE(bus.registerObject(watcherPath, this, QDBusConnection::ExportAllContents));
        EXPECT_TRUE(bus.registerService(watcherService));
    }
    void stop() {
        QDBusConnection bus(QStringLiteral("watcher"));
        bus.unregisterObject(watcherPath);
        bus.unregisterService(watcherService);
        QDBusConnection::disconnectFromBus(QStringLiteral("watcher"));
    }
    void addHost() {
        m_hasHost = true;
        Q_EMIT StatusNotifierHostRegistered();
    }

    [[nodiscard]] bool hasHost() const {
        ++m_questions;
        return m_hasHost;
    }
    [[nodiscard]] int questions() const { return m_questions; }
    [[nodiscard]] QStringList items() const {
        const QMutexLocker lock(&m_mutex);
        return m_items;
    }
    [[nodiscard]] static int protocolVersion() { return 0; }

public Q_SLOTS:
    void RegisterStatusNotifierItem(const QString& item) {
        {
            const QMutexLocker lock(&m_mutex);
            m_items.append(item);
        }
        Q_EMIT StatusNotifierItemRegistered(item);
    }

Q_SIGNALS:
    void StatusNotifierHostRegistered();
    void StatusNotifierItemRegistered(const QString& item);

private:
    mutable QMutex m_mutex;
    QStringList m_items;
    std::atomic<bool> m_hasHost;
    mutable std::atomic<int> m_questions = 0;
};

FakeNotifierTray::FakeNotifierTray(bool withHost)
    : m_watcher(std::make_unique<Watcher>(withHost)) {
    m_watcher->moveToThread(&m_thread);
    m_thread.start();
    QMetaObject::invokeMethod(m_watcher.get(), &Watcher::start, Qt::BlockingQueuedConnection);
}

FakeNotifierTray::~FakeNotifierTray() {
    QMetaObject::invokeMethod(m_watcher.get(), &Watcher::stop, Qt::BlockingQueuedConnection);
    m_thread.quit();
    m_thread.wait();
}

void FakeNotifierTray::addHost() {
    QMetaObject::invokeMethod(m_watcher.get(), &Watcher::addHost, Qt::BlockingQueuedConnection);
}

bool FakeNotifierTray::hasAnswered() const {
    if (!waitUntil([this] { return m_watcher->questions() > 0; }))
        return false;
    // Answers come in the order of the questions, so behind this one the first is there as well.
    QDBusMessage another = QDBusMessage::createMethodCall(watcherService, watcherPath,
                                                          QStringLiteral("org.freedesktop.DBus.Properties"),
                                                          QStringLiteral("Get"));
    another << watcherService << QStringLiteral("ProtocolVersion");
    const QDBusPendingCall answer = QDBusConnection::sessionBus().asyncCall(another);
    return waitUntil([&] { return answer.isFinished(); });
}

QStringList FakeNotifierTray::items() const {
    return m_watcher->items();
}

void FakeNotifierTray::call(const char* method) const {
    QDBusMessage call =
        QDBusMessage::createMethodCall(items().value(0), itemPath, itemInterface, QLatin1String(method));
    call << 100 << 100;
    ask(call);
}

QVariant FakeNotifierTray::property(const char* name) const {
    QDBusMessage question = QDBusMessage::createMethodCall(
        items().value(0), itemPath, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    question << itemInterface << QLatin1String(name);
    return ask(question).arguments().value(0).value<QDBusVariant>().variant();
}

QList<QImage> FakeNotifierTray::picture() const {
    QList<QImage> images;
    const auto pixmaps = property("IconPixmap").value<QDBusArgument>();
    pixmaps.beginArray();
    while (!pixmaps.atEnd()) {
        int width = 0;
        int height = 0;
        QByteArray pixels; // ARGB, big-endian
        pixmaps.beginStructure();
        pixmaps >> width >> height >> pixels;
        pixmaps.endStructure();
        QImage image(width, height, QImage::Format_ARGB32);
        qFromBigEndian<quint32>(pixels.constData(), image.sizeInBytes() / 4, image.bits());
        images.append(image);
    }
    pixmaps.endArray();
    return images;
}

QString FakeNotifierTray::toolTip() const {
    const auto tip = property("ToolTip").value<QDBusArgument>();
    QString iconName;
    QString title;
    tip.beginStructure();
    tip >> iconName;
    tip.beginArray();
    tip.endArray();
    tip >> title;
    return title;
}

} // namespace velmora::test

#include "fake_notifier_tray.moc"
