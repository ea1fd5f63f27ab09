#include "simulator/engine/engine_photocells.h"

#include <algorithm>
#include <cstdlib>
#include <stdexcept>

#include "simulator/engine/engine_dimmers.h"
#include "simulator/engine/engine_inputs.h"
#include "simulator/engine/readings.h"

namespace simulator {

namespace {

using Light = PhotocellState::Light;

/// The instants at which it gets to where it goes, or to a level of one of its inputs.
void Schedule(EngineState& state, int device) {
  state.Coming.Forget(Due::Photocell, device);
  const Light& light = state.Photocells.Lights[static_cast<std::size_t>(device)];
  const InputSettings& inputs = state.Settings->Inputs;
  const std::int64_t way = std::abs(light.To - light.From);
  std::vector<Instant> instants{light.Since + inputs.PhotocellMs};
  if (state.Photocells.HeardFrom > state.Now) instants.push_back(state.Photocells.HeardFrom);
  const auto passes = [&](int level) {
    const std::int64_t from = std::abs(level * LightUnits - light.From);
    const std::int64_t left = std::abs(level * LightUnits - light.To);
    if (from + left != way || way == 0) return;
    instants.push_back(light.Since + (from * inputs.PhotocellMs + way - 1) / way);
  };
  for (int i = 0; i < DeviceInputs; ++i) {
    const SwitchSetting& setting = inputs.Each[static_cast<std::size_t>(SwitchOf(device, i))];
    passes(setting.OnLevel);
    passes(setting.OffLevel);
  }
  std::sort(instants.begin(), instants.end());
  instants.erase(std::unique(instants.begin(), instants.end()), instants.end());
  for (const Instant at : instants) state.Await(at, Due::Photocell, 0, device);
}

}  // namespace

int PhotocellLevel(const EngineState& state, int device) {
  return static_cast<int>(state.Photocells.Lights[CheckedDevice(device)].To / LightUnits);
}

std::int64_t LightNow(const EngineState& state, int device) {
  const Light& light = state.Photocells.Lights[static_cast<std::size_t>(device)];
  const std::int64_t filterMs = state.Settings->Inputs.PhotocellMs;
  const std::int64_t passed = state.Now - light.Since;
  if (passed >= filterMs) return light.To;
  // Cut towards where it came from in either direction, so that a level is reached in its time.
  return light.From + (light.To - light.From) * passed / filterMs;
}

void SetPhotocell(EngineState& state, int device, int level) {
  Light& light = state.Photocells.Lights[CheckedDevice(device)];
  if (level < 0 || level > FullLevel) throw std::out_of_range("level " + std::to_string(level));
  if (light.To == level * LightUnits) return;
  light = {LightNow(state, device), level * LightUnits, state.Now};
  const bool heard = state.Settings->Inputs.IsPhotocell[static_cast<std::size_t>(device)];
  if (heard && state.Powered) Schedule(state, device);
}

void HoldLights(EngineState& state) {
  for (int device = 1; device <= Devices; ++device) {
    Light& light = state.Photocells.Lights[static_cast<std::size_t>(device)];
    light = {LightNow(state, device), light.To, state.Now};
  }
}

void StartPhotocells(EngineState& state, const Configuration* before) {
  const InputSettings& inputs = state.Settings->Inputs;
  state.Photocells.HeardFrom = state.Now + inputs.PhotocellMs;
  for (int device = 1; device <= Devices; ++device) {
    if (!inputs.IsPhotocell[static_cast<std::size_t>(device)]) continue;
    Schedule(state, device);
    for (int i = 0; i < DeviceInputs; ++i) {
      const auto number = static_cast<std::size_t>(SwitchOf(device, i));
      const bool isNews = !before || inputs.Each[number] != before->Inputs.Each[number];
      if (isNews) state.Photocells.Unheard.set(number);
    }
  }
}

void RunPhotocell(EngineState& state, int device) {
  const auto place = static_cast<std::size_t>(device);
  const InputSettings& inputs = state.Settings->Inputs;
  if (!state.Powered || state.Inputs.Silent[place] || !inputs.IsPhotocell[place]) return;
  const std::int64_t light = LightNow(state, device);
  const std::int64_t to = state.Photocells.Lights[place].To;
  for (int i = 0; i < DeviceInputs; ++i) {
    const int number = SwitchOf(device, i);
    const auto at = static_cast<std::size_t>(number);
    const auto says = [&setting = inputs.Each[at]](std::int64_t level) {
      return reading::PhotocellSays(level, setting.OnLevel * LightUnits,
                                    setting.OffLevel * LightUnits);
    };
    // On its way to where it says something else, or nothing, the light says nothing yet.
    const std::optional<bool> closes = says(light);
    if (!closes || closes != says(to)) continue;
    const bool isNews = state.Photocells.Unheard[at];
    if (isNews && state.Now < state.Photocells.HeardFrom) continue;
    if (isNews && SwitchClosed(state, number) == *closes) {
      state.Inputs.DeviceContacts[place] ^= static_cast<std::uint8_t>(1 << i);
    }
    state.Photocells.Unheard.reset(at);
    SetDeviceInput(state, device, i, *closes);
  }
  if (light == to) FollowPhotocell(state, device);
}

}  // namespace simulator
