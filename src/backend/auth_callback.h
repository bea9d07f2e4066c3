#pragma once

#include <QMap>
#include <QString>

namespace velmora {

/// A URL with which a web page calls back: velmora://auth?state=…&token=…
struct AuthCallback {
    QString scheme; ///< as it was written, unlike QUrl's
    QString host;   ///< as it was written
    /// Percent-decoded; of several items of one name the last. What can't be decoded is empty.
    QMap<QString, QString> items;

    /// Empty when absent.
    [[nodiscard]] QString item(const QString& name) const { return items.value(name); }

    bool operator==(const AuthCallback&) const = default;
};

/// All empty when the text is no URL.
[[nodiscard]] AuthCallback parseAuthCallback(const QString& text);

} // namespace velmora
