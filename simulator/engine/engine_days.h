#pragma once

#include "simulator/engine/state.h"

// What the days bring: timers, open and close times, daylight saving, off-hours sweeps.

namespace simulator {

/// When the next of it comes, if anything does.
std::optional<Instant> NextPlanned(const EngineState& state);
/// Lets it happen.
void RunPlanned(EngineState& state);
/// The next sweep, which must be due.
void RunSweep(EngineState& state);
/// Plans from the present on, which is new, or the settings are.
void StartDays(EngineState& state);

/// 0 Sunday .. 6 Saturday, of a day counted from 1970.
int PanelWeekday(const EngineState& state, std::int64_t day);
struct SunAndHours {
  std::optional<Instant> Sunrise, Sunset, Open, Close;
};
SunAndHours HoursOf(const EngineState& state, std::int64_t day);

}  // namespace simulator
