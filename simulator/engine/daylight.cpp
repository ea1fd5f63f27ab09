#include "simulator/engine/daylight.h"

#include "simulator/engine/engine_days.h"
#include "simulator/engine/engine_photocells.h"
#include "simulator/engine/readings.h"

namespace simulator {

namespace {

/// Dark all day where the sun does not rise or set.
int LightAt(const SunAndHours& hours, Instant at) {
  if (!hours.Sunrise || !hours.Sunset || *hours.Sunset <= *hours.Sunrise) return 0;
  return reading::ClearDaylight(static_cast<double>(at - *hours.Sunrise) /
                                static_cast<double>(*hours.Sunset - *hours.Sunrise));
}

}  // namespace

void StartDaylight(EngineState& state) {
  RunDaylight(state);
}

void RunDaylight(EngineState& state) {
  const std::int64_t day = state.Wall() / DayMs;
  const SunAndHours hours = HoursOf(state, day);
  const int light = LightAt(hours, state.Now / MinuteMs * MinuteMs);
  for (int device = 1; device <= Devices; ++device) SetPhotocell(state, device, light);
  const Instant midnight = state.Settings->Days.FromWall((day + 1) * DayMs);
  Instant next = (state.Now / MinuteMs + 1) * MinuteMs;
  while (next < midnight && LightAt(hours, next) == light) next += MinuteMs;
  state.Photocells.NextDaylight = next;
}

}  // namespace simulator
