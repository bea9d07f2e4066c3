#pragma once

#include "e2e/session/program.h"
#include "scripted_server.h"

#include <QTemporaryDir>

namespace velmora::bench {

/// The program as a user runs it, signed in to a backend on a loopback port, with a home folder of its own.
class RunningProgram {
public:
    /// Starts it with this many dictations in the history and these user defaults, and waits until its hotkey
    /// works and what it does after its start is over.
    explicit RunningProgram(int historyItems = 0, const QByteArray& defaults = "{}");

    [[nodiscard]] qint64 pid() const { return m_program->pid(); }
    [[nodiscard]] QString defaultsPath() const;
    [[nodiscard]] ScriptedServer& server() { return m_server; }
    /// What a second start of it does.
    static void startAgain();

private:
    [[nodiscard]] QString configFolder() const;

    ScriptedServer m_server;
    QTemporaryDir m_home;
    std::unique_ptr<test::Program> m_program;
};

} // namespace velmora::bench
