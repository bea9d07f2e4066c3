#pragma once

#include "platform/key_poster.h"
#include "platform/pasteboard.h"
#include "platform/sound_player.h"
#include "platform/workspace.h"

#include <QStringList>

namespace velmora::test {

/// The pasteboard, the keyboard and a document of the application in front, which pastes at once.
class FakeDesktop final : public Pasteboard, public KeyPoster {
public:
    [[nodiscard]] Saved save() override {
        saved.push_back(clipboard);
        return Saved(saved.size() - 1);
    }
    void putBack(Saved which) override {
        clearContents();
        clipboard = saved[std::size_t(which)];
    }
    void clearContents() override {
        clipboard.reset();
        hasImage = false;
    }
    void setString(const QString& text) override { clipboard = text; }
    void beginText() override { ++texts; }
    void postPasteChord() override {
        ++chords;
        pasted.append(clipboard.value_or(QString()));
    }
    void onUndelivered(std::function<void(const QString& text)> call) override {
        undelivered = std::move(call);
    }

    std::optional<QString> clipboard;
    bool hasImage = false;
    QStringList pasted; ///< one entry a chord
    int chords = 0;
    int texts = 0; ///< begun
    std::vector<std::optional<QString>> saved;
    std::function<void(const QString&)> undelivered;
};

class FakeSoundPlayer final : public SoundPlayer {
public:
    void play(const QString& name, float volume) override { played.emplace_back(name, volume); }

    std::vector<std::pair<QString, float>> played;
};

class FakeWorkspace final : public Workspace {
public:
    [[nodiscard]] std::optional<RunningApplication> frontmostApplication() override { return front; }
    bool openURL(const QUrl& url) override {
        opened.append(url);
        return opens;
    }

    std::optional<RunningApplication> front;
    QList<QUrl> opened;
    bool opens = true; ///< there is something to open it with
};

} // namespace velmora::test
