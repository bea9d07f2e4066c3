#include "foundation/json_value.h"

#include <cmath>

namespace velmora::json {

void failExpecting(const char* what) {
    throw DecodingError(QStringLiteral("expected %1").arg(QLatin1String(what)));
}

QString ValueCoder<QString>::decode(const QJsonValue& json, DateForm) {
    if (!json.isString())
        failExpecting("a string");
    return json.toString();
}

bool ValueCoder<bool>::decode(const QJsonValue& json, DateForm) {
    if (!json.isBool())
        failExpecting("a boolean");
    return json.toBool();
}

std::optional<qint64> wholeNumber(const QJsonValue& json) {
    // toInteger() gives its default for what is no whole number: two defaults tell.
    if (json.toInteger(0) != json.toInteger(1))
        return std::nullopt;
    return json.toInteger();
}

qint64 ValueCoder<qint64>::decode(const QJsonValue& json, DateForm) {
    const std::optional<qint64> number = wholeNumber(json);
    if (!number)
        failExpecting("an integer");
    return *number;
}

double ValueCoder<double>::decode(const QJsonValue& json, DateForm) {
    if (!json.isDouble())
        failExpecting("a number");
    return json.toDouble();
}

QJsonValue ValueCoder<QUuid>::encode(const QUuid& value, DateForm) {
    return value.toString(QUuid::WithoutBraces).toUpper();
}

QUuid ValueCoder<QUuid>::decode(const QJsonValue& json, DateForm) {
    const QUuid value = QUuid::fromString(json.toString());
    if (value.isNull())
        failExpecting("a UUID");
    return value;
}

QJsonValue ValueCoder<Date>::encode(Date value, DateForm dates) {
    return dates == DateForm::ISO8601 ? QJsonValue(formatISO8601(value))
                                      : QJsonValue(toReferenceSeconds(value));
}

Date ValueCoder<Date>::decode(const QJsonValue& json, DateForm dates) {
    if (dates == DateForm::ReferenceSeconds) {
        constexpr double tenThousandYears = 3.2e11;
        const double seconds = ValueCoder<double>::decode(json, dates);
        if (std::abs(seconds) > tenThousandYears)
            failExpecting("a date within ten thousand years");
        return fromReferenceSeconds(seconds);
    }
    const QString text = ValueCoder<QString>::decode(json, dates);
    const std::optional<Date> date = parseISO8601(text);
    if (!date)
        throw DateError(text);
    return *date;
}

} // namespace velmora::json
