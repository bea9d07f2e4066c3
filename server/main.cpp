#include "app/descriptor_limit.h"
#include "app/log.h"
#include "app/server.h"
#include "speech/decoder_child.h"
#include "speech/recogniser.h"

#include <Poco/Exception.h>
#include <sys/stat.h>

#include <csignal>
#include <cstdlib>
#include <iostream>

namespace {

constexpr int badOptions = 2;

int serve(const velmora::server::ServerOptions& options) {
    // Before any thread is made, so that all of them leave these signals to sigwait below.
    sigset_t endSignals;
    sigemptyset(&endSignals);
    sigaddset(&endSignals, SIGTERM);
    sigaddset(&endSignals, SIGINT);
    pthread_sigmask(SIG_BLOCK, &endSignals, nullptr);
    std::signal(SIGPIPE, SIG_IGN);
    // Whatever it writes is its owner's alone.
    umask(S_IRWXG | S_IRWXO);
    velmora::server::raiseDescriptorLimit();

    const velmora::server::Server server(options, velmora::server::makeRecogniser(options));
    std::cout << "velmora-server listens on http://" << server.address() << '\n' << std::flush;
    int signal = 0;
    sigwait(&endSignals, &signal);
    return EXIT_SUCCESS;
}

} // namespace

int main(int argc, char** argv) {
    velmora::server::runDecoderChild(argc, argv);
    using velmora::server::ServerOptions;
    try {
        const auto options = ServerOptions::parse({argv + 1, argv + argc});
        switch (options.action) {
        case ServerOptions::Action::ShowHelp:
            std::cout << ServerOptions::help();
            return EXIT_SUCCESS;
        case ServerOptions::Action::ShowVersion:
            std::cout << "velmora-server " << velmora::server::version() << '\n';
            return EXIT_SUCCESS;
        case ServerOptions::Action::Serve:
            return serve(options);
        }
    } catch (const velmora::server::OptionError& error) {
        velmora::server::log(error.what());
        std::cerr << "Try velmora-server --help.\n";
        return badOptions;
    } catch (const Poco::Exception& error) {
        velmora::server::log(error.displayText());
    } catch (const std::exception& error) {
        velmora::server::log(error.what());
    }
    return EXIT_FAILURE;
}
