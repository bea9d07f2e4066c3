#pragma once

#include <sys/types.h>

#include <chrono>
#include <optional>

namespace velmora::server {

/// The child that decodes: this same program, started again with the file as its input. It lives no longer
/// than this object, nor than the thread that made it.
class DecoderProcess {
public:
    /// Fails with std::system_error.
    explicit DecoderProcess(int descriptor);
    ~DecoderProcess();
    DecoderProcess(const DecoderProcess&) = delete;
    DecoderProcess& operator=(const DecoderProcess&) = delete;

    /// Whether there is something to read, or the end, within that time.
    [[nodiscard]] bool wait(std::chrono::milliseconds time) const;

    /// Where its slices of sound come from.
    [[nodiscard]] int output() const { return m_output; }

    /// Lets it use so much processor time in all.
    void allow(std::chrono::seconds processorTime) const;

    /// May be called while another thread reads, which then sees the end.
    void kill() const;

    /// Ends it, if it hasn't ended by itself, and says how that was as waitpid(2) has it; once, and while
    /// nobody reads.
    std::optional<int> end();

private:
    pid_t m_child = 0;
    int m_output = -1;
};

} // namespace velmora::server
