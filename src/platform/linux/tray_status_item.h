#pragma once

#include "platform/linux/status_notifier_watch.h"
#include "platform/linux/x11_manager_watch.h"
#include "platform/status_item.h"

#include <QIcon>

class QSystemTrayIcon;

namespace velmora {

/// The icon in a tray of either kind: StatusNotifierItem where the session has it, else XEmbed. Needs a
/// QApplication.
class TrayStatusItem final : public StatusItem {
    Q_OBJECT

public:
    explicit TrayStatusItem(QObject* parent = nullptr);
    ~TrayStatusItem() override;

    [[nodiscard]] bool isShown() const override { return m_icon != nullptr; }
    void setImage(const QList<QImage>& sizes) override;
    void setToolTip(const QString& text) override;
    [[nodiscard]] std::optional<QRect> frame() const override;
    [[nodiscard]] bool isUnderPointer() const override;

private:
    enum class Kind { StatusNotifier, XEmbed };

    void follow();
    [[nodiscard]] bool isTrayThere();
    void makeIcon();

    StatusNotifierWatch m_notifier;
    std::unique_ptr<X11ManagerWatch> m_xembed; ///< where windows are those of X
    std::optional<Kind> m_kind;                ///< the library settles on the kind that it finds first
    std::unique_ptr<QSystemTrayIcon> m_icon;   ///< as long as there is a tray
    QIcon m_image;
    QString m_toolTip;
};

} // namespace velmora
