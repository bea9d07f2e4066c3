#pragma once

#include <QString>

#include <optional>

namespace velmora {

/// The plain text of the user's clipboard.
class Pasteboard {
public:
    virtual ~Pasteboard() = default;

    /// What a paste would insert; none when there is no text on it (an image, a file list, nothing).
    [[nodiscard]] virtual std::optional<QString> string() = 0;
    virtual void clearContents() = 0;
    virtual void setString(const QString& text) = 0;
};

} // namespace velmora
