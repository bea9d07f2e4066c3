#pragma once

namespace velmora {

class PulseConnection;

/// Whether what other programs play can be recorded: opens a recording of the default output for a moment.
/// Waits for the server, so not for the main thread.
[[nodiscard]] bool canRecordOutput(PulseConnection& connection);

} // namespace velmora
