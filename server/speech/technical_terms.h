#pragma once

#include <string>
#include <string_view>

namespace velmora::server {

/// The phrase with its technical terms written as developers do: "github" and «гитхаб» become "GitHub". Words
/// are separated by blanks; only whole ones count, and none that a listener could take for an ordinary one:
///
/// A word in Latin letters gets its capitals (and "java script" its shape), which harms little when it is
/// wrong; so a word stays only when its everyday sense is as likely in a developer's mouth: go, react, rust,
/// swift, node. A word in Cyrillic letters is replaced by another one, which garbles the sentence when it is
/// wrong; so every word stays that a dictionary or a calendar of names knows with a sense of its own
/// («питон», «хук», «докер», «котлин», «джейсон»), and so do loanwords that Russian has taken in («коммит»).
///
/// Each phrase stands alone, for what was sent can't be taken back: a term of two words is put together only
/// if one phrase has both.
[[nodiscard]] std::string spellTechnicalTerms(std::string_view phrase);

/// Some terms as they are written, for a recogniser that takes advice.
[[nodiscard]] std::string technicalTermExamples();

} // namespace velmora::server
