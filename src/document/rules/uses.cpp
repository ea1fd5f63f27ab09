#include "document/rules/uses.h"

#include <algorithm>

#include "panel/code_page.h"
#include "panel/dimmer_fields.h"
#include "panel/dimmer_words.h"
#include "panel/fennlink_types.h"
#include "panel/input_actions.h"
#include "panel/panel_record.h"
#include "panel/pilot_code.h"
#include "panel/pilot_source.h"

using namespace Qt::Literals::StringLiterals;

namespace {

ItemKind KindOfRows(ControlRows rows) {
  switch (rows) {
    case ControlRows::Groups:
      return ItemKind::Group;
    case ControlRows::Inputs:
      return ItemKind::Input;
    case ControlRows::Timers:
      return ItemKind::Timer;
    case ControlRows::Relays:
    case ControlRows::None:
      break;
  }
  return ItemKind::Relay;
}

class UseList {
 public:
  /// With room for inputs that act on everything: growing costs more than all that is looked at.
  UseList() {
    uses_.reserve(std::size_t{ItemCount + DeviceCount * DeviceInputCount} * 2 * ItemCount);
  }
  void Add(const Item& user, const Item& used, unsigned effect, QLatin1StringView words) {
    uses_.push_back({user, used, effect, words});
  }

  /// The cells of one of an input's control tables. A code beyond the list counts as its last.
  template <typename CellOf>
  void AddControls(const Item& input, const std::optional<ControlOptions>& options, CellOf cell) {
    if (!options || options->Rows == ControlRows::None) return;
    for (int row = 0; row < ItemCount; ++row) {
      const Int16 code = std::min(cell(row), options->MaxControlCode());
      if (code <= 0) continue;
      const ControlAction& action = options->Meanings[static_cast<std::size_t>(code)];
      Add(input, {KindOfRows(options->Rows), row}, action.Effect,
          QLatin1StringView(action.Does.data(), static_cast<qsizetype>(action.Does.size())));
    }
  }

  void AddPilot(const Item& input, int source, int number) {
    const std::optional<Item> followed = PilotItem(source, number);
    if (followed) Add(input, *followed, EffectFollows, "has a pilot that follows"_L1);
  }

  std::vector<Use> Take() { return std::move(uses_); }

