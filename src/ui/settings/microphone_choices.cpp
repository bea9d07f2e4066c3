#include "ui/settings/microphone_choices.h"

#include "ui/kit/v_choice.h"

namespace velmora {

void MicrophoneChoices::see(const std::vector<AudioInput>& inputs) {
    m_inputs = inputs;
    for (const AudioInput& input : inputs)
        m_names.insert(input.uniqueID, input.name);
}

QVariantList MicrophoneChoices::options(const QString& chosenID) const {
    QVariantList options{VChoice::option(QString(), QStringLiteral("Системный по умолчанию"))};
    for (const AudioInput& input : m_inputs)
        options.append(VChoice::option(input.uniqueID, input.name));
    if (isMissing(chosenID))
        options.append(
            VChoice::option(chosenID, m_names.value(chosenID, chosenID) + QStringLiteral(" — нет сейчас")));
    return options;
}

bool MicrophoneChoices::isMissing(const QString& chosenID) const {
    return !chosenID.isEmpty() &&
           std::ranges::find(m_inputs, chosenID, &AudioInput::uniqueID) == m_inputs.end();
}

} // namespace velmora
