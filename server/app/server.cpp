#include "app/server.h"

#include "accounts/access_tokens.h"
#include "accounts/account_store.h"
#include "accounts/database.h"
#include "accounts/form_tokens.h"
#include "accounts/local_user.h"
#include "accounts/password_hasher.h"
#include "accounts/session_store.h"
#include "accounts/sign_in_service.h"
#include "accounts/signing_key.h"
#include "app/descriptor_limit.h"
#include "handlers/account_handler.h"
#include "handlers/account_page_handler.h"
#include "handlers/dictate_handler.h"
#include "handlers/document_handler.h"
#include "handlers/logout_handler.h"
#include "handlers/me_handler.h"
#include "handlers/patch_preferences_handler.h"
#include "handlers/preferences_handler.h"
#include "handlers/redirect_handler.h"
#include "handlers/refresh_handler.h"
#include "handlers/sign_in_handler.h"
#include "handlers/sign_in_page_handler.h"
#include "http/dispatcher.h"
#include "http/host_policy.h"
#include "http/reception.h"
#include "http/router.h"
#include "pages/document_pages.h"
#include "speech/pocketsphinx_recogniser.h"

#include <Poco/Net/ServerSocket.h>
#include <sodium.h>

#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <optional>

namespace velmora::server {

namespace {

/// Connections that the system takes until the reception does.
constexpr int backlog = 1024;

std::filesystem::path privateFolder(const std::filesystem::path& folder) {
    // One that was there before is left as its owner made it.
    if (std::filesystem::create_directories(folder)) {
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all);
    }
    return folder;
}

/// Russian where the recogniser knows it, for the client's defaults are Russian; else its own choice.
std::string initialLanguage(const ServerOptions& options, const Recogniser& recogniser) {
    const auto knows = [&](const std::string& name) {
        return recogniser.resolve(Language::fromPreference(name).value()).has_value();
    };
    if (!options.language) {
        return knows("ru") ? "ru" : "auto";
    }
    if (!knows(*options.language)) {
        throw std::runtime_error("the recogniser doesn't know the language " + *options.language);
    }
    return *options.language;
}

Poco::Net::ServerSocket listenOn(const std::string& text) {
    try {
        const Poco::Net::SocketAddress address(text);
        Poco::Net::ServerSocket socket;
        // Sharing the port with another server would split the requests between the two.
        socket.bind(address, true, false);
        socket.listen(backlog);
        return socket;
    } catch (const Poco::Exception& error) {
        throw std::runtime_error("cannot listen on " + text + ": " + error.displayText());
    }
}

/// No more than there are descriptors for.
HttpLimits fitted(HttpLimits limits) {
    // Files of the database, the log, libraries, and what is open for a moment only.
    constexpr std::size_t own = 128;
    // The upload, the decoder's sound, and the connection to the recogniser's service.
    constexpr std::size_t ofStream = 3;
    const auto free = std::max(descriptorLimit(), own + 8) - own;
    limits.streams = std::min(limits.streams, free / 8);
    limits.connections = std::min(limits.connections, free - limits.streams * ofStream);
    return limits;
}

} // namespace

struct Server::State {
    State(const ServerOptions& options, std::unique_ptr<Recogniser> theRecogniser)
        : recogniser(std::move(theRecogniser))
        , data(privateFolder(options.data))
        , key(data / "signing-key")
        , database(data / "velmora.sqlite")
        , accounts(database, initialLanguage(options, *recogniser), clock)
        , sessions(database, clock)
        , tokens(key.derive(SigningKey::Purpose::AccessTokens), clock)
        , formTokens(key.derive(SigningKey::Purpose::FormTokens), clock)
        , signIn(accounts, hasher, steadyClock, [this](auto time) { pause(time); })
        , accountForms(key.derive(SigningKey::Purpose::AccountForms), clock)
        , localUser(options.localUser ? std::optional(LocalUser::current()) : std::nullopt)
        , hosts(options.hosts)
        , socket(listenOn(options.listen)) {
        addRoutes(options);
        const auto limits = fitted(options.http);
        dispatcher.emplace(router, hosts, tokens, sessions, accounts, limits.bodySize);
        reception.emplace(socket, limits, *dispatcher);
    }

