#pragma once

#include "platform/audio_engine.h"

#include <QHash>
#include <QVariantList>

namespace velmora {

/// The microphones that the user can choose from: the system's default, those that are there, and the chosen
/// one also when it is not.
class MicrophoneChoices {
public:
    /// Takes notice of what is plugged in now.
    void see(const std::vector<AudioInput>& inputs);

    /// A `value`, which is the ID to store, and a `title` each.
    [[nodiscard]] QVariantList options(const QString& chosenID) const;
    [[nodiscard]] bool isMissing(const QString& chosenID) const;

private:
    std::vector<AudioInput> m_inputs;
    QHash<QString, QString> m_names; // also of what has gone since
};

} // namespace velmora
