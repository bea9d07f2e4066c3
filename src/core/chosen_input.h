#pragma once

namespace velmora {

class AudioEngine;
class UserDefaults;

/// Points the engine at the microphone that the user has chosen ("micUniqueID"). One that has gone means the
/// system's default, without a word.
void useChosenInput(AudioEngine& engine, const UserDefaults& defaults);

} // namespace velmora
