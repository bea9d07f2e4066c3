#pragma once

#include <cstdint>

namespace velmora::server {

/// The argument that makes a program of this library the child that decodes.
inline constexpr auto decodeArgument = "--decode-sound";

/// How the child ends, unless a signal ends it.
enum class DecoderExit : std::uint8_t { Done, NoSound, NotConfined };

/// To be called first thing in main(): if this process was started as the child that decodes, does that and
/// ends it.
void runDecoderChild(int argc, char** argv);

} // namespace velmora::server
