#include <algorithm>
#include <span>
#include <stdexcept>
#include <utility>

#include "simulator/engine/engine.h"

// Contacts, local and on devices, and photocells.

namespace simulator {

namespace {

constexpr std::int64_t QuarterHourMs = QuarterMinutes * MinuteMs;

std::size_t CheckedDevice(int device) {
  if (device < 1 || device > Devices) throw std::out_of_range("device " + std::to_string(device));
  return static_cast<std::size_t>(device);
}

std::size_t CheckedDeviceInput(int device, int input) {
  CheckedDevice(device);
  if (input < 0 || input >= DeviceInputs) throw std::out_of_range("input " + std::to_string(input));
  return static_cast<std::size_t>(SwitchOf(device, input));
}

}  // namespace

Subject Engine::SwitchSubject(int number) const {
  if (number < Items) return {Subject::Kind::Input, number, 0};
  const int index = number - Items;
  return {Subject::Kind::DeviceInput, index / DeviceInputs + 1, index % DeviceInputs};
}

bool Engine::SwitchClosed(int number) const {
  if (number < Items) return (Contacts[static_cast<std::size_t>(number)] & 1) != 0;
  const int index = number - Items;
  const auto device = static_cast<std::size_t>(index / DeviceInputs) + 1;
  return (DeviceContacts[device] >> index % DeviceInputs & 1) != 0;
}

bool Engine::IsSilent(int number) const {
  return number >= Items && Silent[static_cast<std::size_t>((number - Items) / DeviceInputs) + 1];
}

bool Engine::InActiveTimes(int number) const {
  if (number >= Items) return true;
  const std::int64_t enable =
      Settings->EnableQuarter[static_cast<std::size_t>(number)] * QuarterHourMs;
  const std::int64_t disable =
      Settings->DisableQuarter[static_cast<std::size_t>(number)] * QuarterHourMs;
  const std::int64_t time = Wall() % DayMs;
  if (enable <= disable) return enable == disable || (time >= enable && time < disable);
  return time >= enable || time < disable;
}

bool Engine::Active(int number) const {
  return InActiveTimes(number) && !IsSilent(number) && !(number < Items && Has(InputsOff, number));
}

bool Engine::DeviceInput(int device, int input) const {
  return SwitchClosed(static_cast<int>(CheckedDeviceInput(device, input)));
}

int Engine::DeviceInputBits(int device) const {
  return DeviceContacts[CheckedDevice(device)];
}

void Engine::SetSilent(int device, bool silent) {
  if (std::exchange(Silent[CheckedDevice(device)], silent) == silent) return;
  Refresh();
  RunPhotocell(device);
  RunLevelSwitches({Subject::Kind::Hand, 0, 0});
}

bool Engine::DevicePilot(int device, int input) const {
  return Pilot(static_cast<int>(CheckedDeviceInput(device, input)));
}

void Engine::SetContact(int input, Contact contact, bool closed) {
  Refresh();
  std::uint8_t& state = Contacts.at(static_cast<std::size_t>(input));
  const auto bit = static_cast<std::uint8_t>(contact);
  if (((state & bit) != 0) == closed) return;
  state ^= bit;
  const Subject cause = SwitchSubject(input);
  if (contact == Contact::On) {
    Tell(cause, cause, closed ? Change::On : Change::Off,
         Settings->InputNames[static_cast<std::size_t>(input)]);
  } else {
    TellFires(cause, closed ? "off contact closes" : "off contact opens");
  }
  RunSwitch(input, contact, closed, cause);
}

void Engine::SetDeviceInput(int device, int input, bool closed) {
  const auto number = static_cast<int>(CheckedDeviceInput(device, input));
  Refresh();
  if (SwitchClosed(number) == closed) return;
  DeviceContacts[static_cast<std::size_t>(device)] ^= static_cast<std::uint8_t>(1 << input);
  const Subject cause = SwitchSubject(number);
  Tell(cause, cause, closed ? Change::On : Change::Off,
       Settings->DeviceNames[static_cast<std::size_t>(device)]);
  RunSwitch(number, Contact::On, closed, cause);
}

void Engine::RunSwitch(int number, Contact contact, bool closed, const Subject& cause) {
  using enum InputKind;
  const SwitchSetting& setting = Settings->Inputs[static_cast<std::size_t>(number)];
  const bool isOn = contact == Contact::On;
  const bool press = isOn && closed;
  const Mask left = isOn && !closed ? Leave(number) : 0;
  if (Active(number)) {
    switch (setting.Kind) {
      case MomentaryOnOff:
        if (press) SwitchOn(setting);
        if (closed && !isOn) SwitchOff(setting);
        break;
      case MomentaryPB:
        if (press) Toggle(setting);
        break;
      case MaintainedOnOff:
        if (press) {
          Occupy(number, setting.TurnsOn());
          SwitchOn(setting);
        }
        if (closed != isOn) {
          SwitchOff(setting);
          BeginOverride(left & Told & ~Warned);
        }
        break;
      case MaintainedMultiWay:
        if (isOn) Toggle(setting);
        break;
      case InputKind::SetPreset:
        if (press && setting.Preset < Items) ApplyPreset(setting.Preset, cause);
        break;
      case InputKind::TimedOn:
        if (press) Occupy(number, setting.Rows[1]);
        if (isOn) BeginTimedOn(setting, closed);
        break;
      case HIDBiLevel:
      case TwoStep:
      case FourStep:
        if (press) NextStep(setting);
        break;
      case InputKind::ForceTimer:
        if (press) EachBit(setting.Rows[1], [&](int timer) { ApplyTimer(timer, cause); });
        break;
      default:
        break;
    }
    if (isOn && Settings->SlotSwitches[static_cast<std::size_t>(number)]) {
      RunSlots(DimmerSlot::Kind::Input, number, closed);
    }
  }
  RunLevelSwitches(cause);
}

Mask Engine::Occupied() const {
  Mask relays = 0;
  for (const Occupant& occupant : Occupants) {
    if (Active(occupant.Switch)) relays |= occupant.Relays;
  }
  return relays;
}

void Engine::Occupy(int number, Mask relays) {
  const int device = number < Items ? 0 : (number - Items) / DeviceInputs + 1;
  // A photocell is nobody.
  if (!Settings->IsPhotocell[static_cast<std::size_t>(device)]) {
    Occupants.push_back({number, relays});
  }
}

Mask Engine::Leave(int number) {
  Mask relays = 0;
  std::erase_if(Occupants, [&](const Occupant& occupant) {
    if (occupant.Switch == number) relays |= occupant.Relays;
    return occupant.Switch == number;
  });
  return relays;
}

void Engine::SwitchOn(const SwitchSetting& setting) {
  PersonTurnsOn(setting.TurnsOn());
}

void Engine::SwitchOff(const SwitchSetting& setting) {
  TurnOff(setting.Rows[OffOnly] | setting.Rows[OnAndOff]);
  WarnOff(setting.Rows[BlinkAlert]);
}

void Engine::Toggle(const SwitchSetting& setting) {
  const Mask on = setting.TurnsOn();
  // A press during the warning keeps the light.
  if ((on & ~Told) == 0 && (on & Warned) == 0) {
    SwitchOff(setting);
  } else {
    SwitchOn(setting);
  }
}

void Engine::BeginTimedOn(const SwitchSetting& setting, bool closed) {
  const Mask relays = setting.Rows[1];
  if (closed) PersonTurnsOn(relays);
  if (closed != Settings->TimedOnFromClosing) return;
  // Those that somebody has switched off meanwhile stay off; a time begun again counts from now.
  Forget(relays & Told);
  Schedule({Present + setting.Minutes * MinuteMs, Due::TimeOver, relays & Told});
}

void Engine::NextStep(const SwitchSetting& setting) {
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
  const Mask now = Told & all;
  const auto count = steps.size();
  const auto at =
      std::find_if(steps.begin(), steps.end(), [&](int step) { return lit(step) == now; });
  // From no step at all the way goes to the first that lights something.
  std::size_t next = at != steps.end() ? static_cast<std::size_t>(at - steps.begin()) : count - 1;
  for (std::size_t tries = 0; tries < count; ++tries) {
    next = (next + 1) % count;
    const Mask wanted = lit(steps[next]);
    if (wanted == now || (at == steps.end() && wanted == 0)) continue;
    TurnOff(all & ~wanted);
    PersonTurnsOn(wanted);
    return;
  }
}

void Engine::RunLevelSwitches(const Subject& cause) {
  if (!Settings->LevelSwitches.empty() || (InputsOff | TimersOff | Held) != 0) {
    Mask inputs = 0;
    Mask timers = 0;
    Mask on = 0;
    Mask off = 0;
    Mask status = 0;
    for (const bool disabling : {true, false}) {  // these first: they cannot be disabled themselves
      for (const int number : Settings->LevelSwitches) {
        const SwitchSetting& setting = Settings->Inputs[static_cast<std::size_t>(number)];
        if ((setting.Kind == InputKind::InputDisable) != disabling) continue;
        if (!SwitchClosed(number) || IsSilent(number) || !InActiveTimes(number)) continue;
        if (!disabling && number < Items && Has(inputs, number)) continue;
        if (disabling) {
          inputs |= setting.Rows[1];
        } else if (setting.Kind == InputKind::TimerDisable) {
          timers |= setting.Rows[1];
        } else {
          on |= setting.Rows[1];
          off |= setting.Rows[2];
          status |= setting.Rows[3];
        }
      }
    }
    const auto tell = [&](Mask& known, Mask next, Subject::Kind kind, const auto& names) {
      const Mask changed = known ^ next;
      known = next;
      EachBit(changed, [&](int i) {
        Tell(cause, {kind, i, 0}, Has(next, i) ? Change::Disabled : Change::Enabled,
             names[static_cast<std::size_t>(i)]);
      });
    };
    tell(InputsOff, inputs, Subject::Kind::Input, Settings->InputNames);
    tell(TimersOff, timers, Subject::Kind::Timer, Settings->TimerNames);
    // Off stands before on, and both before the status, which is that of the moment it began.
    const Mask frozen = (HeldOn & StatusHeld) | (Output & ~StatusHeld);
    StatusHeld = status;
    Held = on | off | status;
    HeldOn = (on | (frozen & status)) & ~off;
  }
  Settle(cause);
}

// Photocells
// ---------------------------------------------------------------------------------------

int Engine::PhotocellLevel(int device) const {
  return static_cast<int>(Lights[CheckedDevice(device)].To / LightUnits);
}

std::int64_t Engine::LightNow(int device) const {
  const Light& light = Lights[static_cast<std::size_t>(device)];
  const std::int64_t passed = Present - light.Since;
  if (passed >= Settings->PhotocellMs) return light.To;
  // Cut towards where it came from in either direction, so that a level is reached in its time.
  return light.From + (light.To - light.From) * passed / Settings->PhotocellMs;
}

void Engine::SetPhotocell(int device, int level) {
  Light& light = Lights[CheckedDevice(device)];
  if (level < 0 || level > 255) throw std::out_of_range("level " + std::to_string(level));
  Refresh();
  if (light.To == level * LightUnits) return;
  light = {LightNow(device), level * LightUnits, Present};
  if (Settings->IsPhotocell[static_cast<std::size_t>(device)]) SchedulePhotocell(device);
}

void Engine::StartPhotocells(const Configuration& before) {
  for (int device = 1; device <= Devices; ++device) {
    if (!Settings->IsPhotocell[static_cast<std::size_t>(device)]) continue;
    SchedulePhotocell(device);
    for (int i = 0; i < DeviceInputs; ++i) {
      const auto number = static_cast<std::size_t>(SwitchOf(device, i));
      if (Settings->Inputs[number] != before.Inputs[number]) Unheard.set(number);
    }
  }
}

void Engine::SchedulePhotocell(int device) {
  std::erase_if(Queue, [device](const Pending& pending) {
    return pending.What == Due::Photocell && pending.Number == device;
  });
  const Light& light = Lights[static_cast<std::size_t>(device)];
  const std::int64_t way = std::abs(light.To - light.From);
  std::vector<Instant> instants{light.Since + Settings->PhotocellMs};
  const auto passes = [&](int level) {
    const std::int64_t from = std::abs(level * LightUnits - light.From);
    const std::int64_t left = std::abs(level * LightUnits - light.To);
    if (from + left != way || way == 0) return;
    instants.push_back(light.Since + (from * Settings->PhotocellMs + way - 1) / way);
  };
  for (int i = 0; i < DeviceInputs; ++i) {
    const auto at = static_cast<std::size_t>(SwitchOf(device, i));
    passes(Settings->Inputs[at].OnLevel);
    passes(Settings->Inputs[at].OffLevel);
  }
  std::sort(instants.begin(), instants.end());
  instants.erase(std::unique(instants.begin(), instants.end()), instants.end());
  for (const Instant at : instants) Schedule({at, Due::Photocell, 0, device});
}

void Engine::RunPhotocell(int device) {
  const auto place = static_cast<std::size_t>(device);
  if (Silent[place] || !Settings->IsPhotocell[place]) return;
  const std::int64_t light = LightNow(device);
  const std::int64_t to = Lights[place].To;
  for (int i = 0; i < DeviceInputs; ++i) {
    const int number = SwitchOf(device, i);
    const auto at = static_cast<std::size_t>(number);
    const auto says = [&setting = Settings->Inputs[at]](std::int64_t level) {
      return reading::PhotocellSays(level, setting.OnLevel * LightUnits,
                                    setting.OffLevel * LightUnits);
    };
    // On its way to where it says something else, or nothing, the light says nothing yet.
    const std::optional<bool> closes = says(light);
    if (!closes || closes != says(to)) continue;
    if (Unheard[at] && SwitchClosed(number) && *closes) {
      DeviceContacts[place] ^= static_cast<std::uint8_t>(1 << i);
    }
    Unheard.reset(at);
    SetDeviceInput(device, i, *closes);
  }
  if (light == to) FollowPhotocell(device);
}

}  // namespace simulator
