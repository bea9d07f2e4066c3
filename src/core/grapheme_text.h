#pragma once

#include <QString>

#include <optional>

namespace velmora {

/// What stands in `text` behind `prefix`, counted in grapheme clusters: none when `text` doesn't begin with
/// it. Clusters are compared as characters, so a composed and a decomposed "й" are the same, and "е" is no
/// prefix of "ё".
[[nodiscard]] std::optional<QString> textBeyondPrefix(const QString& text, const QString& prefix);

} // namespace velmora
