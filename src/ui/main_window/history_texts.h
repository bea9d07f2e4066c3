#pragma once

#include "foundation/date.h"

#include <QDateTime>
#include <QString>

#include <optional>

namespace velmora {

/// The moment on the user's own clock and calendar.
[[nodiscard]] QDateTime localTime(Date date);

/// "5 мая".
[[nodiscard]] QString dayTitle(QDate day);
/// "09:05".
[[nodiscard]] QString timeLabel(Date date);
/// "Сегодня · 09:05", "Вчера · 09:05", "5 мая 09:05".
[[nodiscard]] QString dateLabel(Date date, Date now);

/// Whole seconds as minutes and seconds, "0:07"; minutes go on beyond the hour.
[[nodiscard]] QString shortDuration(double seconds);
/// The same with two digits for the minutes, "00:07".
[[nodiscard]] QString longDuration(double seconds);

/// The words of a text, as they are counted between white space.
[[nodiscard]] qsizetype wordCount(const QString& text);

/// "12 слов", in the plural form that the number asks for.
[[nodiscard]] QString wordsLabel(qsizetype count);

/// The beginning of a text as one paragraph, long enough for two lines of a row.
[[nodiscard]] QString rowPreview(const QString& text);

/// The pill of an application in a row; all of them have the brand's gradient.
struct TagStyle {
    QString name;

    bool operator==(const TagStyle&) const = default;
};

[[nodiscard]] TagStyle tagForBundle(const std::optional<QString>& bundleId);

/// "Фильтр и поиск скрывают 3 записи"; empty when nothing is hidden.
[[nodiscard]] QString hiddenItemsLabel(qsizetype count, bool byFilter, bool bySearch);

} // namespace velmora
