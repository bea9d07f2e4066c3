#include "core/chosen_input.h"

#include "foundation/user_defaults.h"
#include "platform/audio_engine.h"

namespace velmora {

void useChosenInput(AudioEngine& engine, const UserDefaults& defaults) {
    engine.useDefaultInput();
    const QString uniqueID = defaults.string(QStringLiteral("micUniqueID")).value_or(QString());
    if (uniqueID.isEmpty())
        return;
    try {
        engine.setInputDevice(uniqueID);
    } catch (const AudioDeviceError&) {
        engine.useDefaultInput();
    }
}

} // namespace velmora
