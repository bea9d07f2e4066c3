#include "quit_on_signals.h"

#include <QCoreApplication>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <csignal>

namespace velmora {
namespace {

std::array<int, 2> wakePipe{-1, -1};

void onSignal(int) {
    const int interrupted = errno;
    const char byte = 0;
    [[maybe_unused]] const auto written = write(wakePipe[1], &byte, 1);
    errno = interrupted;
}

// A handler and a pipe, not a blocked mask and a descriptor: a mask would be inherited by the browser that we
// start.
int openPipe() {
    if (pipe2(wakePipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        qFatal("no pipe for signals");
    struct sigaction action {};
    action.sa_handler = onSignal;
    action.sa_flags = SA_RESTART;
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaction(signal, &action, nullptr);
    return wakePipe[0];
}

} // namespace

QuitOnSignals::QuitOnSignals()
    : m_notifier(openPipe(), QSocketNotifier::Read) {
    connect(&m_notifier, &QSocketNotifier::activated, qApp, &QCoreApplication::quit);
}

} // namespace velmora
