#include "ui/kit/ordinary_window.h"

#include "ui/kit/ui_engine.h"
#include "ui/kit/v_theme.h"

#include <QCursor>
#include <QGuiApplication>
#include <QQuickItem>
#include <QScreen>
#include <QStyleHints>

namespace velmora {
namespace {

constexpr auto refreshInterval = std::chrono::seconds(2);

} // namespace

OrdinaryWindow::OrdinaryWindow(UiEngine& engine, MainLoop& loop, const WindowSizes& sizes)
    : QQuickView(&engine.get(), nullptr)
    , m_loop(loop)
    , m_sizes(sizes) {
    setTitle(QStringLiteral("Velmora"));
    setResizeMode(SizeRootObjectToView);
    followColours();
    QCoreApplication::instance()->installEventFilter(this);
    connect(&VTheme::shared(), &VTheme::changed, this, &OrdinaryWindow::followColours);
    connect(this, &QWindow::activeChanged, this, [this] {
        if (isActive())
            refresh();
    });
}

// A window that goes while it is active says so, when there is nothing left to refresh.
OrdinaryWindow::~OrdinaryWindow() {
    disconnect(this, nullptr, this, nullptr);
}

void OrdinaryWindow::setView(const QUrl& view, QObject& model) {
    setInitialProperties({{QStringLiteral("model"), QVariant::fromValue(&model)}});
    setSource(view);
}

void OrdinaryWindow::open() {
    if (!isVisible()) {
        refresh();
        m_refreshTimer = m_loop.every(refreshInterval, [this] {
            if (isExposed()) // not while it is minimised
                refresh();
        });
        centreOnScreen();
    }
    if (windowStates().testFlag(Qt::WindowMinimized))
        setWindowStates(windowStates() & ~Qt::WindowMinimized);
    show();
    raise();
    requestActivate();
}

bool OrdinaryWindow::event(QEvent* event) {
    const bool handled = QQuickView::event(event);
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseMove)
        followPointer(*static_cast<QMouseEvent*>(event));
    if (event->type() == QEvent::Close && event->isAccepted()) {
        m_refreshTimer.invalidate();
        if (!m_programEnds)
            Q_EMIT closed();
    }
    return handled;
}

// A program that ends may close its windows first.
bool OrdinaryWindow::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::Quit)
        m_programEnds = true;
    return QQuickView::eventFilter(watched, event);
}

// The window moves with the background under the pointer. The desktop keeps the release to itself then, which
// would leave a pointer handler of the view pressed, ready to drag the window again.
void OrdinaryWindow::followPointer(const QMouseEvent& event) {
    if (event.type() == QEvent::MouseButtonPress) {
        const bool onBackground = !event.isAccepted() && event.button() == Qt::LeftButton;
        m_backgroundPress = onBackground ? std::optional(event.position()) : std::nullopt;
    } else if (m_backgroundPress && event.buttons().testFlag(Qt::LeftButton)) {
        const QPointF way = event.position() - *m_backgroundPress;
        if (way.manhattanLength() < QGuiApplication::styleHints()->startDragDistance())
            return;
        m_backgroundPress.reset();
        startSystemMove();
    }
}

void OrdinaryWindow::centreOnScreen() {
    if (QScreen* pointed = QGuiApplication::screenAt(QCursor::pos()))
        setScreen(pointed);
    const WindowPlace place = windowPlace(screen()->availableGeometry(), m_sizes);
    setMinimumSize(place.minimumSize);
    if (m_sizes.areFixed())
        setMaximumSize(place.minimumSize);
    setGeometry(place.frame);
}

// The background is what the desktop shows before the first frame, and while the window grows.
void OrdinaryWindow::followColours() {
    QColor background = VTheme::shared().windowBg();
    background.setAlpha(255);
    setColor(background);
}

} // namespace velmora
