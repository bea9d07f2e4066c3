#pragma once

#include "foundation/json_value.h"

namespace velmora {

/// One finished dictation.
struct HistoryItem {
    QUuid id = QUuid::createUuid();
    Date date;              ///< when it finished
    double durationSec = 0; ///< length of the recording
    QString rawText;        ///< equal to cleanedText in this version
    QString cleanedText;
    std::optional<QString> appName; ///< the front application at the end
    std::optional<QString> appBundleId;

    static constexpr auto jsonFields() {
        using json::field;
        return std::tuple(
            field("id", &HistoryItem::id), field("date", &HistoryItem::date),
            field("durationSec", &HistoryItem::durationSec), field("rawText", &HistoryItem::rawText),
            field("cleanedText", &HistoryItem::cleanedText), field("appName", &HistoryItem::appName),
            field("appBundleId", &HistoryItem::appBundleId));
    }
    bool operator==(const HistoryItem&) const = default;
};

} // namespace velmora
