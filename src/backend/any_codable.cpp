#include "backend/any_codable.h"

namespace velmora::json {

QJsonValue ValueCoder<AnyCodable>::encode(const AnyCodable& any, DateForm) {
    return std::visit(
        []<typename T>(const T& value) {
            if constexpr (std::is_same_v<T, std::monostate>)
                return QJsonValue(QJsonValue::Null);
            else
                return QJsonValue(value);
        },
        any.value);
}

AnyCodable ValueCoder<AnyCodable>::decode(const QJsonValue& json, DateForm) {
    if (json.isBool())
        return {json.toBool()};
    if (json.isDouble()) {
        if (const std::optional<qint64> number = wholeNumber(json))
            return {*number};
        return {json.toDouble()};
    }
    if (json.isString())
        return {json.toString()};
    return {};
}

} // namespace velmora::json
