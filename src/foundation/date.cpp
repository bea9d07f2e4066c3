#include "foundation/date.h"

#include <QDateTime>
#include <QRegularExpression>
#include <QTimeZone>

#include <cmath>

namespace velmora {
namespace {

constexpr double referenceOffset = 978307200.0; // 2001-01-01 in Unix seconds

} // namespace

double toUnixSeconds(Date date) {
    return std::chrono::duration<double>(date.time_since_epoch()).count();
}

Date fromUnixSeconds(double seconds) {
    return Date(std::chrono::round<Date::duration>(std::chrono::duration<double>(seconds)));
}

double toReferenceSeconds(Date date) {
    return toUnixSeconds(date) - referenceOffset;
}

Date fromReferenceSeconds(double seconds) {
    return fromUnixSeconds(seconds + referenceOffset);
}

std::optional<Date> parseISO8601(const QString& text) {
    static const QRegularExpression form(QStringLiteral(
        R"(\A(\d{4})-(\d{2})-(\d{2})T(\d{2}):(\d{2}):(\d{2})(?:\.(\d{1,9}))?(Z|[+-]\d{2}:?\d{2})\z)"));
    const QRegularExpressionMatch match = form.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    const auto number = [&match](int group) { return match.captured(group).toInt(); };
    const QDate day(number(1), number(2), number(3));
    const QTime time(number(4), number(5), number(6));
    if (!day.isValid() || !time.isValid())
        return std::nullopt;
    const QString zone = match.captured(8);
    int offset = 0;
    if (zone != QLatin1String("Z")) {
        const int hours = zone.mid(1, 2).toInt();
        const int minutes = zone.right(2).toInt();
        if (hours > 14 || minutes > 59)
            return std::nullopt;
        offset = (zone.front() == QLatin1Char('-') ? -60 : 60) * (hours * 60 + minutes);
    }
    const qint64 seconds = QDateTime(day, time, QTimeZone::utc()).toSecsSinceEpoch() - offset;
    const qint64 micros = match.captured(7).leftJustified(6, QLatin1Char('0'), true).toLongLong();
    return Date(std::chrono::seconds(seconds) + std::chrono::microseconds(micros));
}

QString formatISO8601(Date date) {
    const auto seconds = std::chrono::floor<std::chrono::seconds>(date).time_since_epoch().count();
    return QDateTime::fromSecsSinceEpoch(seconds, QTimeZone::utc())
               .toString(QStringLiteral("yyyy-MM-ddTHH:mm:ss")) +
           QLatin1Char('Z');
}

} // namespace velmora
