#pragma once

#include "platform/key_poster.h"
#include "platform/pasteboard.h"

namespace velmora {

/// Stands in where there is no desktop to paste into: nothing is ever delivered.
class NoDesktopPaste final : public Pasteboard, public KeyPoster {
public:
    [[nodiscard]] Saved save() override { return {}; }
    void putBack(Saved /*saved*/) override {}
    void clearContents() override { m_text.clear(); }
    void setString(const QString& text) override { m_text = text; }
    void beginText() override {}
    /// Says so in the log, once.
    void postPasteChord() override;
    void onUndelivered(std::function<void(const QString& text)> call) override {
        m_undelivered = std::move(call);
    }

private:
    QString m_text;
    std::function<void(const QString&)> m_undelivered = [](const QString&) {};
    bool m_told = false;
};

} // namespace velmora
