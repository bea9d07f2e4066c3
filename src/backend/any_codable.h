#pragma once

#include "foundation/json_value.h"

#include <variant>

namespace velmora {

/// One JSON scalar; an array or an object becomes null.
struct AnyCodable {
    std::variant<std::monostate, bool, qint64, double, QString> value;

    bool operator==(const AnyCodable&) const = default;
};

namespace json {

template<>
struct ValueCoder<AnyCodable> {
    static QJsonValue encode(const AnyCodable& any, DateForm);
    static AnyCodable decode(const QJsonValue& json, DateForm); ///< never fails
};

} // namespace json
} // namespace velmora
