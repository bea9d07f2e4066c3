#pragma once

#include "speech/dictation_event.h"
#include "speech/dictation_line.h"
#include "speech/language.h"

#include <chrono>
#include <functional>
#include <stop_token>

namespace velmora::server {

class AudioDecoder;
class Recogniser;

/// One recording on its way to text.
class Dictation {
public:
    struct Settings {
        Language language;
        bool clean = true;
        /// Write technical terms as developers do.
        bool spellTerms = false;
        std::chrono::milliseconds longest{};
        /// Who hasn't had a turn by then need not have one any more.
        DictationLine::Time latestBegin = DictationLine::Time::max();
    };
    using Sink = std::function<void(DictationEvent)>;

    Dictation(AudioDecoder& audio, Recogniser& recogniser, DictationLine::Place& place, Settings settings);

    /// Gives events to `sink` on this thread; the last is DictationDone or DictationFailed, unless a stop is
    /// requested. What it has given as text once it never takes back: the pieces are the beginning of the
    /// final text.
    void run(const Sink& sink, const std::stop_token& stop);

private:
    [[nodiscard]] DictationEvent transcribe(const Sink& sink, const std::stop_token& stop);

    AudioDecoder& m_audio;
    Recogniser& m_recogniser;
    DictationLine::Place& m_place;
    Settings m_settings;
};

} // namespace velmora::server
