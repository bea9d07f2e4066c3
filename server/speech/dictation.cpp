#include "speech/dictation.h"

#include "app/log.h"
#include "speech/audio_decoder.h"
#include "speech/pause_cutter.h"
#include "speech/recogniser.h"
#include "speech/sample_rate.h"
#include "speech/technical_terms.h"
#include "speech/text_cleaner.h"

#include <iterator>
#include <sstream>

namespace velmora::server {

namespace {

int countWords(const std::string& text) {
    std::istringstream stream(text);
    return static_cast<int>(
        std::distance(std::istream_iterator<std::string>(stream), std::istream_iterator<std::string>()));
}

/// As it was recognised, apart from blanks.
std::string trimmed(const std::string& phrase) {
    std::string text;
    std::istringstream stream(phrase);
    for (std::string word; stream >> word;) {
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

RecogniserError busy() {
    return {"busy", "Сервер занят другими диктовками. Попробуйте ещё раз через минуту"};
}

} // namespace

Dictation::Dictation(AudioDecoder& audio, Recogniser& recogniser, DictationLine::Place& place,
                     Settings settings)
    : m_audio(audio)
    , m_recogniser(recogniser)
    , m_place(place)
    , m_settings(std::move(settings)) {}

void Dictation::run(const Sink& sink, const std::stop_token& stop) {
    try {
        auto last = transcribe(sink, stop);
        if (!stop.stop_requested()) {
            sink(std::move(last));
        }
    } catch (const RecogniserError& error) {
        sink(DictationFailed{error.code(), error.what()});
    } catch (const AudioError&) {
        sink(DictationFailed{"bad_audio", "Не удалось прочитать запись"});
    } catch (const std::exception& error) {
        log(std::string("dictation failed: ") + error.what());
        sink(DictationFailed{"internal_error", "Внутренняя ошибка сервера"});
    }
}

DictationEvent Dictation::transcribe(const Sink& sink, const std::stop_token& stop) {
    const auto language = m_recogniser.resolve(m_settings.language);
    if (!language) {
        return DictationFailed{
            "language_not_supported",
            "Сервер не знает этого языка. Выберите «English» или «Авто» в настройках: «Обработка», "
            "«Язык транскрипции». Или подключите к серверу распознаватель, который знает этот язык "
            "(--recogniser openai=…)."};
    }
    sink(DictationStage{"transcribing"});
    const auto recognition =
        m_recogniser.begin({.language = *language,
                            .vocabulary = m_settings.spellTerms ? technicalTermExamples() : std::string()});
    TextCleaner cleaner(*language);
    std::string text;
    PauseCutter cutter(m_recogniser.pieceLimits());
    auto latestTurn = m_settings.latestBegin;
    const auto wordsOf = [&](const PauseCutter::Piece& piece) {
        const auto turn = m_place.turn(durationOf(piece.size()), stop, latestTurn);
        if (!turn && !stop.stop_requested()) {
            throw busy();
        }
        latestTurn = DictationLine::Time::max();
        return turn ? recognition->recognise(piece, stop) : std::string();
    };
    const auto recognisePieces = [&] {
        for (auto piece = cutter.next(); piece && !stop.stop_requested(); piece = cutter.next()) {
            const auto words = wordsOf(*piece);
            auto phrase = m_settings.clean ? cleaner.clean(words) : trimmed(words);
            if (m_settings.spellTerms) {
                phrase = spellTechnicalTerms(phrase);
            }
            if (!phrase.empty() && !stop.stop_requested()) {
                const auto delta = (text.empty() ? "" : " ") + phrase;
                text += delta;
                sink(DictationText{delta});
            }
        }
    };

    std::size_t heard = 0;
    for (auto samples = m_audio.read(stop); !samples.empty() && !stop.stop_requested();
         samples = m_audio.read(stop)) {
        heard += samples.size();
        if (heard > samplesIn(m_settings.longest)) {
            return DictationFailed{"too_long", "Запись слишком длинная"};
        }
        cutter.push(samples, stop);
        recognisePieces();
    }
    cutter.finish();
    recognisePieces();
    if (stop.stop_requested()) {
        return {};
    }

    if (m_settings.clean) {
        sink(DictationStage{"cleaning"});
        text += cleaner.ending();
    }
    return DictationDone{text, countWords(text)};
}

} // namespace velmora::server
