#pragma once

#include "platform/status_item.h"

namespace velmora::test {

/// A tray that the test looks at and clicks.
class FakeStatusItem final : public StatusItem {
public:
    [[nodiscard]] bool isShown() const override { return anchor.has_value(); }
    void setImage(const QList<QImage>& sizes) override {
        image = sizes;
        ++imagesSet;
        imageSet();
    }
    void setToolTip(const QString& text) override { toolTip = text; }
    [[nodiscard]] std::optional<QRect> frame() const override { return anchor; }

    [[nodiscard]] bool isUnderPointer() const override { return underPointer; }

    void click() { Q_EMIT clicked(); }
    void moveTo(const std::optional<QRect>& place) {
        const bool wasShown = isShown();
        anchor = place;
        if (isShown() != wasShown)
            Q_EMIT shownChanged();
    }

    bool underPointer = true;
    std::optional<QRect> anchor = QRect(600, 0, 22, 22);
    QList<QImage> image;
    int imagesSet = 0;
    std::function<void()> imageSet = [] {};
    QString toolTip;
};

} // namespace velmora::test
