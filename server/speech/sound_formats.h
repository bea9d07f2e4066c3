#pragma once

struct AVCodecContext;
struct AVFormatContext;

namespace velmora::server {

/// Lets a container be opened only if it is one that holds its sound itself, look into sound alone, and open
/// nothing else by a name.
void acceptSoundAlone(AVFormatContext& format);

/// Lets a codec be opened only if it is one of sound, and frames be of a bounded size.
void acceptSoundAlone(AVCodecContext& codec);

} // namespace velmora::server
