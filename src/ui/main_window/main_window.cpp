#include "ui/main_window/main_window.h"

#include "ui/kit/ui_engine.h"
#include "ui/kit/v_theme.h"
#include "ui/main_window/window_place.h"

#include <QCursor>
#include <QGuiApplication>
#include <QQuickItem>
#include <QScreen>
#include <QStyleHints>

namespace velmora {
namespace {

constexpr auto permsInterval = std::chrono::seconds(2);

} // namespace

MainWindow::MainWindow(const Neighbours& neighbours)
    : QQuickView(&neighbours.engine.get(), nullptr)
    , m_loop(neighbours.loop)
    , m_model(neighbours.model) {
    setTitle(QStringLiteral("Velmora"));
    setResizeMode(SizeRootObjectToView);
    followColours();
    connect(&VTheme::shared(), &VTheme::changed, this, &MainWindow::followColours);
    connect(this, &QWindow::activeChanged, this, [this] {
        if (isActive())
            m_model.refresh();
    });
    setInitialProperties({{QStringLiteral("model"), QVariant::fromValue(&m_model)}});
    setSource(QUrl(QStringLiteral("qrc:/qt/qml/Velmora/MainWindow/MainWindowView.qml")));
}

// The views look at the model to their end.
MainWindow::~MainWindow() {
    delete rootObject();
}

void MainWindow::open() {
    if (!isVisible()) {
        m_model.refresh();
        m_permsTimer = m_loop.every(permsInterval, [this] {
            if (isExposed()) // not while it is minimised
                m_model.refresh();
        });
        centreOnScreen();
    }
    if (windowStates().testFlag(Qt::WindowMinimized))
        setWindowStates(windowStates() & ~Qt::WindowMinimized);
    show();
    raise();
    requestActivate();
}

bool MainWindow::event(QEvent* event) {
    const bool handled = QQuickView::event(event);
    if (event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseMove)
        followPointer(*static_cast<QMouseEvent*>(event));
    if (event->type() == QEvent::Close && event->isAccepted()) {
        m_permsTimer.invalidate();
        Q_EMIT closed();
    }
    return handled;
}

// The window moves with the background under the pointer. The desktop keeps the release to itself then, which
// would leave a pointer handler of the view pressed, ready to drag the window again.
void MainWindow::followPointer(const QMouseEvent& event) {
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

void MainWindow::centreOnScreen() {
    if (QScreen* pointed = QGuiApplication::screenAt(QCursor::pos()))
        setScreen(pointed);
    const WindowPlace place = windowPlace(screen()->availableGeometry());
    setMinimumSize(place.minimumSize);
    setGeometry(place.frame);
}

// The background is what the desktop shows before the first frame, and while the window grows.
void MainWindow::followColours() {
    QColor background = VTheme::shared().windowBg();
    background.setAlpha(255);
    setColor(background);
}

} // namespace velmora
