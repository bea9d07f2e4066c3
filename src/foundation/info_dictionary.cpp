#include "foundation/info_dictionary.h"

#include "foundation/user_folders.h"

#include <QFile>
#include <QJsonDocument>

namespace velmora {

InfoDictionary InfoDictionary::load() {
    QFile file(resourcePath(QStringLiteral("Info.json")));
    if (!file.open(QIODevice::ReadOnly))
        return InfoDictionary({});
    return InfoDictionary(QJsonDocument::fromJson(file.readAll()).object());
}

std::optional<QString> InfoDictionary::string(const QString& key) const {
    const QByteArray name = key.toUtf8();
    if (qEnvironmentVariableIsSet(name.constData()))
        return qEnvironmentVariable(name.constData());
    const QJsonValue value = m_values.value(key);
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}

} // namespace velmora
