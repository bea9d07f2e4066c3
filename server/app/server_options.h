#pragma once

#include "handlers/dictate_handler.h"
#include "http/http_limits.h"
#include "speech/openai_recogniser.h"

#include <filesystem>
#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

namespace velmora::server {

/// Options that can't be used; the text says which and why.
class OptionError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// What the command line asks for.
struct ServerOptions {
    enum class Action { Serve, ShowHelp, ShowVersion };

    Action action = Action::Serve;
    std::string listen = "127.0.0.1:8791";
    std::filesystem::path data;
    /// Without these settings pocketsphinx recognises.
    std::optional<OpenAiRecogniser::Settings> openAi;
    /// What a new account's language begins with; by default Russian where the recogniser knows it.
    std::optional<std::string> language;
    /// Host names that requests may name besides "localhost" and addresses.
    std::vector<std::string> hosts;
    /// Lets the machine's own user in with one click.
    bool localUser = false;
    DictationLimits limits;
    HttpLimits http;

    /// Fails with OptionError.
    [[nodiscard]] static ServerOptions parse(const std::vector<std::string>& arguments);

    [[nodiscard]] static std::string help();
};

[[nodiscard]] std::string version();

} // namespace velmora::server
