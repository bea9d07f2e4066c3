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
#include "http/connection_watch.h"
#include "http/dispatcher.h"
#include "http/host_policy.h"
#include "http/http_connection_factory.h"
#include "http/router.h"
#include "pages/document_pages.h"
#include "speech/pocketsphinx_recogniser.h"

#include <Poco/Net/ServerSocket.h>
#include <Poco/Net/TCPServer.h>
#include <Poco/ThreadPool.h>
#include <sodium.h>

#include <condition_variable>
#include <mutex>

namespace velmora::server {

namespace {

/// A connection has a thread of its own; so this is also how many there can be.
constexpr int maximalThreads = 128;
constexpr int maximalQueue = 128;
constexpr int backlog = 64;
constexpr std::chrono::seconds headerTime{10};
/// Between two reads of a request.
constexpr int readTimeoutSeconds = 20;

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

Poco::Net::HTTPServerParams::Ptr parameters() {
    Poco::Net::HTTPServerParams::Ptr parameters(new Poco::Net::HTTPServerParams);
    parameters->setMaxThreads(maximalThreads);
    parameters->setMaxQueued(maximalQueue);
    parameters->setTimeout(Poco::Timespan(readTimeoutSeconds, 0));
    // A kept connection would keep its thread; and a client can't mistake its end for a lost request.
    parameters->setKeepAlive(false);
    return parameters;
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
        const auto tcpParameters = parameters();
        const Poco::Net::HTTPRequestHandlerFactory::Ptr dispatcher(
            new Dispatcher(router, hosts, tokens, sessions, accounts, watch));
        server = std::make_unique<Poco::Net::TCPServer>(
            new HttpConnectionFactory(watch, headerTime, tcpParameters, dispatcher), threads, socket,
            tcpParameters);
        server->start();
    }

    ~State() {
        stop.request_stop();
        server->stop();
        watch.cutAll();
        server.reset();
        threads.joinAll();
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
    ConnectionWatch watch;
    Poco::ThreadPool threads{2, maximalThreads};
    Poco::Net::ServerSocket socket;
    std::unique_ptr<Poco::Net::TCPServer> server;
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
