#pragma once

#include "foundation/json_value.h"

#include <QJsonDocument>

namespace velmora::json {

/// Turns records into JSON bytes and back.
///
/// A record is a default-constructible struct that names its fields once:
///
///     static constexpr auto jsonFields() {
///         return std::tuple(json::field("id", &HistoryItem::id), json::field("appName",
///         &HistoryItem::appName));
///     }
///
/// A field of type std::optional is left out when absent, and absent or null in the input is empty; every
/// other field is required. Keys the record doesn't name are ignored.
class Coder {
public:
    explicit constexpr Coder(DateForm dates)
        : m_dates(dates) {}

    /// Throws DecodingError when the bytes aren't JSON of this type.
    template<typename T>
    [[nodiscard]] T decode(const QByteArray& bytes) const {
        return ValueCoder<T>::decode(parse(bytes), m_dates);
    }

    template<typename T>
    [[nodiscard]] QByteArray encode(const T& value,
                                    QJsonDocument::JsonFormat format = QJsonDocument::Compact) const {
        return write(ValueCoder<T>::encode(value, m_dates), format);
    }

private:
    static QJsonValue parse(const QByteArray& bytes);
    static QByteArray write(const QJsonValue& value, QJsonDocument::JsonFormat format);

    DateForm m_dates;
};

} // namespace velmora::json
