#pragma once

#include <string>
#include <variant>

namespace velmora::server {

/// A stage begins: "transcribing" or "cleaning".
struct DictationStage {
    std::string name;
    bool operator==(const DictationStage&) const = default;
};

/// A piece of the text, final; the text is the pieces one behind the other.
struct DictationText {
    std::string delta;
    bool operator==(const DictationText&) const = default;
};

/// The whole text; empty if nothing was said.
struct DictationDone {
    std::string text;
    int wordCount = 0;
    bool operator==(const DictationDone&) const = default;
};

/// A code, and a Russian sentence for the user.
struct DictationFailed {
    std::string code;
    std::string message;
    bool operator==(const DictationFailed&) const = default;
};

using DictationEvent = std::variant<DictationStage, DictationText, DictationDone, DictationFailed>;

} // namespace velmora::server
