#include "paste_stream.h"

#include "support/desktop/wait_until.h"

#include <QHash>

using namespace std::chrono_literals;
using velmora::test::waitUntil;

namespace velmora::bench {
namespace {

constexpr int piecesOfAStream = 100;
const QString before = QStringLiteral("прежнее");

QString pieceOf(int number) {
    return QStringLiteral("раз%1 ").arg(number);
}

} // namespace

PasteStream::PasteStream(test::TargetApplication& target, MainLoop::Duration interval)
    : m_target(target)
    , m_interval(interval) {
    m_queue->onUndelivered([this](const QString& text) { m_undelivered << text; });
    m_queue->setString(before);
    waitUntil([this] { return m_reader.read("CLIPBOARD") == before; }, 30s);
}

Fate PasteStream::run(int pieces) {
    Fate fate;
    fate.pieces = pieces;
    for (int first = 1; first <= pieces; first += piecesOfAStream)
        dictate(first, std::min(piecesOfAStream, pieces - first + 1), fate);
    judge(fate);
    return fate;
}

void PasteStream::dictate(int first, int count, Fate& fate) {
    m_queue->beginText();
    const auto saved = m_queue->save();
    int given = 0;
    Clock::time_point end;
    const Timer pace = m_loop.every(m_interval, [&] {
        if (given == count)
            return;
        const QString piece = pieceOf(first + given);
        m_queue->clearContents();
        m_queue->setString(piece);
        m_queue->postPasteChord();
        m_all += piece;
        end = Clock::now();
        ++given;
    });
    waitUntil([&] { return given == count; }, 600s);
    m_queue->putBack(saved);
    waitUntil([&] { return m_reader.read("CLIPBOARD") == before; }, 60s);
    fate.clipboardBack.add(milliseconds(end, Clock::now()));
}

void PasteStream::judge(Fate& fate) {
    const auto piecesOf = [](const QString& text) {
        // Some editors end a file with a line break of their own.
        return text.simplified().split(QLatin1Char(' '), Qt::SkipEmptyParts);
    };
    const QStringList arrived = piecesOf(m_target.document(m_all));
    const QStringList undelivered = piecesOf(m_undelivered.join(QString()));
    fate.undelivered = static_cast<int>(undelivered.size());
    QHash<QString, int> times;
    for (const QString& piece : arrived)
        ++times[piece];
    for (int number = 1; number <= fate.pieces; ++number) {
        const QString piece = pieceOf(number).trimmed();
        const int count = times.value(piece);
        if (count == 0 && !undelivered.contains(piece))
            ++fate.lost;
        fate.doubled += std::max(0, count - 1);
    }
    int last = 0;
    for (const QString& piece : arrived) {
        const int number = piece.mid(3).toInt();
        if (number < last)
            ++fate.outOfOrder;
        last = number;
    }
}

} // namespace velmora::bench
