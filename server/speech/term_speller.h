#pragma once

#include <string>
#include <string_view>

namespace velmora::server {

/// Writes technical terms as developers do: "github" and «гитхаб» become "GitHub". Only whole words, and of
/// those none that a listener could take for an ordinary one.
///
/// A term that is English already gets its capitals (and "java script" its shape), which harms little when it
/// is wrong; so a word stays only when its everyday sense is as likely in a developer's mouth: go, react,
/// rust, swift, node. A Russian word is replaced by another one, which garbles the sentence when it is wrong;
/// so every word stays that a dictionary or a calendar of names knows with a sense of its own («питон»,
/// «хук», «докер», «котлин», «джейсон»), and so do loanwords that Russian has taken in («коммит», «деплой»).
class TermSpeller {
public:
    /// The phrase with its terms; words are separated by blanks. Each phrase stands alone: what was sent
    /// can't be taken back, so a term of two words is put together only if one phrase has both.
    [[nodiscard]] static std::string spell(std::string_view phrase);

    /// Some terms as they are written, for a recogniser that takes advice.
    [[nodiscard]] static std::string examples();
};

} // namespace velmora::server
