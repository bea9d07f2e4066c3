#pragma once

#include "foundation/date.h"
#include "foundation/error.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QJsonValue>
#include <QMap>
#include <QUuid>

#include <concepts>
#include <optional>
#include <tuple>
#include <vector>

/// How single values stand in JSON. Types of other folders join by specialising ValueCoder.
namespace velmora::json {

enum class DateForm {
    ISO8601,         ///< a string; written without fractions of a second, read with or without
    ReferenceSeconds ///< a number of seconds since 2001-01-01 00:00:00 UTC
};

/// The input isn't what the record needs. The description names the key.
class DecodingError : public PlainError {
public:
    using PlainError::PlainError;
};

/// None when the value is no number, has a fraction or is out of range.
[[nodiscard]] std::optional<qint64> wholeNumber(const QJsonValue& json);

/// A string that is no date. Its text is fixed and names the string, not the key.
class DateError final : public DecodingError {
public:
    explicit DateError(const QString& text)
        : DecodingError(QStringLiteral("Cannot parse date: ") + text) {}
};

[[noreturn]] void failExpecting(const char* what);

/// ValueCoder<T>::encode(value, dates) gives a QJsonValue, decode(json, dates) a T or throws DecodingError.
template<typename T>
struct ValueCoder;

template<>
struct ValueCoder<QString> {
    static QJsonValue encode(const QString& value, DateForm) { return value; }
    static QString decode(const QJsonValue& json, DateForm);
};

template<>
struct ValueCoder<bool> {
    static QJsonValue encode(bool value, DateForm) { return value; }
    static bool decode(const QJsonValue& json, DateForm);
};

template<>
struct ValueCoder<qint64> {
    static QJsonValue encode(qint64 value, DateForm) { return value; }
    static qint64 decode(const QJsonValue& json, DateForm);
};

template<>
struct ValueCoder<double> {
    static QJsonValue encode(double value, DateForm) { return value; }
    static double decode(const QJsonValue& json, DateForm);
};

template<>
struct ValueCoder<QUuid> {
    static QJsonValue encode(const QUuid& value, DateForm);
    static QUuid decode(const QJsonValue& json, DateForm);
};

template<>
struct ValueCoder<Date> {
    static QJsonValue encode(Date value, DateForm dates);
    static Date decode(const QJsonValue& json, DateForm dates);
};

template<typename T>
struct ValueCoder<std::vector<T>> {
    static QJsonValue encode(const std::vector<T>& value, DateForm dates) {
        QJsonArray array;
        for (const T& element : value)
            array.append(ValueCoder<T>::encode(element, dates));
        return array;
    }
    static std::vector<T> decode(const QJsonValue& json, DateForm dates) {
        if (!json.isArray())
            failExpecting("an array");
        std::vector<T> value;
        const QJsonArray array = json.toArray();
        value.reserve(static_cast<std::size_t>(array.size()));
        for (const QJsonValue element : array)
            value.push_back(ValueCoder<T>::decode(element, dates));
        return value;
    }
};

template<typename T>
struct ValueCoder<QMap<QString, T>> {
    static QJsonValue encode(const QMap<QString, T>& value, DateForm dates) {
        QJsonObject object;
        for (auto entry = value.cbegin(); entry != value.cend(); ++entry)
            object.insert(entry.key(), ValueCoder<T>::encode(entry.value(), dates));
        return object;
    }
    static QMap<QString, T> decode(const QJsonValue& json, DateForm dates) {
        if (!json.isObject())
            failExpecting("an object");
        QMap<QString, T> value;
        const QJsonObject object = json.toObject();
        for (auto entry = object.begin(); entry != object.end(); ++entry)
            value.insert(entry.key(), ValueCoder<T>::decode(entry.value(), dates));
        return value;
    }
};

/// One field of a record: its JSON key and where it is.
template<typename Record, typename Member>
struct Field {
    const char* key;
    Member Record::*member;
};

template<typename Record, typename Member>
[[nodiscard]] constexpr Field<Record, Member> field(const char* key, Member Record::*member) {
    return {key, member};
}

template<typename T>
concept Record = std::default_initializable<T> && requires {
    T::jsonFields();
};

template<typename T>
inline constexpr bool isOptional = false;
template<typename T>
inline constexpr bool isOptional<std::optional<T>> = true;

template<Record T>
struct ValueCoder<T> {
    static QJsonValue encode(const T& record, DateForm dates) {
        QJsonObject object;
        const auto put = [&]<typename Member>(const Field<T, Member>& field) {
            const Member& value = record.*field.member;
            if constexpr (!isOptional<Member>)
                object.insert(QLatin1String(field.key), ValueCoder<Member>::encode(value, dates));
            else if (value)
                object.insert(QLatin1String(field.key),
                              ValueCoder<typename Member::value_type>::encode(*value, dates));
        };
        std::apply([&](const auto&... fields) { (put(fields), ...); }, T::jsonFields());
        return object;
    }

    static T decode(const QJsonValue& json, DateForm dates) {
        if (!json.isObject())
            failExpecting("an object");
        const QJsonObject object = json.toObject();
        T record;
        const auto take = [&]<typename Member>(const Field<T, Member>& field) {
            const QJsonValue value = object.value(QLatin1String(field.key));
            if constexpr (isOptional<Member>) {
                if (value.isUndefined() || value.isNull())
                    return;
            }
            try {
                using Value = typename Unwrapped<Member>::type;
                record.*field.member = ValueCoder<Value>::decode(value, dates);
            } catch (const DateError&) {
                throw;
            } catch (const DecodingError& error) {
                throw DecodingError(QLatin1String(field.key) + QStringLiteral(": ") +
                                    error.localizedDescription());
            }
        };
        std::apply([&](const auto&... fields) { (take(fields), ...); }, T::jsonFields());
        return record;
    }

private:
    template<typename M>
    struct Unwrapped {
        using type = M;
    };
    template<typename M>
    struct Unwrapped<std::optional<M>> {
        using type = M;
    };
};

} // namespace velmora::json
