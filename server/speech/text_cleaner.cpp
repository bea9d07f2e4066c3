#include "speech/text_cleaner.h"

#include <Poco/UTF8String.h>
#include <Poco/UTFString.h>
#include <Poco/Unicode.h>
#include <Poco/UnicodeConverter.h>

#include <algorithm>
#include <set>
#include <sstream>

namespace velmora::server {

namespace {

using Words = std::set<std::string, std::less<>>;

const Words& hesitations() {
    static const Words words{"uh", "uhh", "um",  "umm", "uhm", "er",   "erm", "hm",  "hmm", "mm",  "mmm",
                             "э",  "ээ",  "эээ", "эм",  "эмм", "эээм", "мм",  "ммм", "хм",  "хмм", "гм"};
    return words;
}

/// Words that people say twice and mean it.
const Words& meantTwice() {
    static const Words words{"had",   "that",   "very",   "really", "no",   "yes",    "bye",     "ha",
                             "so",    "many",   "zero",   "oh",     "one",  "two",    "three",   "four",
                             "five",  "six",    "seven",  "eight",  "nine", "ten",    "hundred", "да",
                             "нет",   "очень",  "еле",    "чуть",   "вот",  "так",    "давно",   "много",
                             "долго", "ноль",   "один",   "два",    "три",  "четыре", "пять",    "шесть",
                             "семь",  "восемь", "девять", "десять", "сто"};
    return words;
}

const Words& pronounForms() {
    static const Words words{"i", "i'm", "i'd", "i'll", "i've"};
    return words;
}

std::vector<std::string> split(std::string_view text) {
    std::vector<std::string> words;
    std::istringstream stream{std::string(text)};
    for (std::string word; stream >> word;) {
        words.push_back(word);
    }
    return words;
}

bool isAsciiDigit(char character) {
    return character >= '0' && character <= '9';
}

bool isWordCharacter(Poco::UInt32 character) {
    const auto code = static_cast<int>(character);
    return Poco::Unicode::isAlpha(code) || Poco::Unicode::isDigit(code);
}

Poco::UTF32String decoded(const std::string& text) {
    Poco::UTF32String characters;
    Poco::UnicodeConverter::convert(text, characters);
    return characters;
}

/// The word without the punctuation around it, in lower case: what two words are compared by.
std::string core(const std::string& word) {
    const auto characters = decoded(word);
    const auto first = std::find_if(characters.begin(), characters.end(), isWordCharacter);
    const auto last = std::find_if(characters.rbegin(), std::make_reverse_iterator(first), isWordCharacter);
    std::string text;
    Poco::UnicodeConverter::convert(Poco::UTF32String(first, last.base()), text);
    return Poco::UTF8::toLower(text);
}

std::string capitalised(const std::string& word) {
    auto characters = decoded(word);
    if (!characters.empty()) {
        characters[0] = static_cast<Poco::UInt32>(Poco::Unicode::toUpper(static_cast<int>(characters[0])));
    }
    std::string text;
    Poco::UnicodeConverter::convert(characters, text);
    return text;
}

bool beginsWithCapital(const std::string& word) {
    const auto characters = decoded(word);
    return !characters.empty() && Poco::Unicode::isUpper(static_cast<int>(characters[0]));
}

bool endsSentence(std::string_view text) {
    return text.ends_with('.') || text.ends_with('!') || text.ends_with('?') || text.ends_with("…");
}

bool endsWithPunctuation(std::string_view text) {
    return endsSentence(text) || text.ends_with(',') || text.ends_with(':') || text.ends_with(';');
}

} // namespace

TextCleaner::TextCleaner(Language language)
    : m_language(std::move(language)) {}

std::string TextCleaner::clean(std::string_view phrase) {
    std::vector<std::string> words;
    for (auto& word : split(phrase)) {
        add(std::move(word), words);
    }
    std::string text;
    for (const auto& word : words) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

void TextCleaner::add(std::string word, std::vector<std::string>& words) {
    const auto bare = core(word);
    if (hesitations().contains(bare)) {
        // "Um, well" began a sentence, "well, um." ended one: that must not be lost with the word.
        m_capitalise |= beginsWithCapital(word);
        if (endsSentence(word) && !words.empty() && !endsSentence(words.back())) {
            while (endsWithPunctuation(words.back())) {
                words.back().pop_back();
            }
            words.back() += word.back();
            m_lastWord = words.back();
        }
        return;
    }
    const bool stammer = !bare.empty() && bare == core(m_lastWord) && !endsWithPunctuation(m_lastWord) &&
                         !meantTwice().contains(bare) && !isAsciiDigit(bare.front());
    if (stammer) {
        // The second one may bring the punctuation.
        if (endsWithPunctuation(word) && !words.empty()) {
            words.back() += word.back();
            m_lastWord = words.back();
        }
        return;
    }
    if (m_capitalise || (m_language.code() == "en" && pronounForms().contains(bare))) {
        word = capitalised(word);
        m_capitalise = m_capitalise && bare.empty();
    }
    m_lastWord = word;
    words.push_back(std::move(word));
}

std::string TextCleaner::ending() const {
    return m_lastWord.empty() || endsSentence(m_lastWord) ? "" : ".";
}

} // namespace velmora::server
