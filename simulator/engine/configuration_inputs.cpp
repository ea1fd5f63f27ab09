#include <array>
#include <span>

#include "simulator/engine/configuration.h"
#include "simulator/engine/readings.h"

namespace simulator {

namespace {

/// What the numbers of the inputs' types mean.
struct KindLists {
  using enum InputKind;
  static constexpr std::array Local{
      MomentaryOnOff, MomentaryPB,    MaintainedOnOff, MaintainedMultiWay, SetPreset,
      TimedOn,        HIDBiLevel,     TwoStep,         FourStep,           InputDisable,
      TimerDisable,   OutputOverride, ForceTimer};
  static constexpr std::array Station{MomentaryPB, SetPreset, TimedOn, TwoStep, FourStep};
  static constexpr std::array FourInput{MomentaryOnOff, MomentaryPB,   MaintainedOnOff, SetPreset,
                                        TimedOn,        HIDBiLevel,    TwoStep,         FourStep,
                                        TimerDisable,   OutputOverride};
  static constexpr std::array EightInput{MaintainedOnOff, SetPreset, TimedOn, TwoStep, FourStep};
  static constexpr std::array Photocell{MaintainedOnOff};
};

struct DeviceType {
  std::span<const InputKind> Kinds;
  int Buttons = 0;  // each with a pilot
};
constexpr std::array<DeviceType, 10> DeviceTypes{{{},
                                                  {KindLists::Station, 1},
                                                  {KindLists::Station, 2},
                                                  {KindLists::Station, 3},
                                                  {KindLists::Station, 4},
                                                  {KindLists::Station, 5},
                                                  {KindLists::Station, 8},
                                                  {KindLists::FourInput, 4},
                                                  {KindLists::EightInput, 8},
                                                  {KindLists::Photocell, 0}}};
constexpr std::size_t PhotocellType = 9;

InputKind KindAt(std::span<const InputKind> kinds, int type) {
  const auto index = static_cast<std::size_t>(type);
  return index < kinds.size() ? kinds[index] : InputKind::None;
}

/// A group's code is that of all its relays; a relay's own code stands before it, and a group's
/// before that of a later one.
void MergeGroups(SwitchSetting& setting, const CodeMasks& codes, const GroupMembers& groups) {
  if (!SpeaksOfRelays(setting.Kind)) return;
  Mask taken = setting.All();
  for (int group = 0; group < Items; ++group) {
    for (std::size_t code = 1; code < codes.size(); ++code) {
      if (!Has(codes[code], group)) continue;
      const Mask free = groups[static_cast<std::size_t>(group)] & ~taken;
      setting.Rows[code] |= free;
      taken |= free;
    }
  }
}

}  // namespace

InputSettings::InputSettings(const PanelMemory& memory, const GroupMembers& groups)
    : PhotocellMs(reading::PhotocellMs(memory.Byte(map::PhotocellFilter) == 1)),
      TimedOnFromClosing(memory.Byte(map::TimedOnOperation) == 1) {
  const auto relayCodes = ColumnsByCode(memory, map::InputRelayControl);
  const auto groupCodes = ColumnsByCode(memory, map::InputGroupControl);
  for (int i = 0; i < Items; ++i) {
    const auto at = static_cast<std::size_t>(i);
    SwitchSetting& setting = Each[at];
    setting.Kind = KindAt(KindLists::Local, memory.Byte(map::InputType + i));
    setting.Rows = relayCodes[at];
    MergeGroups(setting, groupCodes[at], groups);
    setting.Preset = memory.Byte(map::InputPreset + i);
    setting.Minutes = memory.Word(map::InputTimedOnTime + 2 * i);
    EnableQuarter[at] = memory.Byte(map::InputEnableTime + i);
    DisableQuarter[at] = memory.Byte(map::InputDisableTime + i);
  }
  for (int device = 1; device <= Devices; ++device) ReadDevice(memory, groups, device);
  for (int i = 0; i < Switches; ++i) {
    if (ActsWhileClosed(Each[static_cast<std::size_t>(i)].Kind)) LevelSwitches.push_back(i);
  }
  // One that disables inputs cannot be disabled.
  const auto disables = [](const SwitchSetting& setting) {
    return setting.Kind == InputKind::InputDisable;
  };
  Mask unstoppable = 0;
  for (int i = 0; i < Items; ++i) {
    if (disables(Each[static_cast<std::size_t>(i)])) unstoppable |= Bit(i);
  }
  for (SwitchSetting& setting : Each) {
    if (disables(setting)) setting.Rows[1] &= ~unstoppable;
  }
  ReadPilots(memory);
}

void InputSettings::ReadDevice(const PanelMemory& memory, const GroupMembers& groups, int device) {
  const int block = map::DeviceBlock(device);
  const auto type = static_cast<std::size_t>(memory.Byte(block));
  if (type == 0 || type >= DeviceTypes.size()) return;
  const auto place = static_cast<std::size_t>(device);
  IsPhotocell[place] = type == PhotocellType;
  Buttons[place] = DeviceTypes[type].Buttons;
  const auto relayCodes = RowsByCode(memory, map::DeviceRelayControl(device), DeviceInputs);
  const auto groupCodes = RowsByCode(memory, map::DeviceGroupControl(device), DeviceInputs);
  for (int i = 0; i < (IsPhotocell[place] ? DeviceInputs : Buttons[place]); ++i) {
    const auto at = static_cast<std::size_t>(i);
    SwitchSetting& setting = Each[static_cast<std::size_t>(SwitchOf(device, i))];
    const int inputType = memory.Byte(block + map::DeviceInputType + i);
    setting.Kind = KindAt(DeviceTypes[type].Kinds, IsPhotocell[place] ? 0 : inputType);
    setting.Rows = relayCodes[at];
    MergeGroups(setting, groupCodes[at], groups);
    setting.Preset = memory.Byte(map::DevicePreset(device) + i);
    setting.Minutes = memory.Word(block + map::DeviceTimedOnTime + 2 * i);
    setting.OffLevel = memory.Byte(block + map::DeviceOffLevel + i);
    setting.OnLevel = memory.Byte(block + map::DeviceOnLevel + i);
  }
}

void InputSettings::ReadPilots(const PanelMemory& memory) {
  using Kind = PilotSetting::Kind;
  const auto add = [&](int input, int kind, int value) {
    const int number = value & 63;
    const auto what = static_cast<Kind>(kind);
    if (kind <= static_cast<int>(Kind::Preset) && number < Items) {
      Pilots.push_back({what, what == Kind::Static ? value & 1 : number, input});
    }
  };
  for (int i = 0; i < memory.Points(); ++i) {
    const int value = memory.Byte(map::LocalPilot + i);
    add(i, value / 64 + 1, value);
  }
  for (int device = 1; device <= Devices; ++device) {
    for (int i = 0; i < Buttons[static_cast<std::size_t>(device)]; ++i) {
      const int value = memory.Byte(map::DeviceBlock(device) + map::DevicePilot + i);
      add(SwitchOf(device, i), value / 64, value);
    }
  }
}

}  // namespace simulator
