#pragma once

#include <QJsonObject>
#include <QString>

#include <optional>

namespace velmora {

/// What the deployment fixes: the keys of Info.json. An environment variable of a key's name wins over the
/// file.
class InfoDictionary {
public:
    explicit InfoDictionary(QJsonObject values)
        : m_values(std::move(values)) {}

    /// Reads Info.json beside the program or, when installed, in its resource folder; none found gives no
    /// values.
    [[nodiscard]] static InfoDictionary load();

    /// None when the key is absent or its value is not a string.
    [[nodiscard]] std::optional<QString> string(const QString& key) const;

private:
    QJsonObject m_values;
};

} // namespace velmora
