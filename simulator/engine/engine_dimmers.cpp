#include <algorithm>
#include <cstdlib>

#include "simulator/engine/engine.h"

// Dimmer outputs. A level on its way is worked out when it is asked for; only where it is going is
// an event.

namespace simulator {

namespace {

constexpr int FullLevel = 255;
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

}  // namespace

int Engine::Limited(const DimmerSetting& setting, int level, std::int64_t light) {
  const int least = setting.MinFromPhotocell ? Curve(setting, light) : setting.MinLevel;
  const int most = setting.MaxFromPhotocell ? Curve(setting, light) : setting.MaxLevel;
  return reading::Limited(level, least, most);
}

int Engine::GoalLevel(int output, std::int64_t light) const {
  const auto at = static_cast<std::size_t>(output);
  const DimmerSetting& setting = Settings->Dimmers[at];
  const DimmerState& state = DimmerStates[at];
  switch (state.Towards) {
    case DimmerState::Goal::Base:
      // Relays say on and off and mean it: the limits are those of dimming.
      if (setting.Relays == 0) return setting.PowerOnLevel;
      return (Output & setting.Relays) != 0 ? setting.RelayOnLevel : setting.RelayOffLevel;
    case DimmerState::Goal::Tracking:
      if (setting.TrackMode != SetpointMode) return Limited(setting, Curve(setting, light), light);
      break;
    case DimmerState::Goal::Fixed:
      break;
  }
  return Limited(setting, state.Level, light);
}

int Engine::GoalLevel(int output) const {
  const DimmerSetting& setting = Settings->Dimmers[static_cast<std::size_t>(output)];
  return GoalLevel(output, Lights[static_cast<std::size_t>(setting.Photocell)].To);
}

int Engine::DimmerLevel(int output) const {
  const DimmerState& state = DimmerStates.at(static_cast<std::size_t>(output));
  const DimmerSetting& setting = Settings->Dimmers[static_cast<std::size_t>(output)];
  const int goal = GoalLevel(output, LightNow(setting.Photocell));
  if (state.FadeMs == 0) return goal;
  const std::int64_t travelled = (Present - state.Since) * FullLevel / state.FadeMs;
  if (std::abs(goal - state.From) <= travelled) return goal;
  return state.From + static_cast<int>(goal > state.From ? travelled : -travelled);
}

void Engine::SetGoal(int output, DimmerState::Goal goal, int level, std::int64_t fadeMs) {
  DimmerState& state = DimmerStates[static_cast<std::size_t>(output)];
  state.From = DimmerLevel(output);
  state.Towards = goal;
  state.Level = std::clamp(level, 0, FullLevel);
  state.Since = Present;
  state.FadeMs = fadeMs;
  DimmersTouched = true;
}

void Engine::Track(int output, std::int64_t fadeMs) {
  const DimmerSetting& setting = Settings->Dimmers[static_cast<std::size_t>(output)];
  int level = DimmerLevel(output);
  const std::int64_t light = Lights[static_cast<std::size_t>(setting.Photocell)].To / LightUnits;
  // Too dark means more light, too bright less; how far is for the photocell to say.
  if (light != setting.Target) level = light < setting.Target ? FullLevel : 0;
  SetGoal(output, DimmerState::Goal::Tracking, level, fadeMs);
}

void Engine::StartDimmers() {
  DimmerStates.fill({});
  for (int output = 0; output < DimmerOutputs; ++output) {
    const DimmerSetting& setting = Settings->Dimmers[static_cast<std::size_t>(output)];
    if (setting.TrackMode == 0) continue;
    SetGoal(output, DimmerState::Goal::Fixed, setting.PowerOnLevel, 0);
    Track(output, setting.FadeMs);
  }
  DimmersTouched = true;
}

void Engine::RunSlots(DimmerSlot::Kind kind, int number, bool began) {
  for (std::size_t i = 0; i < Settings->Slots.size(); ++i) {
    const DimmerSlot& slot = Settings->Slots[i];
    if (slot.What != kind || slot.Number != number) continue;
    if (began != slot.Inverted) {
      RunSlot(static_cast<int>(i));
    } else {
      EndSlot(static_cast<int>(i));
    }
  }
}

void Engine::RunSlot(int index) {
  const DimmerSlot& slot = Settings->Slots[static_cast<std::size_t>(index)];
  const DimmerSetting& setting = Settings->Dimmers[static_cast<std::size_t>(slot.Output)];
  DimmerState& state = DimmerStates[static_cast<std::size_t>(slot.Output)];
  const std::int64_t fade = slot.Instant ? 0 : setting.FadeMs;
  ForgetRevert(slot.Output);
  const int level = DimmerLevel(slot.Output);
  const auto goTo = [&](int to, std::int64_t ms) {
    // What reverts goes back to what stood before the first of several that do.
    if (state.Slot < 0 || !state.Reverts) {
      state.GoalBefore = state.Towards;
      state.LevelBefore = state.Level;
    }
    state.Slot = index;
    state.Reverts = slot.Revert != Never && !IsRamp(slot.Action);
    SetGoal(slot.Output, DimmerState::Goal::Fixed, to, ms);
  };
  if (slot.Action == RevertToPhotocell) {
    RevertDimmer(slot.Output, fade);
    return;
  }
  if (slot.Action == Lower) goTo(level - reading::DimmerStep, fade);
  if (slot.Action == Raise) goTo(level + reading::DimmerStep, fade);
  if (slot.Action >= Goto0 && slot.Action <= Goto100) {
    goTo((slot.Action - Goto0) * FullLevel / 100, fade);
  }
  if (IsRamp(slot.Action)) goTo(slot.Action == RampUp ? FullLevel : 0, setting.FadeMs);
  if (slot.Revert >= AfterFiveMinutes) {
    Schedule(
        {Present + std::int64_t{slot.Revert - Never} * 5 * MinuteMs, Due::Dimmer, 0, slot.Output});
  }
}

void Engine::EndSlot(int index) {
  const DimmerSlot& slot = Settings->Slots[static_cast<std::size_t>(index)];
  DimmerState& state = DimmerStates[static_cast<std::size_t>(slot.Output)];
  if (state.Slot != index) return;
  const std::int64_t fade = Settings->Dimmers[static_cast<std::size_t>(slot.Output)].FadeMs;
  if (IsRamp(slot.Action)) {
    SetGoal(slot.Output, DimmerState::Goal::Fixed, DimmerLevel(slot.Output), 0);
  } else if (slot.Revert == WhenInputOpens) {
    RevertDimmer(slot.Output, slot.Instant ? 0 : fade);
  }
}

void Engine::RevertDimmer(int output, std::int64_t fadeMs) {
  DimmerState& state = DimmerStates[static_cast<std::size_t>(output)];
  if (Settings->Dimmers[static_cast<std::size_t>(output)].TrackMode != 0) {
    Track(output, fadeMs);
  } else if (state.Slot >= 0) {
    SetGoal(output, state.GoalBefore, state.LevelBefore, fadeMs);
  }
  state.Slot = -1;
}

void Engine::ForgetRevert(int output) {
  std::erase_if(Queue, [output](const Pending& pending) {
    return pending.What == Due::Dimmer && pending.Number == output;
  });
}

void Engine::FollowRelays(Mask next) {
  for (int output = 0; output < DimmerOutputs; ++output) {
    const DimmerSetting& setting = Settings->Dimmers[static_cast<std::size_t>(output)];
    if (((Output & setting.Relays) != 0) == ((next & setting.Relays) != 0)) continue;
    ForgetRevert(output);
    SetGoal(output, DimmerState::Goal::Base, 0, setting.FadeMs);
    DimmerStates[static_cast<std::size_t>(output)].Slot = -1;
  }
}

void Engine::FollowPhotocell(int device) {
  for (int output = 0; output < DimmerOutputs; ++output) {
    const DimmerSetting& setting = Settings->Dimmers[static_cast<std::size_t>(output)];
    if (setting.Photocell != device) continue;
    DimmersTouched = true;
    const bool tracks =
        DimmerStates[static_cast<std::size_t>(output)].Towards == DimmerState::Goal::Tracking;
    if (tracks && setting.TrackMode == SetpointMode) Track(output, setting.FadeMs);
  }
  Settle({Subject::Kind::Photocell, device, 0});
}

void Engine::TellDimmers(const Subject& cause) {
  for (int output = 0; output < DimmerOutputs; ++output) {
    const auto at = static_cast<std::size_t>(output);
    const int level = GoalLevel(output);
    if (!Settings->Dimmers[at].Fitted || level == DimmerStates[at].Told) continue;
    DimmerStates[at].Told = level;
    const std::string words = DimmerStates[at].FadeMs == 0
                                  ? std::string("at once")
                                  : "fades, " + std::to_string(DimmerStates[at].FadeMs / SecondMs) +
                                        " sec from end to end";
    Tell(cause, {Subject::Kind::Dimmer, output / 4, output % 4}, Change::Level, words, level);
  }
}

}  // namespace simulator
