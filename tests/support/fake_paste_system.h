#pragma once

#include "platform/paste_system.h"

#include <QStringList>

#include <vector>

namespace velmora::test {

/// A window system of which the test says who has the focus, and whose windows read only when they are told.
class FakePasteSystem final : public PasteSystem {
public:
    [[nodiscard]] std::optional<PasteTarget> focused() override { return focus; }
    quint64 putUp(const QByteArray& text, const PasteTarget& /*target*/) override {
        clipboard = ClipboardContents::ofPiece(text);
        isOurs = true;
        return ++number;
    }
    bool postChord(const PasteTarget& target) override {
        if (beforeChord)
            beforeChord();
        if (focus != target)
            return false;
        ++chords;
        pasted << QString::fromUtf8(clipboard.text() ? *clipboard.text() : QByteArray());
        return true;
    }
    [[nodiscard]] bool answersPings(const PasteTarget& /*target*/) override { return hasPings; }
    void ping(const PasteTarget& /*target*/) override { ++pings; }
    void offer(const ClipboardContents& contents) override {
        clipboard = contents;
        isOurs = !contents.isEmpty();
    }
    void giveBackTheRest() override { ++givenBack; }
    [[nodiscard]] bool ownsClipboard() override { return isOurs; }
    [[nodiscard]] std::shared_ptr<const FetchedClipboard> fetch(std::function<void()> done) override {
        if (clipboard.isEmpty())
            return nullptr;
        const auto fetched = std::make_shared<FetchedClipboard>();
        fetches.push_back({fetched, clipboard, std::move(done)});
        if (answersAtOnce)
            finishFetch();
        return fetched;
    }

    /// Another program copies.
    void copyElsewhere(const ClipboardContents& contents) {
        clipboard = contents;
        isOurs = false;
    }
    /// The program that was asked last for its clipboard has answered. Its notice comes as the loop's would.
    void finishFetch() {
        const auto [fetched, contents, done] = fetches.back();
        fetched->contents = contents;
        fetched->isComplete = true;
        if (!answersAtOnce)
            done();
    }

    struct Fetch {
        std::shared_ptr<FetchedClipboard> fetched;
        ClipboardContents contents;
        std::function<void()> done;
    };
    std::optional<PasteTarget> focus = PasteTarget{.window = 1, .client = 10};
    ClipboardContents clipboard;
    bool isOurs = false;
    bool hasPings = false;
    bool answersAtOnce = true;
    std::function<void()> beforeChord;
    std::vector<Fetch> fetches;
    QStringList pasted; ///< what was up at each chord
    quint64 number = 0;
    int chords = 0;
    int pings = 0;
    int givenBack = 0;
};

} // namespace velmora::test
