#include "simulator/engine/engine_dimmers.h"

#include <algorithm>
#include <cstdlib>

#include "simulator/engine/engine_photocells.h"
#include "simulator/engine/engine_settle.h"
#include "simulator/engine/readings.h"

namespace simulator {

namespace {

constexpr int SetpointMode = 2;
constexpr int ThreePointMode = 3;

enum Action { RevertToPhotocell, Lower, Raise, Goto0, Goto100 = 103, RampDown, RampUp };
enum Revert { WhenInputOpens, Never, AfterFiveMinutes };

bool IsRamp(int action) {
  return action == RampDown || action == RampUp;
}

/// The response curve at a light in thousandths of a level: straight between its points, level
/// outside them.
int Curve(const DimmerSetting& setting, std::int64_t light) {
  const auto point = [&](std::size_t i) {
    return std::pair<std::int64_t, std::int64_t>(setting.PointIn[i] * LightUnits,
                                                 setting.PointOut[i]);
  };
  std::vector points{point(0), point(2)};
  if (setting.TrackMode == ThreePointMode) points.push_back(point(1));
  std::stable_sort(points.begin(), points.end(),
                   [](const auto& a, const auto& b) { return a.first < b.first; });
  if (light <= points.front().first) return static_cast<int>(points.front().second);
  for (std::size_t i = 1; i < points.size(); ++i) {
    const auto& [fromIn, fromOut] = points[i - 1];
    const auto& [toIn, toOut] = points[i];
    if (light > toIn) continue;
    const std::int64_t way = toIn - fromIn;
    const std::int64_t level = fromOut * way + (toOut - fromOut) * (light - fromIn);
    return static_cast<int>((2 * level + way) / (2 * way));
  }
  return static_cast<int>(points.back().second);
}

const DimmerSetting& SettingOf(const EngineState& state, int output) {
  return state.Settings->Dimmers.Each.at(static_cast<std::size_t>(output));
}

DimmerState& StateOf(EngineState& state, int output) {
  return state.Dimmers.at(static_cast<std::size_t>(output));
}

const DimmerState& StateOf(const EngineState& state, int output) {
  return state.Dimmers.at(static_cast<std::size_t>(output));
}

Subject OutputSubject(int output) {
  return {Subject::Kind::Dimmer, output / OutputsADimmer, output % OutputsADimmer};
}

std::int64_t LightAhead(const EngineState& state, int device) {
  return state.Photocells.Lights[static_cast<std::size_t>(device)].To;
}

int Limited(const DimmerSetting& setting, int level, std::int64_t light) {
  const int least = setting.MinFromPhotocell ? Curve(setting, light) : setting.MinLevel;
  const int most = setting.MaxFromPhotocell ? Curve(setting, light) : setting.MaxLevel;
  return reading::Limited(level, least, most);
}

int LevelInLight(const EngineState& state, int output, std::int64_t light) {
  const DimmerSetting& setting = SettingOf(state, output);
  const DimmerState& dimmer = StateOf(state, output);
  switch (dimmer.Towards) {
    case DimmerState::Goal::Base:
      // Relays say on and off and mean it: the limits are those of dimming.
      if (setting.Relays == 0) return setting.PowerOnLevel;
      return (state.Relays.Output & setting.Relays) != 0 ? setting.RelayOnLevel
                                                         : setting.RelayOffLevel;
    case DimmerState::Goal::Tracking:
      if (setting.TrackMode != SetpointMode) return Limited(setting, Curve(setting, light), light);
      break;
    case DimmerState::Goal::Fixed:
      break;
  }
  return Limited(setting, dimmer.Level, light);
}

void SetGoal(EngineState& state, int output, DimmerState::Goal goal, int level,
             std::int64_t fadeMs) {
  DimmerState& dimmer = StateOf(state, output);
  dimmer.From = DimmerLevel(state, output);
  dimmer.Towards = goal;
  dimmer.Level = std::clamp(level, 0, FullLevel);
  dimmer.Since = state.Now;
  dimmer.FadeMs = fadeMs;
  state.Shown.LevelsChange = true;
}

void Track(EngineState& state, int output, std::int64_t fadeMs) {
  const DimmerSetting& setting = SettingOf(state, output);
  int level = DimmerLevel(state, output);
  const std::int64_t light = LightAhead(state, setting.Photocell) / LightUnits;
  // Too dark means more light, too bright less; how far is for the photocell to say.
  if (light != setting.Target) level = light < setting.Target ? FullLevel : 0;
  SetGoal(state, output, DimmerState::Goal::Tracking, level, fadeMs);
}

void RevertOutput(EngineState& state, int output, std::int64_t fadeMs) {
  DimmerState& dimmer = StateOf(state, output);
  if (SettingOf(state, output).TrackMode != 0) {
    Track(state, output, fadeMs);
  } else if (dimmer.Slot >= 0) {
    SetGoal(state, output, dimmer.GoalBefore, dimmer.LevelBefore, fadeMs);
  }
  dimmer.Slot = -1;
}

void RunSlot(EngineState& state, int index, const DimmerSlot& slot) {
  const DimmerSetting& setting = SettingOf(state, slot.Output);
  DimmerState& dimmer = StateOf(state, slot.Output);
  const std::int64_t fade = slot.Instant ? 0 : setting.FadeMs;
  state.Coming.Forget(Due::Dimmer, slot.Output);
  const int level = DimmerLevel(state, slot.Output);
  const auto goTo = [&](int to, std::int64_t ms) {
    // What reverts goes back to what stood before the first of several that do.
    if (dimmer.Slot < 0 || !dimmer.Reverts) {
      dimmer.GoalBefore = dimmer.Towards;
      dimmer.LevelBefore = dimmer.Level;
    }
    dimmer.Slot = index;
    dimmer.Reverts = slot.Revert != Never && !IsRamp(slot.Action);
    SetGoal(state, slot.Output, DimmerState::Goal::Fixed, to, ms);
  };
  if (slot.Action == RevertToPhotocell) {
    RevertOutput(state, slot.Output, fade);
    return;
  }
  if (slot.Action == Lower) goTo(level - reading::DimmerStep, fade);
  if (slot.Action == Raise) goTo(level + reading::DimmerStep, fade);
  if (slot.Action >= Goto0 && slot.Action <= Goto100) {
    goTo((slot.Action - Goto0) * FullLevel / 100, fade);
  }
  if (IsRamp(slot.Action)) goTo(slot.Action == RampUp ? FullLevel : 0, setting.FadeMs);
  if (slot.Revert >= AfterFiveMinutes) {
    const std::int64_t ms = std::int64_t{slot.Revert - Never} * 5 * MinuteMs;
    state.Await(state.Now + ms, Due::Dimmer, 0, slot.Output);
  }
}

void EndSlot(EngineState& state, int index, const DimmerSlot& slot) {
  if (StateOf(state, slot.Output).Slot != index) return;
  if (IsRamp(slot.Action)) {
    SetGoal(state, slot.Output, DimmerState::Goal::Fixed, DimmerLevel(state, slot.Output), 0);
  } else if (slot.Revert == WhenInputOpens) {
    RevertOutput(state, slot.Output, slot.Instant ? 0 : SettingOf(state, slot.Output).FadeMs);
  }
}

}  // namespace

int GoalLevel(const EngineState& state, int output) {
  if (!state.Powered) return 0;
  return LevelInLight(state, output, LightAhead(state, SettingOf(state, output).Photocell));
}

int DimmerLevel(const EngineState& state, int output) {
  if (!state.Powered) return 0;
  const DimmerState& dimmer = StateOf(state, output);
  const int goal = LevelInLight(state, output, LightNow(state, SettingOf(state, output).Photocell));
  if (dimmer.FadeMs == 0) return goal;
  const std::int64_t travelled = (state.Now - dimmer.Since) * FullLevel / dimmer.FadeMs;
  if (std::abs(goal - dimmer.From) <= travelled) return goal;
  return dimmer.From + static_cast<int>(goal > dimmer.From ? travelled : -travelled);
}

void StartDimmers(EngineState& state) {
  state.Dimmers.fill({});
  state.Shown.Levels.fill(0);
  for (int output = 0; output < DimmerOutputs; ++output) {
    const DimmerSetting& setting = SettingOf(state, output);
    if (setting.TrackMode == 0) continue;
    SetGoal(state, output, DimmerState::Goal::Fixed, setting.PowerOnLevel, 0);
    Track(state, output, setting.FadeMs);
  }
  state.Shown.LevelsChange = true;
}

void RunSlots(EngineState& state, DimmerSlot::Kind kind, int number, bool began) {
  const std::vector<DimmerSlot>& slots = state.Settings->Dimmers.Slots;
  for (std::size_t i = 0; i < slots.size(); ++i) {
    const DimmerSlot& slot = slots[i];
    if (slot.What != kind || slot.Number != number) continue;
    if (began != slot.Inverted) {
      RunSlot(state, static_cast<int>(i), slot);
    } else {
      EndSlot(state, static_cast<int>(i), slot);
    }
  }
}

void RevertAfterTime(EngineState& state, int output) {
  const Subject cause = OutputSubject(output);
  state.TellFires(cause, "revert time over");
  RevertOutput(state, output, SettingOf(state, output).FadeMs);
  Settle(state, cause);
}

void FollowRelays(EngineState& state, Mask next) {
  for (int output = 0; output < DimmerOutputs; ++output) {
    const DimmerSetting& setting = SettingOf(state, output);
    const bool wasOn = (state.Relays.Output & setting.Relays) != 0;
    if (wasOn == ((next & setting.Relays) != 0)) continue;
    state.Coming.Forget(Due::Dimmer, output);
    SetGoal(state, output, DimmerState::Goal::Base, 0, setting.FadeMs);
    StateOf(state, output).Slot = -1;
  }
}

void FollowPhotocell(EngineState& state, int device) {
  for (int output = 0; output < DimmerOutputs; ++output) {
    const DimmerSetting& setting = SettingOf(state, output);
    if (setting.Photocell != device) continue;
    state.Shown.LevelsChange = true;
    const bool tracks = StateOf(state, output).Towards == DimmerState::Goal::Tracking;
    if (tracks && setting.TrackMode == SetpointMode) Track(state, output, setting.FadeMs);
  }
  Settle(state, {Subject::Kind::Photocell, device, 0});
}

void TellDimmers(EngineState& state, const Subject& cause) {
  for (int output = 0; output < DimmerOutputs; ++output) {
    const int level = GoalLevel(state, output);
    int& shown = state.Shown.Levels[static_cast<std::size_t>(output)];
    if (!SettingOf(state, output).Fitted || level == shown) continue;
    shown = level;
    const std::int64_t fadeMs = StateOf(state, output).FadeMs;
    const std::string words =
        fadeMs == 0 ? std::string("at once")
                    : "fades, " + std::to_string(fadeMs / SecondMs) + " sec from end to end";
    state.Tell(cause, OutputSubject(output), Change::Level, words, level);
  }
}

}  // namespace simulator
