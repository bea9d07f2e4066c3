#pragma once

#include "speech/language.h"

#include <string>
#include <string_view>
#include <vector>

namespace velmora::server {

/// Tidies dictated text phrase by phrase, each final once it is given out: drops hesitations and stammered
/// repetitions, begins with a capital letter and ends with a full stop. It changes no other word.
class TextCleaner {
public:
    explicit TextCleaner(Language language);

    /// The phrase cleaned, in view of those before it; may be empty. Words are joined by single blanks.
    [[nodiscard]] std::string clean(std::string_view phrase);

    /// What the text lacks at its end: a full stop, or nothing.
    [[nodiscard]] std::string ending() const;

private:
    void add(std::string word, std::vector<std::string>& words);

    Language m_language;
    std::string m_lastWord;
    bool m_capitalise = true;
};

} // namespace velmora::server
