#pragma once

#include "simulator/engine/state.h"

// What comes of what relays and dimmers were told in one moment, and who hears of it.

namespace simulator {

/// Puts what was told into force. With `ownWords` each relay is its own cause.
void Settle(EngineState& state, const Subject& cause, std::string_view ownWords = {});
/// Groups, presets and pilots as power comes.
void TellAllShown(EngineState& state, const Subject& cause);
/// What stands now is known to the listener.
void RememberShown(EngineState& state);

/// Warning that they are about to go off.
Mask BlinkingRelays(const EngineState& state);
bool GroupIsOn(const EngineState& state, int group);
/// Nothing for a preset that names no relay; otherwise whether all stand as it says.
std::optional<bool> PresetStands(const EngineState& state, int preset);
/// Of a switch.
bool PilotIsLit(const EngineState& state, int number);

}  // namespace simulator
