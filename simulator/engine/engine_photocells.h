#pragma once

#include "simulator/engine/state.h"

// Light on photocells, which their filter lets come evenly.

namespace simulator {

/// 0..255, the light that it is on its way to.
int PhotocellLevel(const EngineState& state, int device);
/// What the filter lets through now, in thousandths of a level.
std::int64_t LightNow(const EngineState& state, int device);
void SetPhotocell(EngineState& state, int device, int level);
/// New settings: lights go on from where they are.
void HoldLights(EngineState& state);
/// Lets photocells tell their light anew, after their filter time to inputs that were set otherwise
/// before; without settings before, as power comes, to all.
void StartPhotocells(EngineState& state, const Configuration* before = nullptr);
/// It has got somewhere, or is back on the bus.
void RunPhotocell(EngineState& state, int device);

}  // namespace simulator
