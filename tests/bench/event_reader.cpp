#include "backend/sse_reader.h"
#include "figures.h"

#include <cstring>

namespace velmora::bench {
namespace {

constexpr int runs = 20;
constexpr qsizetype size = 10 << 20;
constexpr qsizetype pieceSize = 16 << 10; // what Qt hands over at a time

QByteArray makeReply(qsizetype bytes) {
    QByteArray reply;
    reply.reserve(bytes + 100);
    for (int i = 0; reply.size() < bytes; ++i)
        reply += "event: chunk\ndata: {\"delta\":\"word " + QByteArray::number(i) + " \"}\n\n";
    return reply;
}

qsizetype readEvents(const QByteArray& reply) {
    SseReader reader;
    qsizetype events = 0;
    for (qsizetype at = 0; at < reply.size(); at += pieceSize) {
        const QByteArrayView piece = QByteArrayView(reply).sliced(at, std::min(pieceSize, reply.size() - at));
        events += qsizetype(reader.feed(piece).size());
    }
    return events;
}

// The least that finds the events: one pass from line feed to line feed.
qsizetype findBlocks(const QByteArray& reply) {
    qsizetype blocks = 0;
    const char* at = reply.constData();
    const char* const end = at + reply.size();
    while (const auto* feed = static_cast<const char*>(std::memchr(at, '\n', std::size_t(end - at)))) {
        blocks += feed == at ? 1 : 0; // an empty line ends a block
        at = feed + 1;
    }
    return blocks;
}

/// The time of one pass in milliseconds.
double timed(qsizetype (*pass)(const QByteArray&), const QByteArray& reply) {
    const auto start = Clock::now();
    const qsizetype found = pass(reply);
    const auto end = Clock::now();
    if (found != reply.count("\n\n"))
        throw NotMeasured(QStringLiteral("%1 of %2 events found").arg(found).arg(reply.count("\n\n")));
    return milliseconds(start, end);
}

} // namespace

std::vector<Result> measureEventReader(DictationRuns&) {
    const QByteArray once = makeReply(size);
    const QByteArray twice = makeReply(2 * size);
    const auto megabytesPerSecond = [&](double time) { return double(once.size()) / time / 1000; };
    Samples speed, growth, scanSpeed, scanGrowth;
    for (int run = 0; run < runs; ++run) {
        const double time = timed(readEvents, once);
        speed.add(megabytesPerSecond(time));
        growth.add(timed(readEvents, twice) / time);
        const double scan = timed(findBlocks, once);
        scanSpeed.add(megabytesPerSecond(scan));
        scanGrowth.add(timed(findBlocks, twice) / scan);
    }
    const QString baseline = QStringLiteral("memchr pass over the lines");
    return {{QStringLiteral("events of a 10 MiB reply"), QStringLiteral("MB/s"), speed, baseline, scanSpeed,
             target::MedianAtLeast{100}},
            {QStringLiteral("events of twice the size, time"), QStringLiteral("times"), growth, baseline,
             scanGrowth, target::MedianAtMost{2.2}}};
}

} // namespace velmora::bench
