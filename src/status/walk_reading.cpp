#include "status/walk_reading.h"

#include "line/panel_commands.h"
#include "panel/fennlink_types.h"
#include "panel/live_project.h"

namespace {

WalkState OnOff(bool on) {
  return {on ? QStringLiteral("on") : QStringLiteral("off"), on};
}

std::optional<WalkStates> ReadWalkedInputs() {
  const std::optional<InputStates> inputs = ReadInputs();
  if (!inputs) return {};
  WalkStates states;
  for (int i = 0; i < PanelIOCount(); ++i) {
    const InputState& input = (*inputs)(i);
    if (!input.Known) continue;
    const QString word = input.On && input.Off ? QStringLiteral("both contacts closed")
                         : input.On            ? QStringLiteral("closed")
                         : input.Off           ? QStringLiteral("Off contact closed")
                                               : QStringLiteral("open");
    states[{ItemKind::Input, i}] = {word, input.On || input.Off};
  }
  return states;
}

std::optional<WalkStates> ReadWalkedRelays() {
  const std::optional<OutputStates> relays = ReadRelays();
  if (!relays) return {};
  WalkStates states;
  for (int i = 0; i < PanelIOCount(); ++i) states[{ItemKind::Relay, i}] = OnOff((*relays)(i));
  return states;
}

std::optional<WalkStates> ReadWalkedStations() {
  const std::optional<DeviceBytes> inputs = ReadDeviceInputs();
  if (!inputs) return {};
  const std::optional<DeviceBytes> present = ReadDevicesPresent();
  if (!present) return {};
  WalkStates states;
  for (int device = 1; device <= DeviceCount; ++device) {
    const int configured = FennlinkDevice(FennlinkRecords(device).DeviceType).InputCount;
    for (int input = 0; input < DeviceInputCount; ++input) {
      const bool on = ((*inputs)(device) >> input & 1) != 0;
      if (input >= configured && !on) continue;
      const bool answers = (*present)(device) != 0;
      states[{ItemKind::DeviceInput, device, input}] =
          answers ? OnOff(on) : WalkState{QStringLiteral("no response"), false};
    }
  }
  return states;
}

}  // namespace

std::optional<WalkStates> ReadWalk(Walk walk) {
  switch (walk) {
    case Walk::Inputs:
      return ReadWalkedInputs();
    case Walk::Relays:
      return ReadWalkedRelays();
    case Walk::Stations:
      return ReadWalkedStations();
  }
  return {};
}