 private:
  std::vector<Use> uses_;
};

constexpr auto Activates = "activates"_L1;

void AddLocalInputs(UseList& uses, const Project& project) {
  const auto& panel = project.Panel;
  for (int input = 0; input < InstalledPoints(project); ++input) {
    const Item item{ItemKind::Input, input};
    const int type = panel.InputType(input);
    uses.AddControls(item, LocalControlOptions(type, ControlTable::Relay),
                     [&](int row) { return panel.InputRelayControl(input, row); });
    uses.AddControls(item, LocalControlOptions(type, ControlTable::Group),
                     [&](int row) { return panel.InputGroupControl(input, row); });
    if (LocalInputKind(type) == InputKind::SetPreset) {
      uses.Add(item, {ItemKind::Preset, panel.InputPreset(input)}, EffectRuns, Activates);
    }
    const Int16 pilot = panel.LocalPilot(input);
    uses.AddPilot(item, PilotSource(pilot) + PilotRelay, PilotNumber(pilot));
  }
}

void AddDeviceInputs(UseList& uses, const Project& project) {
  for (int n = 1; n <= DeviceCount; ++n) {
    const FennlinkRecord& device = project.Devices(n);
    const int count = FennlinkDevice(device.DeviceType).InputCount;
    for (int input = 0; input < count; ++input) {
      const Item item{ItemKind::DeviceInput, n, input};
      const int type = device.DeviceInputType(input);
      uses.AddControls(item, FennlinkControlOptions(device.DeviceType, type, ControlTable::Relay),
                       [&](int row) { return device.DeviceRelayControl(input, row); });
      uses.AddControls(item, FennlinkControlOptions(device.DeviceType, type, ControlTable::Group),
                       [&](int row) { return device.DeviceGroupControl(input, row); });
      if (FennlinkInputKind(device.DeviceType, type) == InputKind::SetPreset) {
        uses.Add(item, {ItemKind::Preset, device.DevicePreset(input)}, EffectRuns, Activates);
      }
      if (device.DeviceType == DeviceTypePhotocell) continue;
      const Int16 pilot = device.DevicePilot(input);
      uses.AddPilot(item, PilotSource(pilot), PilotNumber(pilot));
    }
  }
}

/// Code 1 turns on, code 2 off, for timers and presets alike.
void AddOnOff(UseList& uses, const Item& user, const Item& used, Int16 code, unsigned also) {
  if (code != 1 && code != 2) return;
  uses.Add(user, used, also | (code == 1 ? EffectOn : EffectOff),
           code == 1 ? "turns on"_L1 : "turns off"_L1);
}

void AddTimersGroupsAndPresets(UseList& uses, const Project& project) {
  const auto& panel = project.Panel;
  for (int i = 0; i < ItemCount; ++i) {
    for (int target = 0; target < ItemCount; ++target) {
      const Item timer{ItemKind::Timer, i};
      const Item relay{ItemKind::Relay, target};
      AddOnOff(uses, timer, relay, panel.TimerRelayControl(i, target), 0);
      AddOnOff(uses, timer, {ItemKind::Group, target}, panel.TimerGroupControl(i, target), 0);
      if (panel.TimerPresetControl(i, target) != 0) {
        uses.Add(timer, {ItemKind::Preset, target}, EffectRuns, Activates);
      }
      if (panel.GroupRelayInclude(i, target) != 0) {
        uses.Add({ItemKind::Group, i}, relay, EffectHolds, "includes"_L1);
      }
      AddOnOff(uses, {ItemKind::Preset, i}, relay, panel.PresetRelayControl(i, target),
               EffectHolds);
    }
    constexpr auto sweeps = "sweeps off"_L1;
    if (panel.OffHoursSweepRelay(i) != 0) {
      uses.Add({}, {ItemKind::Relay, i}, EffectOff, sweeps);
    }
    if (panel.OffHoursSweepGroup(i) != 0) {
      uses.Add({}, {ItemKind::Group, i}, EffectOff, sweeps);
    }
  }
}

void AddSlot(UseList& uses, const Item& item, const DimmerOutput& output, int slot) {
  constexpr auto words = "is controlled by"_L1;
  const int number = output(dim::ControlNumber, slot);
  switch (output(dim::ControlType, slot)) {
    case ControlInput:
    case ControlInvertInput: {
      const int device = output(dim::ControlDevice, slot);
      const Item input =
          device == 0 ? Item{ItemKind::Input, number} : Item{ItemKind::DeviceInput, device, number};
      uses.Add(item, input, EffectFollows, words);
      break;
    }
    case ControlTimer:
      uses.Add(item, {ItemKind::Timer, number}, EffectFollows, words);
      break;
    case ControlPreset:
      uses.Add(item, {ItemKind::Preset, number}, EffectFollows, words);
      break;
    default:
      break;
  }
}

void AddDimmers(UseList& uses, const Project& project) {
  for (int dev = 0; dev < DimmerDeviceCount; ++dev) {
    const bool enabled = DimmerEnabled(project.Dimmers, dev);
    for (int out = 0; out < DimmerOutputCount; ++out) {
      const Item item{ItemKind::DimmerOutput, dev, out};
      const DimmerOutput output(project.Dimmers, dev, out);
      for (int slot = 0; enabled && slot < ControlSlotCount; ++slot) {
        AddSlot(uses, item, output, slot);
      }
      for (int relay = 0; relay < ItemCount; ++relay) {
        if (output(dim::RelayInclude, relay) == 0) continue;
        uses.Add(item, {ItemKind::Relay, relay}, EffectFollows, "follows"_L1);
      }
      if (!enabled) continue;
      if (output(dim::TrackMode) != TrackDisabled || output(dim::MinFromPhotocell) != 0 ||
          output(dim::MaxFromPhotocell) != 0) {
        uses.Add(item, {ItemKind::Device, output(dim::PhotocellDevice) + 1}, EffectFollows,
                 "tracks"_L1);
      }
    }
  }
}

}  // namespace

std::vector<Use> UsesOfProject(const Project& project) {
  UseList uses;
  AddLocalInputs(uses, project);
  AddDeviceInputs(uses, project);
  AddTimersGroupsAndPresets(uses, project);
  AddDimmers(uses, project);
  return uses.Take();
}

QString SentenceOf(const Project& project, const Use& use) {
  return ItemText(project, use.User) + u' ' + use.Words + u' ' + ItemText(project, use.Used);
}

Screen ActionScreen(const Item& input, bool groups) {
  if (input.Kind == ItemKind::Input) {
    return groups ? Screen::InputToGroupControl : Screen::InputToRelayControl;
  }
  return groups ? Screen::FennlinkInputToGroupControl : Screen::FennlinkInputToRelayControl;
}

Screen ScreenOf(const Use& use) {
  const bool group = use.Used.Kind == ItemKind::Group;
  const bool follows = (use.Effect & EffectFollows) != 0;
  switch (use.User.Kind) {
    case ItemKind::Input:
      return follows ? Screen::LocalInputPilots : ActionScreen(use.User, group);
    case ItemKind::DeviceInput:
      return follows ? Screen::FennlinkPilots : ActionScreen(use.User, group);
    case ItemKind::Timer:
      return group                               ? Screen::TimerToGroupControl
             : use.Used.Kind == ItemKind::Preset ? Screen::TimerToPresetControl
                                                 : Screen::TimerToRelayControl;
    case ItemKind::Group:
      return Screen::RelayGrouping;
    case ItemKind::Preset:
      return Screen::EditPresets;
    case ItemKind::DimmerOutput:
      return use.Used.Kind == ItemKind::Relay ? Screen::DimmerRelayControl : Screen::DimmerOutput;
    default:
      return group ? Screen::OffHoursSweepGroups : Screen::OffHoursSweepRelays;
  }
}

QString InputTypeWord(const Project& project, const Item& input) {
  if (input.Kind == ItemKind::Input) {
    return ToUnicode(Word(InputTypes, project.Panel.InputType(input.Number)));
  }
  const FennlinkRecord& device = project.Devices(input.Number);
  return ToUnicode(FennlinkInputCaption(device.DeviceType, device.DeviceInputType(input.Part)));
}
