#pragma once

#include "support/desktop/accessible_tree.h"
#include "support/desktop/pointer.h"

#include <QString>
#include <QTemporaryDir>

#include <functional>

namespace velmora::test {

/// A real browser with a profile of its own, worked as a person does: what shows is read from the
/// accessibility bus, which knows the page and the browser's own questions alike, and where that says it is,
/// the pointer clicks. Needs a virtual desktop with VIRTUAL_DESKTOP_A11Y=1.
class Browser {
public:
    /// From now on http links that programs open come up in it; it starts with the first.
    Browser();
    /// Ends it.
    ~Browser();
    Browser(const Browser&) = delete;
    Browser& operator=(const Browser&) = delete;

    /// Opens a page as programs do.
    static void open(const QString& url);

    /// Waits until something of that name shows, in the page or around it.
    [[nodiscard]] static bool shows(const QString& name);
    /// Waits for a control of that name, scrolls down to it and clicks it. False when it does not come or
    /// takes no notice.
    [[nodiscard]] bool click(const QString& name);
    /// Clicks a field and types into it, on a keyboard with Latin letters. False unless the text is in it
    /// then.
    [[nodiscard]] bool type(const QString& field, const QString& text);

    /// Waits for the browser's question whether a link may open an application, and answers it. False when it
    /// does not come or stays.
    [[nodiscard]] bool allowLink();
    [[nodiscard]] bool declineLink();

    /// Everything that shows, for a failed test to print.
    [[nodiscard]] static QString description();

private:
    [[nodiscard]] bool answerLink(const std::function<QString(const QString& question)>& button);
    /// Down by a notch, over the page, and waits for it to move.
    void turnWheel(const std::function<bool(const AccessibleObject&)>& matches,
                   const AccessibleObject& control);
    [[nodiscard]] qint64 pid() const;
    [[nodiscard]] QString profile() const { return m_folder.filePath(QStringLiteral("profile")); }

    QTemporaryDir m_folder;
    Pointer m_pointer;
};

} // namespace velmora::test