    ~State() {
        stop.request_stop();
        reception.reset();
    }

    State(const State&) = delete;
    State& operator=(const State&) = delete;

    void addRoutes(const ServerOptions& options) {
        const auto tempFolder = privateFolder(data / "tmp");
        router.add("GET", "/auth", Access::Public,
                   std::make_unique<SignInPageHandler>(formTokens, localUser));
        router.add("POST", "/auth", Access::Public,
                   std::make_unique<SignInHandler>(signIn, sessions, tokens, formTokens, localUser));
        router.add("GET", "/", Access::Public, std::make_unique<RedirectHandler>("/account"));
        router.add("GET", "/account", Access::Public,
                   std::make_unique<AccountPageHandler>(accountForms, localUser));
        router.add("POST", "/account", Access::Public,
                   std::make_unique<AccountHandler>(signIn, accounts, sessions, accountForms, localUser));
        router.add("GET", "/news", Access::Public, std::make_unique<DocumentHandler>(newsPage));
        router.add("GET", "/legal/license", Access::Public, std::make_unique<DocumentHandler>(licensePage));
        router.add("GET", "/v1/auth/me", Access::SignedIn, std::make_unique<MeHandler>(accounts));
        router.add("POST", "/v1/auth/refresh", Access::Public,
                   std::make_unique<RefreshHandler>(sessions, tokens));
        router.add("POST", "/v1/auth/logout", Access::SignedIn, std::make_unique<LogoutHandler>(sessions));
        router.add("GET", "/v1/me/preferences", Access::SignedIn,
                   std::make_unique<PreferencesHandler>(accounts));
        router.add("PATCH", "/v1/me/preferences", Access::SignedIn,
                   std::make_unique<PatchPreferencesHandler>(accounts));
        router.add("POST", "/v1/dictate", Access::SignedIn,
                   std::make_unique<DictateHandler>(accounts, *recogniser, options.limits, tempFolder,
                                                    stop.get_token()));
    }

    /// Lets time pass, unless the server stops meanwhile.
    void pause(std::chrono::milliseconds time) const {
        std::mutex mutex;
        std::unique_lock lock(mutex);
        std::condition_variable_any().wait_for(lock, stop.get_token(), time, [] { return false; });
    }

    Clock clock = std::chrono::system_clock::now;
    SteadyClock steadyClock = std::chrono::steady_clock::now;
    std::stop_source stop;
    std::unique_ptr<Recogniser> recogniser;
    std::filesystem::path data;
    SigningKey key;
    Database database;
    AccountStore accounts;
    SessionStore sessions;
    AccessTokens tokens;
    FormTokens formTokens;
    PasswordHasher hasher;
    SignInService signIn;
    FormTokens accountForms;
    LocalUserOffer localUser;
    HostPolicy hosts;
    Router router;
    std::optional<Dispatcher> dispatcher;
    Poco::Net::ServerSocket socket;
    std::optional<Reception> reception;
};

Server::Server(const ServerOptions& options, std::unique_ptr<Recogniser> recogniser) {
    if (sodium_init() < 0) {
        throw std::runtime_error("libsodium cannot be used");
    }
    m_state = std::make_unique<State>(options, std::move(recogniser));
}

Server::~Server() = default;

std::string Server::address() const {
    return m_state->socket.address().toString();
}

std::unique_ptr<Recogniser> makeRecogniser(const ServerOptions& options) {
    if (options.openAi) {
        return std::make_unique<OpenAiRecogniser>(*options.openAi);
    }
    return std::make_unique<PocketsphinxRecogniser>();
}

} // namespace velmora::server
