#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <optional>

#include "simulator/engine/calendar.h"

// How the panel behaves where its settings leave that open, as an electrician would expect it:
// what is a number or a choice, for the words see "Rehearsing days" in docs/simulated_panel.md.

namespace simulator {

/// Whether a relay that goes off warns first, if its type is one that warns.
enum class Manner { Plain, Warning };

namespace reading {

/// A switch, a hand and a host mean now; where nobody may be looking, a warning comes first.
constexpr Manner OffByPerson = Manner::Plain;
constexpr Manner OffByTimer = Manner::Warning;
constexpr Manner OffBySweep = Manner::Warning;
constexpr Manner OffAtTimesEnd = Manner::Warning;  // of a timed on input and of the override

/// Of "Off", "On", "On/In:1" and "Last State" only "On": input 1 is open then, and there is no last
/// state.
constexpr bool OnAfterPower(int powerOnType) {
  return powerOnType == 1;
}

/// Where power comes back after it has failed, these two are on as well: with input 1 closed, and
/// if they were on as it failed.
constexpr int OnWithInput1Type = 2;
constexpr int LastStateType = 3;

/// The light of a clear day, `passed` of the time from sunrise to sunset: half a sine wave.
inline int ClearDaylight(double passed) {
  if (passed <= 0 || passed >= 1) return 0;
  constexpr int fullLight = 255;
  return static_cast<int>(std::lround(fullLight * std::sin(std::numbers::pi * passed)));
}

/// How long a pulsed relay leaves its rest.
constexpr std::int64_t PulseMs = SecondMs;

/// The first sweep comes as the building closes, the next ones by the interval.
constexpr std::int64_t FirstSweepMs = 0;

/// Daylight saving begins and ends when the wall clock comes to this hour.
constexpr std::int64_t ClockChangeHour = 2;

/// Height of the sun's centre as it rises and sets: refraction and half the disc, degrees.
constexpr double Horizon = -0.833;

/// The filter is an average over this time: a new light is reached evenly within it.
constexpr std::int64_t PhotocellMs(bool quick) {
  return (quick ? 2 : 30) * SecondMs;
}

/// Whether a photocell closes or opens its input at a light; nothing between its levels and where
/// they are equal, which is one that is not set up.
constexpr std::optional<bool> PhotocellSays(std::int64_t light, std::int64_t on, std::int64_t off) {
  if (on == off) return std::nullopt;
  if (on > off ? light >= on : light <= on) return true;
  if (on > off ? light <= off : light >= off) return false;
  return std::nullopt;
}

/// What is lit after each press, of bits for code 1, 2 and 3: "On-Off" with "Hi-Lo(NO)", which
/// lights at the high level, and "Hi-Lo(NC)", at the low one; or "Step A" and "Step B".
inline constexpr std::array<int, 3> BiLevelSteps{0, 1 | 2, 1 | 4};
inline constexpr std::array<int, 2> TwoSteps{1, 2};
inline constexpr std::array<int, 4> FourSteps{0, 1, 2, 1 | 2};

/// "Raise 10%" and "Lower 10%".
constexpr int DimmerStep = 25;

/// A maximum stands before a minimum that is above it.
constexpr int Limited(int level, int least, int most) {
  return std::min(std::max(level, least), most);
}

}  // namespace reading

}  // namespace simulator
