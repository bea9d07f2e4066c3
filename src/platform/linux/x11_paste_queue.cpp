#include "platform/linux/x11_paste_queue.h"

#include "foundation/qt_main_loop.h"
#include "platform/linux/x11_paste_engine.h"

#include <QClipboard>
#include <QEventLoop>
#include <QGuiApplication>
#include <QMimeData>
#include <QThread>

#include <future>

namespace velmora {
namespace {

// A text field of this process can't answer the worker while the main thread waits for it: ask it directly.
std::optional<QString> clipboardOfOwnWidgets() {
    if (!qobject_cast<QGuiApplication*>(QCoreApplication::instance()))
        return std::nullopt;
    const QClipboard* clipboard = QGuiApplication::clipboard();
    if (!clipboard->ownsClipboard() || !clipboard->mimeData() || !clipboard->mimeData()->hasText())
        return std::nullopt;
    return clipboard->mimeData()->text();
}

} // namespace

// The thread, and the engine that lives on it.
class X11PasteQueue::Worker {
public:
    explicit Worker(const Options& options) {
        std::promise<void> started;
        m_thread.reset(QThread::create([this, &options, &started] { run(options, started); }));
        m_thread->setObjectName(QStringLiteral("paste"));
        m_thread->start();
        started.get_future().wait();
    }

    ~Worker() {
        m_loop->post([this] { m_events->quit(); });
        m_thread->wait();
    }

    [[nodiscard]] bool isUsable() const { return m_isUsable; }

    /// Runs the call on the engine's thread, after those before it.
    template<typename Call>
    void post(Call call) {
        m_loop->post([this, call = std::move(call)] { call(*m_engine); });
    }

private:
    void run(const Options& options, std::promise<void>& started) {
        QtMainLoop loop;
        QEventLoop events;
        X11PasteEngine engine(loop, options.display, options.moreTerminals);
        m_loop = &loop;
        m_events = &events;
        m_engine = &engine;
        m_isUsable = engine.isUsable();
        started.set_value();
        events.exec();
    }

    std::unique_ptr<QThread> m_thread;
    QtMainLoop* m_loop = nullptr;
    QEventLoop* m_events = nullptr;
    X11PasteEngine* m_engine = nullptr;
    bool m_isUsable = false;
};

std::unique_ptr<X11PasteQueue> X11PasteQueue::open(MainLoop& loop, const Options& options) {
    auto worker = std::make_unique<Worker>(options);
    if (!worker->isUsable())
        return nullptr;
    return std::unique_ptr<X11PasteQueue>(new X11PasteQueue(loop, std::move(worker)));
}

X11PasteQueue::X11PasteQueue(MainLoop& loop, std::unique_ptr<Worker> worker)
    : m_loop(loop)
    , m_worker(std::move(worker)) {}

X11PasteQueue::~X11PasteQueue() {
    sendWrite();
}

std::optional<QString> X11PasteQueue::string() {
    if (m_unsent)
        return m_unsent->text;
    std::promise<std::optional<QString>> answer;
    m_worker->post([&answer, widgets = clipboardOfOwnWidgets()](X11PasteEngine& engine) {
        answer.set_value(engine.string(widgets));
    });
    return answer.get_future().get();
}

void X11PasteQueue::clearContents() {
    write(std::nullopt);
}

void X11PasteQueue::setString(const QString& text) {
    write(text);
}

void X11PasteQueue::postPasteChord() {
    std::optional<QString> piece;
    if (m_unsent && m_unsent->text)
        piece = std::exchange(m_unsent, std::nullopt)->text;
    else
        sendWrite();
    m_worker->post([piece](X11PasteEngine& engine) { engine.paste(piece); });
}

// Clearing and setting come as two calls, and the chord as a third: only the turn's end tells what was meant.
void X11PasteQueue::write(std::optional<QString> text) {
    if (!m_unsent)
        m_loop.post([this, alive = std::weak_ptr(m_alive)] {
            if (!alive.expired())
                sendWrite();
        });
    m_unsent = Unsent{std::move(text)};
}

void X11PasteQueue::sendWrite() {
    if (!m_unsent)
        return;
    m_worker->post(
        [text = std::exchange(m_unsent, std::nullopt)->text](X11PasteEngine& engine) { engine.write(text); });
}

} // namespace velmora
