#pragma once

#include <optional>
#include <string>

namespace velmora::server {

/// A spoken language, or none, which leaves the choice to the recogniser.
class Language {
public:
    /// Leaves the choice to the recogniser.
    Language() = default;

    /// Reads the value of the preference `transcribeLanguage`: "auto", an ISO 639 code ("ru", "en", "pt-BR"),
    /// or one of the names that clients store ("English", "Русский"). Empty for anything else.
    [[nodiscard]] static std::optional<Language> fromPreference(const std::string& value);

    [[nodiscard]] bool isAutomatic() const { return m_code.empty(); }

    /// Lower-case ISO 639 code, empty when automatic.
    [[nodiscard]] const std::string& code() const { return m_code; }

    bool operator==(const Language&) const = default;

private:
    explicit Language(std::string code)
        : m_code(std::move(code)) {}

    std::string m_code;
};

} // namespace velmora::server
