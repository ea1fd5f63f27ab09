#pragma once

#include "simulator/engine/readings.h"
#include "simulator/engine/state.h"

// How relays take what they are told. Only the outcome of a moment counts: Settle shows it.

namespace simulator {

void TurnOn(EngineState& state, Mask on);
void TurnOff(EngineState& state, Mask off);
/// Off with the warning of the blink alert.
void WarnOff(EngineState& state, Mask off);
/// `manner` is that of the relays that go off.
void TellRelays(EngineState& state, Mask on, Mask off, Manner manner);
/// By somebody who is there: off-hours sweeps wait for the override time.
void PersonTurnsOn(EngineState& state, Mask on);
/// Of relays that nobody holds on any more.
void BeginOverride(EngineState& state, Mask relays);
/// Times and warnings of the relays end where they are. So do pulses, but that of a relay which is
/// on goes on.
void Forget(EngineState& state, Mask relays);
/// By somebody who tells the preset or timer, which is a row whatever comes of it.
void ApplyPreset(EngineState& state, int preset, const Subject& cause);
void ApplyTimer(EngineState& state, int timer, const Subject& cause);
/// What the timer does when it fires.
void RunTimer(EngineState& state, int timer, const Subject& cause);

}  // namespace simulator
