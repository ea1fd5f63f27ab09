#include "simulator/engine/engine_inputs.h"

#include <algorithm>
#include <span>
#include <stdexcept>

#include "simulator/engine/engine_dimmers.h"
#include "simulator/engine/engine_relays.h"
#include "simulator/engine/engine_settle.h"

namespace simulator {

namespace {

constexpr std::int64_t QuarterHourMs = QuarterMinutes * MinuteMs;

bool InActiveTimes(const EngineState& state, int number) {
  if (number >= Items) return true;
  const InputSettings& inputs = state.Settings->Inputs;
  const auto at = static_cast<std::size_t>(number);
  const std::int64_t enable = inputs.EnableQuarter[at] * QuarterHourMs;
  const std::int64_t disable = inputs.DisableQuarter[at] * QuarterHourMs;
  const std::int64_t time = state.Wall() % DayMs;
  if (enable <= disable) return enable == disable || (time >= enable && time < disable);
  return time >= enable || time < disable;
}

/// Whether it is heard at all.
bool IsHeard(const EngineState& state, int number) {
  const Deafness deafness = DeafnessOf(state, number);
  return deafness == Deafness::None || deafness == Deafness::Disabled;
}

/// Heard, and not disabled by another.
bool IsActive(const EngineState& state, int number) {
  return DeafnessOf(state, number) == Deafness::None;
}

void Occupy(EngineState& state, int number, Mask relays) {
  // A photocell is nobody.
  if (!state.Settings->Inputs.IsPhotocell[static_cast<std::size_t>(DeviceOf(number))]) {
    state.Inputs.Occupants.push_back({number, relays});
  }
}

/// The relays that it still held.
Mask Leave(EngineState& state, int number) {
  Mask relays = 0;
  std::erase_if(state.Inputs.Occupants, [&](const InputState::Occupant& occupant) {
    if (occupant.Switch == number) relays |= occupant.Relays;
    return occupant.Switch == number;
  });
  return relays;
}

void SwitchOn(EngineState& state, const SwitchSetting& setting) {
  PersonTurnsOn(state, setting.TurnsOn());
}

void SwitchOff(EngineState& state, const SwitchSetting& setting) {
  TurnOff(state, setting.Rows[OffOnly] | setting.Rows[OnAndOff]);
  WarnOff(state, setting.Rows[BlinkAlert]);
}

void Toggle(EngineState& state, const SwitchSetting& setting) {
  const Mask on = setting.TurnsOn();
  // A press during the warning keeps the light.
  if ((on & ~state.Relays.Told) == 0 && (on & state.Relays.Warned) == 0) {
    SwitchOff(state, setting);
  } else {
    SwitchOn(state, setting);
  }
}

void BeginTimedOn(EngineState& state, const SwitchSetting& setting, bool closed) {
  const Mask relays = setting.Rows[1];
  if (closed) PersonTurnsOn(state, relays);
  if (closed != state.Settings->Inputs.TimedOnFromClosing) return;
  // Those that somebody has switched off meanwhile stay off; a time begun again counts from now.
  Forget(state, relays & state.Relays.Told);
  state.Await(state.Now + setting.Minutes * MinuteMs, Due::TimeOver, relays & state.Relays.Told);
}

void NextStep(EngineState& state, const SwitchSetting& setting) {
  std::span<const int> steps = reading::FourSteps;
  if (setting.Kind == InputKind::TwoStep) steps = reading::TwoSteps;
  if (setting.Kind == InputKind::HIDBiLevel) steps = reading::BiLevelSteps;
  const auto lit = [&setting](int step) {
    Mask relays = 0;
    EachBit(static_cast<Mask>(step),
            [&](int code) { relays |= setting.Rows[static_cast<std::size_t>(code) + 1]; });
    return relays;
  };
  Mask all = 0;
  for (const int step : steps) all |= lit(step);
  const Mask now = state.Relays.Told & all;
  const auto count = steps.size();
  const auto at =
      std::find_if(steps.begin(), steps.end(), [&](int step) { return lit(step) == now; });
  // From no step at all the way goes to the first that lights something.
  std::size_t next = at != steps.end() ? static_cast<std::size_t>(at - steps.begin()) : count - 1;
  for (std::size_t tries = 0; tries < count; ++tries) {
    next = (next + 1) % count;
    const Mask wanted = lit(steps[next]);
    if (wanted == now || (at == steps.end() && wanted == 0)) continue;
    TurnOff(state, all & ~wanted);
    PersonTurnsOn(state, wanted);
    return;
  }
}

void RunSwitch(EngineState& state, int number, Contact contact, bool closed, const Subject& cause) {
  using enum InputKind;
  const SwitchSetting& setting = state.Settings->Inputs.Each[static_cast<std::size_t>(number)];
  if (!state.Powered) return;
  const bool isOn = contact == Contact::On;
  const bool press = isOn && closed;
  const Mask left = isOn && !closed ? Leave(state, number) : 0;
  if (IsActive(state, number)) {
    switch (setting.Kind) {
      case MomentaryOnOff:
        if (press) SwitchOn(state, setting);
        if (closed && !isOn) SwitchOff(state, setting);
        break;
      case MomentaryPB:
        if (press) Toggle(state, setting);
        break;
      case MaintainedOnOff:
        if (press) {
          Occupy(state, number, setting.TurnsOn());
          SwitchOn(state, setting);
        }
        if (closed != isOn) {
          SwitchOff(state, setting);
          BeginOverride(state, left & state.Relays.Told & ~state.Relays.Warned);
        }
        break;
      case MaintainedMultiWay:
        if (isOn) Toggle(state, setting);
        break;
      case SetPreset:
        if (press && setting.Preset < Items) ApplyPreset(state, setting.Preset, cause);
        break;
      case TimedOn:
        if (press) Occupy(state, number, setting.Rows[1]);
        if (isOn) BeginTimedOn(state, setting, closed);
        break;
      case HIDBiLevel:
      case TwoStep:
      case FourStep:
        if (press) NextStep(state, setting);
        break;
      case ForceTimer:
        if (press) EachBit(setting.Rows[1], [&](int timer) { ApplyTimer(state, timer, cause); });
        break;
      default:
        break;
    }
    if (isOn && state.Settings->Dimmers.SlotSwitches[static_cast<std::size_t>(number)]) {
      RunSlots(state, DimmerSlot::Kind::Input, number, closed);
    }
  }
  RunLevelSwitches(state, cause);
}

/// What the level switches that are closed and in force ask for.
struct LevelWishes {
  Mask Inputs = 0;  // disabled
  Mask Timers = 0;  // disabled
  Mask On = 0;
  Mask Off = 0;
  std::vector<int> Statuses;  // switches that hold it
};

LevelWishes WishesOf(const EngineState& state) {
  LevelWishes wishes;
  for (const bool disabling : {true, false}) {
    for (const int number : state.Settings->Inputs.LevelSwitches) {
      const SwitchSetting& setting = state.Settings->Inputs.Each[static_cast<std::size_t>(number)];
      if ((setting.Kind == InputKind::InputDisable) != disabling) continue;
      if (!SwitchClosed(state, number) || !IsHeard(state, number)) continue;
      if (number < Items && Has(wishes.Inputs, number)) continue;
      if (disabling) {
        wishes.Inputs |= setting.Rows[1];
      } else if (setting.Kind == InputKind::TimerDisable) {
        wishes.Timers |= setting.Rows[1];
      } else {
        wishes.On |= setting.Rows[1];
        wishes.Off |= setting.Rows[2];
        if (setting.Rows[3] != 0) wishes.Statuses.push_back(number);
      }
    }
  }
  return wishes;
}

/// What is on and off by the statuses that switches hold.
Outcome HoldStatuses(EngineState& state, const std::vector<int>& switches) {
  std::vector<RelayState::Status>& known = state.Relays.Statuses;
  std::erase_if(known, [&](const RelayState::Status& status) {
    return std::find(switches.begin(), switches.end(), status.Switch) == switches.end();
  });
  for (const int number : switches) {
    const bool holds = std::any_of(known.begin(), known.end(),
                                   [&](const auto& status) { return status.Switch == number; });
    if (!holds) known.push_back({number, state.Relays.Output});
  }
  Outcome held;
  for (const RelayState::Status& status : known) {
    const Mask relays =
        state.Settings->Inputs.Each[static_cast<std::size_t>(status.Switch)].Rows[3] & ~held.All();
    held.Then(relays & status.On, relays & ~status.On);
  }
  return held;
}

}  // namespace

std::size_t CheckedDevice(int device) {
  if (device < 1 || device > Devices) throw std::out_of_range("device " + std::to_string(device));
  return static_cast<std::size_t>(device);
}

int CheckedSwitch(int device, int input) {
  CheckedDevice(device);
  if (input < 0 || input >= DeviceInputs) throw std::out_of_range("input " + std::to_string(input));
  return SwitchOf(device, input);
}

Deafness DeafnessOf(const EngineState& state, int number) {
  if (state.Inputs.Silent[static_cast<std::size_t>(DeviceOf(number))]) return Deafness::Silent;
  if (!InActiveTimes(state, number)) return Deafness::OutsideActiveTimes;
  const bool disabled = number < Items && Has(state.Inputs.Disabled, number);
  return disabled ? Deafness::Disabled : Deafness::None;
}

bool LevelSwitchInForce(const EngineState& state, int number) {
  return SwitchClosed(state, number) && IsActive(state, number);
}

Subject SwitchSubject(int number) {
  if (number < Items) return {Subject::Kind::Input, number, 0};
  return {Subject::Kind::DeviceInput, DeviceOf(number), InputOf(number)};
}

bool SwitchClosed(const EngineState& state, int number) {
  const auto device = static_cast<std::size_t>(DeviceOf(number));
  if (device == 0) return (state.Inputs.Contacts[static_cast<std::size_t>(number)] & 1) != 0;
  return (state.Inputs.DeviceContacts[device] >> InputOf(number) & 1) != 0;
}

Mask OccupiedRelays(const EngineState& state) {
  Mask relays = 0;
  for (const InputState::Occupant& occupant : state.Inputs.Occupants) {
    if (IsActive(state, occupant.Switch)) relays |= occupant.Relays;
  }
  return relays;
}

void SetContact(EngineState& state, int input, Contact contact, bool closed) {
  std::uint8_t& contacts = state.Inputs.Contacts.at(static_cast<std::size_t>(input));
  const auto bit = static_cast<std::uint8_t>(contact);
  if (((contacts & bit) != 0) == closed) return;
  contacts ^= bit;
  const Subject cause = SwitchSubject(input);
  state.Begin(cause);
  if (contact == Contact::On) {
    state.Tell(cause, cause, closed ? Change::On : Change::Off,
               state.Settings->Names.Input[static_cast<std::size_t>(input)]);
  } else {
    state.TellFires(cause, closed ? "off contact closes" : "off contact opens");
  }
  RunSwitch(state, input, contact, closed, cause);
}

void SetDeviceInput(EngineState& state, int device, int input, bool closed) {
  const int number = CheckedSwitch(device, input);
  if (SwitchClosed(state, number) == closed) return;
  const auto place = static_cast<std::size_t>(device);
  state.Inputs.DeviceContacts[place] ^= static_cast<std::uint8_t>(1 << input);
  const Subject cause = SwitchSubject(number);
  state.Begin(cause);
  state.Tell(cause, cause, closed ? Change::On : Change::Off, state.Settings->Names.Device[place]);
  RunSwitch(state, number, Contact::On, closed, cause);
}

void RunLevelSwitches(EngineState& state, const Subject& cause) {
  RelayState& relays = state.Relays;
  Mask& inputs = state.Inputs.Disabled;
  Mask& timers = state.Days.DisabledTimers;
  if (!state.Settings->Inputs.LevelSwitches.empty() || (inputs | timers | relays.Held) != 0) {
    const LevelWishes wishes = WishesOf(state);
    const auto disable = [&](Mask& known, Mask next, Subject::Kind kind, const auto& names) {
      const Mask changed = known ^ next;
      known = next;
      EachBit(changed, [&](int i) {
        state.Tell(cause, {kind, i, 0}, Has(next, i) ? Change::Disabled : Change::Enabled,
                   names[static_cast<std::size_t>(i)]);
      });
    };
    disable(inputs, wishes.Inputs, Subject::Kind::Input, state.Settings->Names.Input);
    disable(timers, wishes.Timers, Subject::Kind::Timer, state.Settings->Names.Timer);
    // Off stands before on, and both before the status.
    const Outcome status = HoldStatuses(state, wishes.Statuses);
    relays.Held = wishes.On | wishes.Off | status.All();
    relays.HeldOn = (wishes.On | status.On) & ~wishes.Off;
  }
  Settle(state, cause);
}

}  // namespace simulator
