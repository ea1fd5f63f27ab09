#pragma once

#include "simulator/engine/state.h"

// Dimmer outputs. A level on its way is worked out when it is asked for; only where it is going is
// an event.

namespace simulator {

/// Of the moment.
int DimmerLevel(const EngineState& state, int output);
/// That it is going to.
int GoalLevel(const EngineState& state, int output);

/// Power comes.
void StartDimmers(EngineState& state);
/// Of a switch, timer or preset; `began` is false as a switch opens.
void RunSlots(EngineState& state, DimmerSlot::Kind kind, int number, bool began = true);
/// The time of a slot that reverts is over.
void RevertAfterTime(EngineState& state, int output);
/// `next` is what relays are about to be.
void FollowRelays(EngineState& state, Mask next);
void FollowPhotocell(EngineState& state, int device);
/// The rows of levels that have changed.
void TellDimmers(EngineState& state, const Subject& cause);

}  // namespace simulator
