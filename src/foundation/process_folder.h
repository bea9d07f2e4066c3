#pragma once

#include "foundation/descriptor.h"

#include <QString>

namespace velmora {

/// A folder for what a process keeps only while it lives, beside those of other processes of the same user,
/// which may run in other sessions. It goes with the object; one that a killed process has left goes when the
/// next process makes its own.
class ProcessFolder {
public:
    /// In `parent`, with a name that begins with `name`. Nothing is made yet.
    ProcessFolder(QString parent, QString name);
    ~ProcessFolder();
    ProcessFolder(const ProcessFolder&) = delete;
    ProcessFolder& operator=(const ProcessFolder&) = delete;

    /// The folder, which is made now if it isn't there. Where it can't be, a path at which nothing can be
    /// made.
    [[nodiscard]] QString path();
    /// Removes the folders of this name whose processes are gone.
    void removeAbandoned() const;

private:
    [[nodiscard]] bool isThere() const;
    [[nodiscard]] bool make();

    const QString m_prefix;
    QString m_path;
    Descriptor m_folder;
};

} // namespace velmora
