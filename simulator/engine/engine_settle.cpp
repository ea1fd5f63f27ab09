#include "simulator/engine/engine_settle.h"

#include "simulator/engine/engine_dimmers.h"
#include "simulator/engine/engine_inputs.h"

namespace simulator {

namespace {

Change OnOrOff(bool on) {
  return on ? Change::On : Change::Off;
}

bool IsLit(const EngineState& state, const PilotSetting& pilot) {
  if (!state.Powered) return false;
  switch (pilot.What) {
    case PilotSetting::Kind::Relay:
      return Has(state.Relays.Output, pilot.Number);
    case PilotSetting::Kind::Group:
      return GroupIsOn(state, pilot.Number);
    case PilotSetting::Kind::Preset:
      return PresetStands(state, pilot.Number).value_or(false);
    default:
      return pilot.Number != 0;
  }
}

void TellSettledRelays(const EngineState& state, const Subject& cause, std::string_view ownWords,
                       Mask changed, Mask blinks) {
  const Mask blinked = state.Shown.Blinking;
  EachBit(changed | (blinks ^ blinked), [&](int relay) {
    const Subject item{Subject::Kind::Relay, relay, 0};
    const Subject& source = ownWords.empty() ? cause : item;
    const std::string& name = state.Settings->Names.Relay[static_cast<std::size_t>(relay)];
    if (!ownWords.empty()) state.TellFires(source, ownWords);
    const bool begins = Has(blinks & ~blinked, relay);
    if (Has(changed, relay) || !begins) {
      state.Tell(source, item, OnOrOff(Has(state.Relays.Output, relay)), name);
    }
    if (begins) state.Tell(source, item, Change::Blinks, name);
  });
}

void TellGroupsAndPresets(EngineState& state, const Subject& cause, Mask changed) {
  const Configuration& settings = *state.Settings;
  const auto show = [&](Mask& shown, const Subject& item, bool on, const std::string& name) {
    if (on == Has(shown, item.Number)) return;
    shown ^= Bit(item.Number);
    state.Tell(cause, item, OnOrOff(on), name);
  };
  for (int i = 0; i < Items; ++i) {
    const auto at = static_cast<std::size_t>(i);
    if ((settings.Groups[at] & changed) == 0) continue;
    show(state.Shown.Groups, {Subject::Kind::Group, i, 0}, GroupIsOn(state, i),
         settings.Names.Group[at]);
  }
  for (int i = 0; i < Items; ++i) {
    const auto at = static_cast<std::size_t>(i);
    if ((settings.Presets[at].All() & changed) == 0) continue;
    show(state.Shown.Presets, {Subject::Kind::Preset, i, 0}, PresetStands(state, i).value_or(false),
         settings.Names.Preset[at]);
  }
}

void TellPilots(EngineState& state, const Subject& cause) {
  if (!state.Out.IsThere()) return;
  const Configuration& settings = *state.Settings;
  for (std::size_t i = 0; i < settings.Inputs.Pilots.size(); ++i) {
    const PilotSetting& pilot = settings.Inputs.Pilots[i];
    const bool lit = IsLit(state, pilot);
    if (lit == state.Shown.Pilots[i]) continue;
    state.Shown.Pilots[i] = lit;
    Subject item = SwitchSubject(pilot.Switch);
    const bool local = item.What == Subject::Kind::Input;
    item.What = local ? Subject::Kind::Pilot : Subject::Kind::DevicePilot;
    const auto number = static_cast<std::size_t>(item.Number);
    state.Tell(cause, item, OnOrOff(lit),
               local ? settings.Names.Input[number] : settings.Names.Device[number]);
  }
}

}  // namespace

void Settle(EngineState& state, const Subject& cause, std::string_view ownWords) {
  const Mask next = (state.Relays.Told & ~state.Relays.Held) | state.Relays.HeldOn;
  const Mask changed = next ^ state.Relays.Output;
  const bool dims = (changed & state.Settings->Dimmers.Relays) != 0;
  if (dims) FollowRelays(state, next);
  state.Relays.Output = next;
  const Mask blinks = BlinkingRelays(state);
  if (state.Out.IsThere()) {
    Subject source = cause;
    const Mask told = changed | (blinks ^ state.Shown.Blinking);
    if (!ownWords.empty() && told != 0) {
      source = {Subject::Kind::Relay, std::countr_zero(told), 0};
    }
    if (told != 0) TellSettledRelays(state, cause, ownWords, changed, blinks);
    if (changed != 0) {
      TellGroupsAndPresets(state, source, changed);
      TellPilots(state, source);
    }
    if (dims || state.Shown.LevelsChange) TellDimmers(state, source);
  }
  state.Shown.Blinking = blinks;
  state.Shown.LevelsChange = false;
}

void TellAllShown(EngineState& state, const Subject& cause) {
  TellGroupsAndPresets(state, cause, AllItems);
  TellPilots(state, cause);
}

void RememberShown(EngineState& state) {
  ShownState& shown = state.Shown;
  shown.Groups = shown.Presets = 0;
  for (int i = 0; i < Items; ++i) {
    if (GroupIsOn(state, i)) shown.Groups |= Bit(i);
    if (PresetStands(state, i).value_or(false)) shown.Presets |= Bit(i);
  }
  shown.Pilots.clear();
  for (const PilotSetting& pilot : state.Settings->Inputs.Pilots) {
    shown.Pilots.push_back(IsLit(state, pilot));
  }
  for (int i = 0; i < DimmerOutputs; ++i) {
    shown.Levels[static_cast<std::size_t>(i)] = GoalLevel(state, i);
  }
}

Mask BlinkingRelays(const EngineState& state) {
  const RelayState& relays = state.Relays;
  return relays.Warned & ~state.Settings->Relays.HIDDelay & relays.Output & ~relays.Held;
}

bool GroupIsOn(const EngineState& state, int group) {
  const Mask members = state.Settings->Groups.at(static_cast<std::size_t>(group));
  return members != 0 && (state.Relays.Output & members) == members;
}

std::optional<bool> PresetStands(const EngineState& state, int preset) {
  const Outcome& named = state.Settings->Presets.at(static_cast<std::size_t>(preset));
  if (named.All() == 0) return std::nullopt;
  const Mask output = state.Relays.Output;
  return (output & named.On) == named.On && (output & named.Off) == 0;
}

bool PilotIsLit(const EngineState& state, int number) {
  for (const PilotSetting& pilot : state.Settings->Inputs.Pilots) {
    if (pilot.Switch == number) return IsLit(state, pilot);
  }
  return false;
}

}  // namespace simulator
