#pragma once

#include <QMetaType>
#include <QString>

#include <variant>

namespace velmora {

/// Where a dictation stands.
namespace pipeline_state {

struct Idle {
    bool operator==(const Idle&) const = default;
};
/// The microphone is on, also during the tail after stop.
struct Recording {
    double elapsed = 0; ///< seconds
    bool operator==(const Recording&) const = default;
};
/// The recording is sent, no recognised text yet.
struct Transcribing {
    bool operator==(const Transcribing&) const = default;
};
/// Text is arriving, or the server says that it is cleaning.
struct Cleaning {
    bool operator==(const Cleaning&) const = default;
};
struct Error {
    QString message; ///< for the user
    bool operator==(const Error&) const = default;
};
/// Kept for live streaming of audio, which nothing starts in this version.
struct StreamingRecording {
    double elapsed = 0;
    QString latestPartial;
    QString accumulated;
    bool operator==(const StreamingRecording&) const = default;
};
/// As StreamingRecording.
struct StreamingCleanup {
    QString accumulated;
    bool operator==(const StreamingCleanup&) const = default;
};

} // namespace pipeline_state

using PipelineState =
    std::variant<pipeline_state::Idle, pipeline_state::Recording, pipeline_state::Transcribing,
                 pipeline_state::Cleaning, pipeline_state::Error, pipeline_state::StreamingRecording,
                 pipeline_state::StreamingCleanup>;

} // namespace velmora

Q_DECLARE_METATYPE(velmora::PipelineState)
