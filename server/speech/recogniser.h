#pragma once

#include "speech/language.h"
#include "speech/pause_cutter.h"

#include <memory>
#include <span>
#include <stdexcept>
#include <stop_token>
#include <string>

namespace velmora::server {

/// A recognition that failed: a code, and a Russian sentence for the user.
class RecogniserError : public std::runtime_error {
public:
    RecogniserError(std::string code, const std::string& message)
        : std::runtime_error(message)
        , m_code(std::move(code)) {}

    [[nodiscard]] const std::string& code() const { return m_code; }

private:
    std::string m_code;
};

/// What a recogniser should expect to hear.
struct Expectation {
    /// A resolved one.
    Language language;
    /// Words as they are written, for one that takes advice; empty for none.
    std::string vocabulary;
};

/// The pieces of one dictation, one behind the other.
class Recognition {
public:
    virtual ~Recognition() = default;

    /// The words of one piece of 16 kHz mono sound, UTF-8, empty for silence. Fails with RecogniserError.
    /// When a stop is requested it returns early with whatever.
    [[nodiscard]] virtual std::string recognise(std::span<const std::int16_t> samples,
                                                const std::stop_token& stop) = 0;
};

/// What turns speech into words. Used by many threads at once.
class Recogniser {
public:
    virtual ~Recogniser() = default;

    /// The language that will be recognised when this one is asked for; empty if it can't be.
    [[nodiscard]] virtual std::optional<Language> resolve(const Language& wanted) const = 0;

    /// The pieces it likes best.
    [[nodiscard]] virtual PieceLimits pieceLimits() const = 0;

    /// How many pieces it is to be given at a time.
    [[nodiscard]] virtual unsigned atOnce() const = 0;

    /// Holds nothing yet that others may wait for: only recognise() does, and only while it runs.
    [[nodiscard]] virtual std::unique_ptr<Recognition> begin(const Expectation& expectation) = 0;
};

} // namespace velmora::server
