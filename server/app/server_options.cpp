#include "app/server_options.h"

#include <Poco/Exception.h>
#include <Poco/Net/SocketAddress.h>
#include <Poco/NumberParser.h>
#include <Poco/String.h>
#include <Poco/StringTokenizer.h>

#include <cstdlib>
#include <fstream>
#include <string_view>

namespace velmora::server {

namespace {

std::filesystem::path defaultData() {
    if (const char* folder = std::getenv("XDG_DATA_HOME"); folder && *folder == '/') {
        return std::filesystem::path(folder) / "velmora-server";
    }
    if (const char* home = std::getenv("HOME"); home && *home) {
        return std::filesystem::path(home) / ".local/share/velmora-server";
    }
    throw OptionError("--data is needed where there is no home directory");
}

std::string readKey(const std::string& file) {
    std::ifstream stream(file);
    std::string key;
    if (!std::getline(stream, key) || Poco::trim(key).empty()) {
        throw OptionError("--recogniser: no key in file " + file);
    }
    return Poco::trim(key);
}

unsigned parsePositive(const std::string& option, const std::string& text) {
    unsigned number = 0;
    if (!Poco::NumberParser::tryParseUnsigned(text, number) || number == 0 || number > 1'000'000) {
        throw OptionError(option + ": not a positive number: " + text);
    }
    return number;
}

/// "URL[,model=…][,key-file=…][,connections=…]"
OpenAiRecogniser::Settings parseOpenAi(const std::string& text) {
    const Poco::StringTokenizer parts(text, ",");
    OpenAiRecogniser::Settings settings;
    if (parts.count() > 0) {
        settings.url = parts[0];
    }
    for (std::size_t i = 1; i < parts.count(); ++i) {
        const auto& part = parts[i];
        if (part.starts_with("model=") && part.size() > 6) {
            settings.model = part.substr(6);
        } else if (part.starts_with("key-file=")) {
            settings.key = readKey(part.substr(9));
        } else if (part.starts_with("connections=")) {
            settings.connections = parsePositive("--recogniser: connections", part.substr(12));
        } else {
            throw OptionError("--recogniser: unknown part " + part);
        }
    }
    try {
        const OpenAiRecogniser check(settings);
    } catch (const std::runtime_error& error) {
        throw OptionError(std::string("--recogniser: ") + error.what());
    }
    return settings;
}

Poco::Net::SocketAddress parseAddress(const std::string& text) {
    try {
        return Poco::Net::SocketAddress(text);
    } catch (const Poco::Exception&) {
        throw OptionError("--listen: not an address with a port: " + text);
    }
}

/// Walks over "--name value" and "--name=value".
class Arguments {
public:
    explicit Arguments(const std::vector<std::string>& arguments)
        : m_arguments(arguments) {}

    bool next() {
        if (m_next >= m_arguments.size()) {
            return false;
        }
        const auto& argument = m_arguments[m_next++];
        const auto equals = argument.find('=');
        m_name = argument.substr(0, equals);
        m_value = equals == std::string::npos ? std::nullopt : std::optional(argument.substr(equals + 1));
        return true;
    }

    [[nodiscard]] const std::string& name() const { return m_name; }

    [[nodiscard]] std::string value() {
        if (!m_value && m_next < m_arguments.size()) {
            m_value = m_arguments[m_next++];
        }
        if (!m_value || m_value->empty()) {
            throw OptionError(m_name + " needs a value");
        }
        return *m_value;
    }

    void noValue() const {
        if (m_value) {
            throw OptionError(m_name + " takes no value");
        }
    }

private:
    const std::vector<std::string>& m_arguments;
    std::size_t m_next = 0;
    std::string m_name;
    std::optional<std::string> m_value;
};

void parseRecogniser(const std::string& text, ServerOptions& options) {
    constexpr std::string_view openAi = "openai=";
    if (text == "pocketsphinx") {
        options.openAi.reset();
    } else if (text.starts_with(openAi)) {
        options.openAi = parseOpenAi(text.substr(openAi.size()));
    } else {
        throw OptionError("--recogniser: neither pocketsphinx nor openai=URL: " + text);
    }
}

void parseOne(Arguments& arguments, ServerOptions& options) {
    const auto& name = arguments.name();
    if (name == "--help" || name == "-h" || name == "--version") {
        arguments.noValue();
        options.action =
            name == "--version" ? ServerOptions::Action::ShowVersion : ServerOptions::Action::ShowHelp;
    } else if (name == "--listen") {
        options.listen = arguments.value();
    } else if (name == "--data") {
        options.data = arguments.value();
    } else if (name == "--recogniser") {
        parseRecogniser(arguments.value(), options);
    } else if (name == "--language") {
        options.language = arguments.value();
        if (!Language::fromPreference(*options.language)) {
            throw OptionError("--language: neither auto nor a language code: " + *options.language);
        }
    } else if (name == "--host") {
        options.hosts.push_back(arguments.value());
    } else if (name == "--local-user") {
        arguments.noValue();
        options.localUser = true;
    } else if (name == "--max-upload") {
        options.limits.bytes = parsePositive(name, arguments.value()) * 1024ULL * 1024;
    } else if (name == "--max-duration") {
        options.limits.duration = std::chrono::minutes(parsePositive(name, arguments.value()));
    } else {
        throw OptionError("unknown option " + name);
    }
}

} // namespace

ServerOptions ServerOptions::parse(const std::vector<std::string>& arguments) {
    ServerOptions options;
    for (Arguments rest(arguments); rest.next();) {
        parseOne(rest, options);
    }
    if (options.action != Action::Serve) {
        return options;
    }
    const auto address = parseAddress(options.listen);
    if (options.localUser && !address.host().isLoopback()) {
        throw OptionError("--local-user works only with a loopback address, such as 127.0.0.1");
    }
    // Behind a proxy of the same user everybody would be that user.
    if (options.localUser && !options.hosts.empty()) {
        throw OptionError("--local-user and --host exclude each other");
    }
    if (options.data.empty()) {
        options.data = defaultData();
    }
    return options;
}

std::string ServerOptions::help() {
    return R"(Usage: velmora-server [options]

The backend of Velmora on one port: sign-in, preferences and dictation.

  --listen ADDRESS:PORT    where to listen, by default 127.0.0.1:8791; port 0 takes a free one
  --data FOLDER            accounts and keys, by default $XDG_DATA_HOME/velmora-server
  --recogniser pocketsphinx
                           recognise English on this machine; the default
  --recogniser openai=URL[,model=NAME][,key-file=FILE][,connections=N]
                           recognise through a server with an OpenAI-style transcription endpoint
  --language LANGUAGE      language of new accounts: auto, or a code such as ru or en;
                           by default ru where the recogniser knows it, else auto
  --local-user             let the user this server runs as in with one click (loopback only, not with --host)
  --host NAME              answer under this host name too; may be given several times
  --max-upload MIB         largest request, by default 64
  --max-duration MINUTES   longest recording, by default 30
  --help, --version
)";
}

std::string version() {
    return VELMORA_VERSION;
}

} // namespace velmora::server
