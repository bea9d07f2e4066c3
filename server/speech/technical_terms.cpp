#include "speech/technical_terms.h"

#include <Poco/UTF8String.h>

#include <algorithm>
#include <array>
#include <cctype>
#include <map>
#include <string_view>
#include <vector>

namespace velmora::server {

namespace {

using Spellings = std::map<std::string, std::string, std::less<>>;

/// How a Russian noun changes in the singular, as far as no other word comes of it.
enum class Declined { No, Masculine, Feminine };

struct RussianTerm {
    std::string_view heard;
    std::string_view written;
    Declined declined = Declined::No;
};

constexpr std::array englishTerms = std::to_array<std::pair<std::string_view, std::string_view>>({
    // Languages, and what runs in them
    {"javascript", "JavaScript"},
    {"java script", "JavaScript"},
    {"typescript", "TypeScript"},
    {"type script", "TypeScript"},
    {"java", "Java"},
    {"python", "Python"},
    {"kotlin", "Kotlin"},
    {"scala", "Scala"},
    {"haskell", "Haskell"},
    {"php", "PHP"},
    {"nodejs", "Node.js"},
    {"node.js", "Node.js"},
    {"node js", "Node.js"},
    {"reactjs", "React"},
    {"react js", "React"},
    {"react.js", "React"},
    {"vuejs", "Vue.js"},
    {"vue.js", "Vue.js"},
    {"vue js", "Vue.js"},
    {"nextjs", "Next.js"},
    {"next.js", "Next.js"},
    {"next js", "Next.js"},
    {"jquery", "jQuery"},
    {"redux", "Redux"},
    {"django", "Django"},
    {"fastapi", "FastAPI"},
    {"numpy", "NumPy"},
    {"pytorch", "PyTorch"},
    {"tensorflow", "TensorFlow"},
    {"npm", "npm"},
    {"eslint", "ESLint"},
    // Services and tools
    {"github", "GitHub"},
    {"git hub", "GitHub"},
    {"gitlab", "GitLab"},
    {"git lab", "GitLab"},
    {"bitbucket", "Bitbucket"},
    {"docker", "Docker"},
    {"kubernetes", "Kubernetes"},
    {"devops", "DevOps"},
    {"vscode", "VS Code"},
    {"vs code", "VS Code"},
    {"linux", "Linux"},
    {"ubuntu", "Ubuntu"},
    {"debian", "Debian"},
    {"macos", "macOS"},
    {"ios", "iOS"},
    {"postgres", "Postgres"},
    {"postgresql", "PostgreSQL"},
    {"mysql", "MySQL"},
    {"sqlite", "SQLite"},
    {"mongodb", "MongoDB"},
    {"mongo db", "MongoDB"},
    {"redis", "Redis"},
    {"kafka", "Kafka"},
    {"rabbitmq", "RabbitMQ"},
    // Formats, protocols, abbreviations
    {"graphql", "GraphQL"},
    {"graph ql", "GraphQL"},
    {"grpc", "gRPC"},
    {"websocket", "WebSocket"},
    {"web socket", "WebSocket"},
    {"websockets", "WebSockets"},
    {"web sockets", "WebSockets"},
    {"oauth", "OAuth"},
    {"json", "JSON"},
    {"yaml", "YAML"},
    {"xml", "XML"},
    {"html", "HTML"},
    {"css", "CSS"},
    {"csv", "CSV"},
    {"pdf", "PDF"},
    {"sql", "SQL"},
    {"http", "HTTP"},
    {"https", "HTTPS"},
    {"url", "URL"},
    {"urls", "URLs"},
    {"uri", "URI"},
    {"api", "API"},
    {"apis", "APIs"},
    {"sdk", "SDK"},
    {"cli", "CLI"},
    {"gui", "GUI"},
    {"ui", "UI"},
    {"ux", "UX"},
    {"ide", "IDE"},
    {"ssh", "SSH"},
    {"tcp", "TCP"},
    {"udp", "UDP"},
    {"dns", "DNS"},
    {"ip", "IP"},
    {"jwt", "JWT"},
    {"cors", "CORS"},
    {"uuid", "UUID"},
    {"ascii", "ASCII"},
});

constexpr std::array russianTerms = std::to_array<RussianTerm>({
    {"реакт", "React", Declined::Masculine},
    {"гитхаб", "GitHub", Declined::Masculine},
    {"гит хаб", "GitHub", Declined::Masculine},
    {"гитлаб", "GitLab", Declined::Masculine},
    {"гит лаб", "GitLab", Declined::Masculine},
    {"джаваскрипт", "JavaScript", Declined::Masculine},
    {"джава скрипт", "JavaScript", Declined::Masculine},
    {"тайпскрипт", "TypeScript", Declined::Masculine},
    {"тайп скрипт", "TypeScript", Declined::Masculine},
    {"джава", "Java", Declined::Feminine},
    {"линукс", "Linux", Declined::Masculine},
    {"кубернетес", "Kubernetes", Declined::Masculine},
    {"постгрес", "Postgres", Declined::Masculine},
    {"вебпак", "webpack", Declined::Masculine},
    {"редакс", "Redux", Declined::Masculine},
    {"пайторч", "PyTorch", Declined::Masculine},
    {"ангуляр", "Angular", Declined::Masculine},
    {"убунту", "Ubuntu"},
    {"нод джиэс", "Node.js"},
    {"вью джиэс", "Vue.js"},
    {"графкуэль", "GraphQL"},
    {"эскуэль", "SQL"},
    {"майэскуэль", "MySQL"},
    {"джсон", "JSON", Declined::Masculine},
    {"эйчтиэмэль", "HTML"},
    {"сиэсэс", "CSS"},
    {"апи", "API"},
    {"эйпиай", "API"},
    {"урл", "URL"},
    {"юарэль", "URL"},
    {"энпиэм", "npm"},
});

std::vector<std::string_view> endingsOf(Declined declined) {
    switch (declined) {
    case Declined::Masculine:
        return {"", "а", "у", "ом", "е"};
    case Declined::Feminine:
        return {"а", "ы", "е", "у", "ой"};
    case Declined::No:
        break;
    }
    return {""};
}

Spellings allSpellings() {
    Spellings spellings(englishTerms.begin(), englishTerms.end());
    for (const auto& term : russianTerms) {
        auto stem = term.heard;
        if (term.declined == Declined::Feminine) {
            stem.remove_suffix(std::string_view("а").size());
        }
        for (const auto ending : endingsOf(term.declined)) {
            spellings.emplace(std::string(stem) + std::string(ending), term.written);
        }
    }
    return spellings;
}

const std::string* spellingOf(std::string_view words) {
    static const Spellings spellings = allSpellings();
    const auto found = spellings.find(Poco::UTF8::toLower(std::string(words)));
    return found == spellings.end() ? nullptr : &found->second;
}

/// A word and the punctuation on both sides of it.
struct Token {
    std::string_view before;
    std::string_view word;
    std::string_view after;
};

/// Letters and digits, and all of UTF-8 beyond ASCII but the quotation marks, dashes and dots.
bool isWordAt(std::string_view text, std::size_t position) {
    const auto byte = static_cast<unsigned char>(text[position]);
    if (byte < 0x80) {
        return std::isalnum(byte) != 0;
    }
    // U+2000 to U+206F, and « and ».
    const auto rest = text.substr(position);
    return !rest.starts_with("\xE2\x80") && !rest.starts_with("\xE2\x81") && !rest.starts_with("«") &&
           !rest.starts_with("»");
}

bool isContinuation(char byte) {
    return (byte & '\xC0') == '\x80';
}

/// What may hang on a term: the English possessive, and the Russian noun of a compound ("JSON-файл").
std::size_t attachmentIn(std::string_view word) {
    for (const std::string_view possessive : {"'s", "’s"}) {
        if (word.ends_with(possessive)) {
            return word.size() - possessive.size();
        }
    }
    const auto hyphen = word.find('-');
    const bool compound = hyphen != std::string_view::npos && hyphen + 1 < word.size() &&
                          static_cast<unsigned char>(word[hyphen + 1]) >= 0x80;
    return compound ? hyphen : word.size();
}

Token parse(std::string_view text) {
    std::size_t begin = 0;
    std::size_t end = 0;
    bool inside = false;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (isContinuation(text[i])) {
            end = inside && end == i ? i + 1 : end;
            continue;
        }
        if (isWordAt(text, i)) {
            begin = inside ? begin : i;
            inside = true;
            end = i + 1;
        }
    }
    const auto word = text.substr(begin, end - begin);
    const auto length = attachmentIn(word);
    return {text.substr(0, begin), word.substr(0, length), text.substr(begin + length)};
}

std::vector<std::string_view> splitAtBlanks(std::string_view text) {
    std::vector<std::string_view> words;
    for (std::size_t begin = 0; begin <= text.size();) {
        const auto end = std::min(text.find(' ', begin), text.size());
        words.push_back(text.substr(begin, end - begin));
        begin = end + 1;
    }
    return words;
}

} // namespace

std::string spellTechnicalTerms(std::string_view phrase) {
    const auto words = splitAtBlanks(phrase);
    std::string text;
    for (std::size_t i = 0; i < words.size(); ++i) {
        text += i == 0 ? "" : " ";
        const auto token = parse(words[i]);
        if (token.after.empty() && i + 1 < words.size()) {
            const auto next = parse(words[i + 1]);
            const auto pair = std::string(token.word) + " " + std::string(next.word);
            if (const auto* spelling = next.before.empty() ? spellingOf(pair) : nullptr) {
                text.append(token.before).append(*spelling).append(next.after);
                ++i;
                continue;
            }
        }
        const auto* spelling = spellingOf(token.word);
        text.append(token.before).append(spelling ? *spelling : token.word).append(token.after);
    }
    return text;
}

std::string technicalTermExamples() {
    return "React, hooks, useState, props, JavaScript, TypeScript, Node.js, npm, API, REST, JSON, SQL, "
           "PostgreSQL, Docker, Kubernetes, GitHub, pull request, commit, merge, deploy, frontend, backend.";
}

} // namespace velmora::server
