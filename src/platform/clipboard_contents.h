#pragma once

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace velmora {

/// What a clipboard holds, in all its forms.
struct ClipboardContents {
    struct Form {
        QByteArray type; ///< MIME type, or the desktop's own name for it
        QByteArray bytes;

        bool operator==(const Form&) const = default;
    };
    static constexpr const char* plainText = "text/plain;charset=utf-8";

    std::vector<Form> forms;
    bool secret = false; ///< clipboard managers are asked not to keep it

    [[nodiscard]] static ClipboardContents ofText(const QByteArray& utf8) {
        return {.forms = {{plainText, utf8}}};
    }
    /// A text that is on its way to a window, and nobody else's business.
    [[nodiscard]] static ClipboardContents ofPiece(const QByteArray& utf8) {
        return {.forms = {{plainText, utf8}}, .secret = true};
    }

    [[nodiscard]] bool isEmpty() const { return forms.empty(); }
    [[nodiscard]] const QByteArray* find(const QByteArray& type) const {
        for (const Form& form : forms) {
            if (form.type == type)
                return &form.bytes;
        }
        return nullptr;
    }
    /// UTF-8; null when it has no text.
    [[nodiscard]] const QByteArray* text() const { return find(plainText); }

    bool operator==(const ClipboardContents&) const = default;
};

/// What another program has on the clipboard, as far as it has come.
struct FetchedClipboard {
    ClipboardContents contents;
    bool isComplete = false;
};

} // namespace velmora
