#pragma once

#include "simulator/engine/state.h"

// Daylight that follows the sun: photocells get the light of a clear day, minute by minute.

namespace simulator {

/// Photocells get the light of the present, and from now on that of each minute.
void StartDaylight(EngineState& state);
/// The next change, which must be due.
void RunDaylight(EngineState& state);

}  // namespace simulator
