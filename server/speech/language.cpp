#include "speech/language.h"

#include <Poco/RegularExpression.h>
#include <Poco/String.h>

#include <map>

namespace velmora::server {

std::optional<Language> Language::fromPreference(const std::string& value) {
    static const std::map<std::string, std::string> names{
        {"English", "en"}, {"Russian", "ru"}, {"Русский", "ru"}};
    if (value == "auto") {
        return Language();
    }
    if (const auto found = names.find(value); found != names.end()) {
        return Language(found->second);
    }
    static const Poco::RegularExpression code("^[A-Za-z]{2,3}(-[A-Za-z0-9]{2,8})?$");
    if (!code.match(value)) {
        return std::nullopt;
    }
    return Language(Poco::toLower(value.substr(0, value.find('-'))));
}

} // namespace velmora::server
