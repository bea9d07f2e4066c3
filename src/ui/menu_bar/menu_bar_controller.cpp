#include "ui/menu_bar/menu_bar_controller.h"

#include "core/hotkey_label.h"
#include "ui/menu_bar/menu_bar_popover_model.h"
#include "ui/menu_bar/popup_placement.h"

#include <QQmlComponent>

namespace velmora {
namespace {

using namespace std::chrono_literals;

// How far the popup's shadow reaches: 30 pixels around it, 10 further down.
constexpr QMargins shadowMargins(30, 20, 30, 40);

// A click on the icon takes the focus from the popup before it is told as a click.
constexpr auto sameClick = 400ms;

} // namespace

MenuBarController::MenuBarController(const Neighbours& neighbours, QObject* parent)
    : QObject(parent)
    , m_hotkey(neighbours.hotkey)
    , m_perms(neighbours.perms)
    , m_settings(neighbours.settings)
    , m_statusItem(neighbours.statusItem)
    , m_screens(neighbours.screens)
    , m_compositing(neighbours.compositing)
    , m_clicks(neighbours.clicks)
    , m_engine(neighbours.engine)
    , m_loop(neighbours.loop)
    , m_icon(neighbours.coord, neighbours.settings, neighbours.statusItem, neighbours.loop) {
    connect(&m_statusItem, &StatusItem::clicked, this, &MenuBarController::handleClick);
    connect(&m_compositing, &Compositing::changed, this, &MenuBarController::closePopup);
    connect(&m_clicks, &ClickWatch::pressed, this, &MenuBarController::pressed);
}

MenuBarController::~MenuBarController() = default;

void MenuBarController::handleClick() {
    const std::optional<MainLoop::TimePoint> leftAt = std::exchange(m_leftAt, {});
    if (m_popupPanel)
        closePopup();
    else if (!leftAt || m_loop.now() - *leftAt > sameClick)
        openPopup();
}

void MenuBarController::openPopup() {
    const std::optional<QRect> anchor = m_statusItem.frame();
    if (!anchor || m_popupPanel)
        return;
    m_perms.refresh();
    std::unique_ptr<MenuBarPopoverModel> popover = takeSnapshot();
    const bool seeThrough = m_compositing.isActive();
    std::unique_ptr<QQuickItem> view = makeView(*popover, seeThrough);

    const std::optional<ScreenArea> screen = m_screens.screenAt(anchor->center());
    const QSize size = QSizeF(view->implicitWidth(), std::ceil(view->implicitHeight())).toSize();
    const QRect popup = popupFrame(size, *anchor, screen);
    const QRect window = seeThrough ? popupWindowFrame(popup, shadowMargins, screen) : popup;
    m_popupPanel = std::make_unique<MenuBarPopupPanel>(std::move(view), popup, window, seeThrough);
    connectPopup(*popover);
    popover.release()->setParent(m_popupPanel.get());
    m_popupPanel->open();
    m_clicks.setEnabled(true);
}

// The panel itself knows what to do with its own; a press on the icon becomes a click of it. Others close the
// popup also where the desktop has refused it the keyboard, so that it has none to lose.
void MenuBarController::pressed(const QPoint& at) {
    if (m_popupPanel && !m_popupPanel->geometry().contains(at) && !m_statusItem.isUnderPointer())
        closePopup();
}

// What the popup says is done in a later turn, so that it isn't deleted while it speaks; what it says after
// it has been closed is lost with it.
void MenuBarController::connectPopup(const MenuBarPopoverModel& popover) {
    MenuBarPopupPanel* panel = m_popupPanel.get();
    connect(
        panel, &MenuBarPopupPanel::left, panel,
        [this] {
            if (m_statusItem.isUnderPointer())
                m_leftAt = m_loop.now();
            closePopup();
        },
        Qt::QueuedConnection);
    connect(
        &popover, &MenuBarPopoverModel::dismissed, panel, [this] { closePopup(); }, Qt::QueuedConnection);
    connect(
        &popover, &MenuBarPopoverModel::chosen, panel,
        [this](PopoverAction action) {
            closePopup();
            if (const Callback& callback = callbackOf(action))
                callback();
        },
        Qt::QueuedConnection);
}

void MenuBarController::closePopup() {
    m_clicks.setEnabled(false);
    m_popupPanel.reset();
}

void MenuBarController::prewarm() {
    const std::unique_ptr<MenuBarPopoverModel> popover = takeSnapshot();
    const std::unique_ptr<QQuickItem> view = makeView(*popover, m_compositing.isActive());
}

std::unique_ptr<MenuBarPopoverModel> MenuBarController::takeSnapshot() const {
    return std::make_unique<MenuBarPopoverModel>(MenuBarPopoverModel::Snapshot{
        .hotkeyLabel = hotkeyLabel(m_settings),
        .standInNote = fnStandInNote(m_settings),
        .hotkeyActive = m_hotkey.isActive(),
        .inputMonitoringGranted = m_perms.inputMonitoringGranted(),
        .accessibilityGranted = m_perms.accessibilityGranted(),
    });
}

std::unique_ptr<QQuickItem> MenuBarController::makeView(MenuBarPopoverModel& popover, bool seeThrough) {
    if (!m_view)
        m_view = std::make_unique<QQmlComponent>(
            &m_engine.get(), QUrl(QStringLiteral("qrc:/qt/qml/Velmora/MenuBar/MenuBarPopoverView.qml")));
    QObject* object =
        m_view->createWithInitialProperties({{QStringLiteral("popover"), QVariant::fromValue(&popover)},
                                             {QStringLiteral("seeThrough"), seeThrough}});
    if (!object)
        qFatal("%s", qPrintable(m_view->errorString()));
    return std::unique_ptr<QQuickItem>(qobject_cast<QQuickItem*>(object));
}

const MenuBarController::Callback& MenuBarController::callbackOf(PopoverAction action) const {
    switch (action) {
    case PopoverAction::History:
        return onShowHistory;
    case PopoverAction::Meetings:
        return onShowMeetings;
    case PopoverAction::Settings:
        return onShowSettings;
    case PopoverAction::About:
        return onShowAbout;
    case PopoverAction::OpenPermissions:
        return onShowPermissions;
    case PopoverAction::TestRecord:
        return onTestRecord;
    case PopoverAction::ShowOnboarding:
        return onShowOnboarding;
    case PopoverAction::Quit:
        return onQuit;
    }
    Q_UNREACHABLE();
}

} // namespace velmora
