#include "e2e/session/tutorials.h"

#include "e2e/session/dictation_session.h"
#include "e2e/session/user_hand.h"

namespace velmora::test {
namespace {

/// Waits until the field holds the session's dictation of that number, and that is what was said.
bool wasDictatedInto(const DictationSession& session, const QString& field, std::size_t number) {
    const std::optional<HistoryItem> item = session.dictation(number);
    return item && 2 * DictationSession::wordsHeard(item->cleanedText) >= DictationSession::wordsSpoken &&
           holds(field, item->cleanedText);
}

} // namespace

bool dictatesInBothTutorials(DictationSession& session, const std::function<void()>& goOn) {
    const QString first = QStringLiteral("Текст появится здесь после диктовки…");
    if (!shows(first))
        return false;
    session.dictateHolding();
    if (!wasDictatedInto(session, first, 1))
        return false;
    goOn();

    const QString second = QStringLiteral("Текст появится здесь…");
    if (!shows(second) || !DictationSession::isQuiet())
        return false;
    session.keyboard().tap(key::rightControl);
    session.keyboard().tap(key::rightControl);
    if (!DictationSession::isRecording())
        return false;
    session.speak();
    session.keyboard().tap(key::rightControl);
    return wasDictatedInto(session, second, 2);
}

} // namespace velmora::test
