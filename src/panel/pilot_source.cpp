#include "panel/pilot_source.h"

#include "panel/checked_arithmetic.h"
#include "panel/input_actions.h"
#include "panel/panel_record.h"
#include "panel/pilot_code.h"

std::optional<Item> PilotItem(int source, int number) {
  constexpr ItemKind kinds[] = {ItemKind::Relay, ItemKind::Group, ItemKind::Preset};
  if (source < PilotRelay || source > PilotPreset) return std::nullopt;
  return Item{kinds[source - PilotRelay], number};
}

QString PilotName(const Project& project, int source, int number) {
  const std::optional<Item> followed = PilotItem(source, number);
  return followed ? OwnName(project, *followed) : QString();
}

Int16 AutoMappedPilot(const FennlinkRecord& device, int input) {
  if (FennlinkInputKind(device.DeviceType, device.DeviceInputType(input)) == InputKind::SetPreset) {
    return ToInt16(device.DevicePreset(input) + WithPilotSource(0, PilotPreset));
  }
  for (Int16 relay = 0; relay < ItemCount; ++relay) {
    if (device.DeviceRelayControl(input, relay) != 0) return WithPilotSource(relay, PilotRelay);
  }
  for (Int16 group = 0; group < ItemCount; ++group) {
    if (device.DeviceGroupControl(input, group) != 0) return WithPilotSource(group, PilotGroup);
  }
  return WithPilotSource(0, PilotStatic);
}
