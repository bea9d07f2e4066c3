#include "platform/linux/tray_status_item.h"

#include <QCursor>
#include <QGuiApplication>
#include <QSystemTrayIcon>

namespace velmora {
namespace {

// Of two quick clicks the second is told as a double click, and nothing else.
bool isClick(QSystemTrayIcon::ActivationReason reason) {
    return reason != QSystemTrayIcon::Unknown;
}

} // namespace

TrayStatusItem::TrayStatusItem(QObject* parent)
    : StatusItem(parent) {
    connect(&m_notifier, &StatusNotifierWatch::changed, this, &TrayStatusItem::follow);
    if (QGuiApplication::platformName() == QLatin1String("xcb")) {
        m_xembed = std::make_unique<X11ManagerWatch>("_NET_SYSTEM_TRAY_S0");
        connect(m_xembed.get(), &X11ManagerWatch::changed, this, &TrayStatusItem::follow);
    }
    follow();
}

TrayStatusItem::~TrayStatusItem() = default;

void TrayStatusItem::follow() {
    const bool wasShown = isShown();
    if (!isTrayThere())
        m_icon.reset();
    else if (!m_icon)
        makeIcon();
    if (isShown() != wasShown)
        Q_EMIT shownChanged();
}

// Qt looks for a StatusNotifierItem host when it makes the first icon, and never again. So there is no icon
// before we know of a tray, and afterwards only trays of the first one's kind count.
bool TrayStatusItem::isTrayThere() {
    if (!m_notifier.isKnown())
        return false;
    const bool notifier = m_notifier.isThere();
    const bool xembed = m_xembed && m_xembed->isThere();
    if (!m_kind && notifier)
        m_kind = Kind::StatusNotifier;
    else if (!m_kind && xembed)
        m_kind = Kind::XEmbed;
    return m_kind && (*m_kind == Kind::StatusNotifier ? notifier : xembed);
}

void TrayStatusItem::makeIcon() {
    m_icon = std::make_unique<QSystemTrayIcon>(m_image);
    m_icon->setToolTip(m_toolTip);
    connect(m_icon.get(), &QSystemTrayIcon::activated, this,
            [this](QSystemTrayIcon::ActivationReason reason) {
                if (isClick(reason))
                    Q_EMIT clicked();
            });
    m_icon->show();
}

void TrayStatusItem::setImage(const QList<QImage>& sizes) {
    m_image = QIcon();
    for (const QImage& size : sizes) {
        QPixmap pixmap = QPixmap::fromImage(size);
        pixmap.setDevicePixelRatio(1); // trays count in pixels
        m_image.addPixmap(pixmap);
    }
    if (m_icon)
        m_icon->setIcon(m_image);
}

void TrayStatusItem::setToolTip(const QString& text) {
    if (std::exchange(m_toolTip, text) != text && m_icon)
        m_icon->setToolTip(text);
}

std::optional<QRect> TrayStatusItem::frame() const {
    if (!m_icon)
        return std::nullopt;
    const QRect place = m_icon->geometry();
    return place.isValid() ? place : QRect(QCursor::pos(), QSize(1, 1));
}

bool TrayStatusItem::isUnderPointer() const {
    const std::optional<QRect> place = frame();
    return place && place->contains(QCursor::pos());
}

} // namespace velmora
