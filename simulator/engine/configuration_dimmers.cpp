#include "simulator/engine/configuration.h"

namespace simulator {

namespace {

std::int64_t FadeMsOf(int index) {
  constexpr int shortFades = 16;
  const int seconds = index < shortFades ? 2 * index : 40 + 10 * (index - shortFades);
  return seconds * SecondMs;
}

}  // namespace

DimmerSettings::DimmerSettings(const PanelMemory& memory) {
  for (int output = 0; output < DimmerOutputs; ++output) {
    const int block = map::DimmerBlock(output);
    const auto at = [&](int field) { return memory.Byte(block + field); };
    DimmerSetting& setting = Each[static_cast<std::size_t>(output)];
    setting.PowerOnLevel = at(map::PowerOnLevel);
    setting.RelayOnLevel = at(map::RelayOnLevel);
    setting.RelayOffLevel = at(map::RelayOffLevel);
    setting.Relays = RowBits(memory, block + map::RelayInclude);
    Relays |= setting.Relays;
    setting.FadeMs = FadeMsOf(at(map::FadeRate));
    setting.MinLevel = at(map::MinLevel);
    setting.MaxLevel = at(map::MaxLevel);
    setting.MinFromPhotocell = (at(map::TrackMode) & 4) != 0;
    setting.MaxFromPhotocell = (at(map::TrackMode) & 8) != 0;
    setting.Photocell = at(map::PhotocellDevice) % Devices + 1;
    for (int point = 0; point < 3; ++point) {
      setting.PointIn[static_cast<std::size_t>(point)] = at(map::PointAIn + 2 * point);
      setting.PointOut[static_cast<std::size_t>(point)] = at(map::PointAOut + 2 * point);
    }
    setting.Target = at(map::Target);
    const bool enabled = memory.Byte(map::DeviceEnabled + output / OutputsADimmer) != 0;
    setting.Fitted = enabled || setting.Relays != 0;
    // A device that is not enabled keeps to its relays.
    if (!enabled) continue;
    setting.TrackMode = at(map::TrackMode) & 3;
    ReadSlots(memory, output);
  }
}

void DimmerSettings::ReadSlots(const PanelMemory& memory, int output) {
  const int block = map::DimmerBlock(output);
  const auto at = [&](int field) { return memory.Byte(block + field); };
  for (int i = 0; i < map::ControlSlots; ++i) {
    enum Type { Unused, Input, Timer, Preset, InvertInput };
    const int type = at(map::ControlType + i) & 7;
    if (type == Unused || type > InvertInput) continue;
    DimmerSlot slot;
    slot.Output = output;
    slot.Number = at(map::ControlNumber + i);
    slot.Inverted = type == InvertInput;
    slot.Instant = (at(map::ControlType + i) & 0x80) != 0;
    slot.Action = at(map::ControlAction + i);
    slot.Revert = at(map::ControlRevert + i);
    const int device = at(map::ControlDevice + i);
    if (type == Timer || type == Preset) {
      if (slot.Number >= Items) continue;
      slot.What = type == Timer ? DimmerSlot::Kind::Timer : DimmerSlot::Kind::Preset;
      (type == Timer ? SlotTimers : SlotPresets) |= Bit(slot.Number);
    } else {
      if (device > Devices || slot.Number >= (device == 0 ? Items : DeviceInputs)) continue;
      if (device != 0) slot.Number = SwitchOf(device, slot.Number);
      SlotSwitches[static_cast<std::size_t>(slot.Number)] = true;
    }
    Slots.push_back(slot);
  }
}

}  // namespace simulator
