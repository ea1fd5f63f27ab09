#include <algorithm>
#include <stdexcept>

#include "simulator/panel.h"

namespace simulator {

namespace {

bool TurnsOn(int code) {
  return code == OnOnly || code == OnAndOff || code == BlinkAlert;
}

}  // namespace

Panel::InputAction Panel::LocalAction(int input) const {
  // By input type; the types of more than one step and the disabling ones do nothing here.
  static constexpr std::array kinds{
      InputKind::MomentaryOnOff,
      InputKind::MomentaryPB,
      InputKind::MaintainedOnOff,
      InputKind::MaintainedMultiWay,
      InputKind::SetPreset,
      InputKind::TimedOn,
      InputKind::None,
      InputKind::None,
      InputKind::None,
      InputKind::None,
      InputKind::None,
      InputKind::None,
      InputKind::ForceTimer,
  };
  InputAction action;
  const auto type = static_cast<std::size_t>(Memory.Byte(map::InputType + input));
  action.Kind = type < kinds.size() ? kinds[type] : InputKind::None;
  action.Preset = Memory.Byte(map::InputPreset + input);
  action.Minutes = Memory.Word(map::InputTimedOnTime + 2 * input);
  for (int row = 0; row < Items; ++row) {
    action.Codes[static_cast<std::size_t>(row)] = Memory.Code(map::InputRelayControl, row, input);
  }
  if (action.Kind != InputKind::ForceTimer) {
    MergeGroups(action, [&](int g) { return Memory.Code(map::InputGroupControl, g, input); });
  }
  return action;
}

Panel::InputAction Panel::DeviceAction(int device, int input) const {
  static constexpr std::array buttons{InputKind::MomentaryPB, InputKind::SetPreset,
                                      InputKind::TimedOn};
  static constexpr std::array fourInput{InputKind::MomentaryOnOff, InputKind::MomentaryPB,
                                        InputKind::MaintainedOnOff, InputKind::SetPreset,
                                        InputKind::TimedOn};
  static constexpr std::array eightInput{InputKind::MaintainedOnOff, InputKind::SetPreset,
                                         InputKind::TimedOn};
  const int block = map::DeviceBlock(device);
  const int deviceType = Memory.Byte(block);
  const auto type = static_cast<std::size_t>(Memory.Byte(block + map::DeviceInputType + input));
  const auto pick = [type](const auto& kinds) {
    return type < kinds.size() ? kinds[type] : InputKind::None;
  };
  InputAction action;
  if (deviceType >= 1 && deviceType <= 6) action.Kind = pick(buttons);
  if (deviceType == 7) action.Kind = pick(fourInput);
  if (deviceType == 8) action.Kind = pick(eightInput);
  action.Preset = Memory.Byte(map::DevicePreset(device) + input);
  action.Minutes = Memory.Word(block + map::DeviceTimedOnTime + 2 * input);
  for (int relay = 0; relay < Items; ++relay) {
    action.Codes[static_cast<std::size_t>(relay)] =
        Memory.Code(map::DeviceRelayControl(device), input, relay);
  }
  MergeGroups(action,
              [&](int g) { return Memory.Code(map::DeviceGroupControl(device), input, g); });
  return action;
}

/// A group's code is that of all its relays; a relay's own code goes first.
void Panel::MergeGroups(InputAction& action, const std::function<int(int)>& groupCode) const {
  for (int group = 0; group < Items; ++group) {
    const int code = groupCode(group);
    if (code == 0) continue;
    for (int relay = 0; relay < Items; ++relay) {
      int& own = action.Codes[static_cast<std::size_t>(relay)];
      if (own == 0 && Memory.Code(map::GroupRelayInclude, relay, group) != 0) own = code;
    }
  }
}

void Panel::SetContact(int input, Contact contact, bool closed) {
  int& state = Inputs.at(static_cast<std::size_t>(input));
  const int bit = static_cast<int>(contact);
  if (((state & bit) != 0) == closed) return;
  state ^= bit;
  RunInput(LocalAction(input), contact, closed);
}

void Panel::SetDeviceInput(int device, int input, bool closed) {
  if (device < 1 || device > Devices || input < 0 || input >= DeviceInputs) {
    throw std::out_of_range("device " + std::to_string(device) + " input " + std::to_string(input));
  }
  int& bits = DeviceBits[static_cast<std::size_t>(device)];
  const int bit = 1 << input;
  if (((bits & bit) != 0) == closed) return;
  bits ^= bit;
  if (DevicePresent(device)) RunInput(DeviceAction(device, input), Contact::On, closed);
}

void Panel::RunInput(const InputAction& action, Contact contact, bool closed) {
  Advance();
  const bool isOn = contact == Contact::On;
  switch (action.Kind) {
    case InputKind::None:
      break;
    case InputKind::MomentaryOnOff:
      if (closed && isOn) ActionOn(action);
      if (closed && !isOn) ActionOff(action);
      break;
    case InputKind::MomentaryPB:
      if (closed && isOn) ActionToggle(action);
      break;
    case InputKind::MaintainedOnOff:
      if (isOn && closed) ActionOn(action);
      if (closed != isOn) ActionOff(action);
      break;
    case InputKind::MaintainedMultiWay:
      ActionToggle(action);
      break;
    case InputKind::SetPreset:
      if (closed && isOn && action.Preset < Items) SetPreset(action.Preset);
      break;
    case InputKind::TimedOn:
      if (isOn) ActionTimedOn(action, closed);
      break;
    case InputKind::ForceTimer:
      for (int timer = 0; closed && isOn && timer < Items; ++timer) {
        if (action.Codes[static_cast<std::size_t>(timer)] == 1) ForceTimer(timer);
      }
      break;
  }
}

void Panel::ActionOn(const InputAction& action) {
  for (int relay = 0; relay < Items; ++relay) {
    if (TurnsOn(action.Codes[static_cast<std::size_t>(relay)])) SetRelay(relay, true);
  }
}

void Panel::ActionOff(const InputAction& action) {
  for (int relay = 0; relay < Items; ++relay) {
    const auto i = static_cast<std::size_t>(relay);
    const int code = action.Codes[i];
    if (code == OffOnly || code == OnAndOff) SetRelay(relay, false);
    // A blink alert warns first: the relay goes off when the alert time has passed.
    if (code == BlinkAlert && Relays[i]) {
      OffAtMs[i] = NowMs() + Memory.Byte(map::BlinkAlertMinutes) * MinuteMs;
    }
  }
}

/// Off when everything that the input can turn on is on already, on otherwise.
void Panel::ActionToggle(const InputAction& action) {
  bool allOn = true;
  for (std::size_t i = 0; i < Relays.size(); ++i) {
    if (TurnsOn(action.Codes[i]) && !Relays[i]) allOn = false;
  }
  if (allOn) {
    ActionOff(action);
  } else {
    ActionOn(action);
  }
}

void Panel::ActionTimedOn(const InputAction& action, bool closed) {
  const bool startsWhenClosed = Memory.Byte(map::TimedOnOperation) != 0;
  for (int relay = 0; relay < Items; ++relay) {
    const auto i = static_cast<std::size_t>(relay);
    if (action.Codes[i] == 0) continue;
    if (closed) SetRelay(relay, true);
    if (closed == startsWhenClosed) OffAtMs[i] = NowMs() + action.Minutes * MinuteMs;
  }
}

}  // namespace simulator
