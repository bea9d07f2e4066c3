#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace velmora {

/// The opened item as it is shown.
struct ExpandedHistory {
    Q_GADGET
    QML_VALUE_TYPE(expandedHistory)
    Q_PROPERTY(QString dateLabel MEMBER dateLabel)
    Q_PROPERTY(QString duration MEMBER duration)
    Q_PROPERTY(QString wordCount MEMBER wordCount)
    Q_PROPERTY(QString wordCountName MEMBER wordCountName)
    Q_PROPERTY(QString cleanedText MEMBER cleanedText)
    Q_PROPERTY(QString rawText MEMBER rawText)

public:
    QString dateLabel;
    QString duration;
    QString wordCount;
    QString wordCountName; ///< for those who hear the window: "12 слов"
    QString cleanedText;
    QString rawText;

    bool operator==(const ExpandedHistory&) const = default;
};

} // namespace velmora
