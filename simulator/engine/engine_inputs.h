#pragma once

#include "simulator/engine/state.h"

// Contacts, local and on devices, and what the inputs behind them do.

namespace simulator {

/// The two contacts of a local input. A switch with one contact uses On.
enum class Contact { On = 1, Off = 2 };

/// Throw std::out_of_range for what does not exist.
std::size_t CheckedDevice(int device);
int CheckedSwitch(int device, int input);

void SetContact(EngineState& state, int input, Contact contact, bool closed);
void SetDeviceInput(EngineState& state, int device, int input, bool closed);
/// Brings what acts as long as it is closed up to the present, and settles.
void RunLevelSwitches(EngineState& state, const Subject& cause);

/// Why a switch is not heard, if it is not.
enum class Deafness { None, Silent, OutsideActiveTimes, Disabled };
Deafness DeafnessOf(const EngineState& state, int number);
/// Of one that acts as long as it is closed: whether it does now.
bool LevelSwitchInForce(const EngineState& state, int number);

Subject SwitchSubject(int number);
bool SwitchClosed(const EngineState& state, int number);
/// What occupants whose input is in force hold on.
Mask OccupiedRelays(const EngineState& state);

}  // namespace simulator
