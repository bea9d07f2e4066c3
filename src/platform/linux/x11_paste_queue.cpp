#include "platform/linux/x11_paste_queue.h"

#include "foundation/qt_main_loop.h"
#include "platform/linux/start_clipboard_keeper.h"
#include "platform/linux/x11_paste_system.h"

#include <QEventLoop>
#include <QThread>

#include <future>

namespace velmora {

// The thread, and what lives on it.
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
        m_loop->post([this] { m_system->whenIdle([this] { m_events->quit(); }); });
        m_thread->wait();
    }

    [[nodiscard]] bool isUsable() const { return m_isUsable; }

    /// Runs the call on the worker's thread, after those before it.
    template<typename Call>
    void post(Call call) {
        m_loop->post([this, call = std::move(call)] { call(m_system->line()); });
    }

private:
    void run(const Options& options, std::promise<void>& started) {
        QtMainLoop loop;
        QEventLoop events;
        X11PasteSystem system(loop, options.display, options.moreTerminals);
        m_loop = &loop;
        m_events = &events;
        m_system = &system;
        m_isUsable = system.isUsable();
        const QString keeper = options.keeper;
        started.set_value();
        events.exec();
        if (m_isUsable)
            system.leave(
                [keeper](const ClipboardContents& contents) { startClipboardKeeper(keeper, contents); });
    }

    std::unique_ptr<QThread> m_thread;
    QtMainLoop* m_loop = nullptr;
    QEventLoop* m_events = nullptr;
    X11PasteSystem* m_system = nullptr;
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
    , m_worker(std::move(worker)) {
    m_worker->post([this, alive = std::weak_ptr(m_alive)](PasteLine& line) {
        line.onUndelivered([this, alive](const QString& text) {
            m_loop.post([this, alive, text] {
                if (!alive.expired())
                    m_undelivered(text);
            });
        });
    });
}

X11PasteQueue::~X11PasteQueue() {
    sendWrite();
}

Pasteboard::Saved X11PasteQueue::save() {
    sendWrite();
    const auto saved = Saved(++m_lastSaved);
    m_worker->post([saved](PasteLine& line) { line.save(saved); });
    return saved;
}

void X11PasteQueue::putBack(Saved saved) {
    sendWrite();
    m_worker->post([saved](PasteLine& line) { line.putBack(saved); });
}

void X11PasteQueue::clearContents() {
    write(std::nullopt);
}

void X11PasteQueue::setString(const QString& text) {
    write(text);
}

void X11PasteQueue::beginText() {
    m_worker->post([](PasteLine& line) { line.beginText(); });
}

void X11PasteQueue::postPasteChord() {
    if (!m_unsent || !m_unsent->text) {
        sendWrite();
        m_worker->post([](PasteLine& line) { line.pasteClipboard(); });
        return;
    }
    m_worker->post(
        [piece = *std::exchange(m_unsent, std::nullopt)->text](PasteLine& line) { line.paste(piece); });
}

void X11PasteQueue::onUndelivered(std::function<void(const QString& text)> call) {
    m_undelivered = std::move(call);
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
        [text = std::exchange(m_unsent, std::nullopt)->text](PasteLine& line) { line.write(text); });
}

} // namespace velmora
