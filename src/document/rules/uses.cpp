#include "document/rules/uses.h"

#include <algorithm>

#include "dimmer/rules/dimmer_model.h"
#include "panel/code_page.h"
#include "panel/fennlink_record.h"
#include "panel/fennlink_types.h"
#include "panel/input_actions.h"
#include "panel/panel_record.h"
#include "panel/pilot_code.h"
#include "panel/pilot_source.h"

using namespace Qt::Literals::StringLiterals;

namespace {

struct ActionMeaning {
  std::string_view Action;
  unsigned Effect;
  QLatin1StringView Words;
};

/// By the words of the action lists.
constexpr auto ActionMeanings = std::to_array<ActionMeaning>({
    {"On Only", EffectOn, "turns on"_L1},
    {"Off Only", EffectOff, "turns off"_L1},
    {"On And Off", EffectOn | EffectOff, "turns on and off"_L1},
    {"Blink Alert", EffectOff, "blinks and turns off"_L1},
    {"Timed On", EffectOn | EffectOff, "turns on for a time"_L1},
    {"On-Off", EffectOn | EffectOff, "turns on and off"_L1},
    {"Hi-Lo(NO)", EffectOn | EffectOff, "switches between high and low (NO)"_L1},
    {"Hi-Lo(NC)", EffectOn | EffectOff, "switches between high and low (NC)"_L1},
    {"Step A", EffectOn | EffectOff, "switches as step A"_L1},
    {"Step B", EffectOn | EffectOff, "switches as step B"_L1},
    {"Disable", EffectDisables, "disables"_L1},
    {"Hold On", EffectOn | EffectDisables, "holds on"_L1},
    {"Hold Off", EffectOff | EffectDisables, "holds off"_L1},
    {"Hold Status", EffectDisables, "holds as it is"_L1},
    {"Force", EffectRuns, "forces"_L1},
});

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
      const std::string_view action = Word(options->Actions, code);
      for (const ActionMeaning& meaning : ActionMeanings) {
        if (meaning.Action == action) {
          Add(input, {KindOfRows(options->Rows), row}, meaning.Effect, meaning.Words);
        }
      }
    }
  }

  /// Which item a pilot's number counts is told by its source; others follow nothing.
  void AddPilot(const Item& input, int source, int number) {
    constexpr ItemKind kinds[] = {ItemKind::Relay, ItemKind::Group, ItemKind::Preset};
    if (source < PilotRelay || source > PilotPreset) return;
    Add(input, {kinds[source - PilotRelay], number}, EffectFollows, "has a pilot that follows"_L1);
  }

  std::vector<Use> Take() { return std::move(uses_); }

 private:
  std::vector<Use> uses_;
};

constexpr auto Activates = "activates"_L1;

void AddLocalInputs(UseList& uses) {
  const auto& panel = PanelRecord;
  for (int input = 0; input < InstalledPoints(); ++input) {
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

void AddDeviceInputs(UseList& uses) {
  for (int n = 1; n <= DeviceCount; ++n) {
    const FennlinkRecord& device = FennlinkRecords(n);
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

void AddTimersGroupsAndPresets(UseList& uses) {
  const auto& panel = PanelRecord;
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

void AddSlot(UseList& uses, const Item& output, Int16 dev, Int16 out, Int16 slot) {
  constexpr auto words = "is controlled by"_L1;
  const int number = DimGetCtlNumber(dev, out, slot);
  switch (DimGetCtlType(dev, out, slot)) {
    case ControlInput:
    case ControlInvertInput: {
      const int device = DimGetCtlDevice(dev, out, slot);
      const Item input =
          device == 0 ? Item{ItemKind::Input, number} : Item{ItemKind::DeviceInput, device, number};
      uses.Add(output, input, EffectFollows, words);
      break;
    }
    case ControlTimer:
      uses.Add(output, {ItemKind::Timer, number}, EffectFollows, words);
      break;
    case ControlPreset:
      uses.Add(output, {ItemKind::Preset, number}, EffectFollows, words);
      break;
    default:
      break;
  }
}

void AddDimmers(UseList& uses) {
  for (Int16 dev = 0; dev < DimmerDeviceCount; ++dev) {
    if (DimGetEnabled(dev) == 0) continue;
    for (Int16 out = 0; out < DimmerOutputCount; ++out) {
      const Item output{ItemKind::DimmerOutput, dev, out};
      for (Int16 slot = 0; slot < ControlSlotCount; ++slot) AddSlot(uses, output, dev, out, slot);
      for (Int16 relay = 0; relay < ItemCount; ++relay) {
        if (DimGetRelay(dev, out, relay) == 0) continue;
        uses.Add(output, {ItemKind::Relay, relay}, EffectFollows, "follows"_L1);
      }
      if (DimGetTrackMode(dev, out) != TrackDisabled || DimGetMinPC(dev, out) != 0 ||
          DimGetMaxPC(dev, out) != 0) {
        uses.Add(output, {ItemKind::Device, DimGetPCDev(dev, out) + 1}, EffectFollows, "tracks"_L1);
      }
    }
  }
}

}  // namespace

int InstalledPoints() {
  constexpr int pointsOfBlock = 4;
  int points = 0;
  for (int node = 0; node < NodeCount; ++node) points += PanelRecord.IOCount(node) * pointsOfBlock;
  return std::clamp(points, 0, ItemCount);
}

std::vector<Use> UsesOfProject() {
  UseList uses;
  AddLocalInputs(uses);
  AddDeviceInputs(uses);
  AddTimersGroupsAndPresets(uses);
  AddDimmers(uses);
  return uses.Take();
}

QString SentenceOf(const Use& use) {
  return ItemText(use.User) + u' ' + use.Words + u' ' + ItemText(use.Used);
}

std::string_view ActionScreen(const Item& input, bool groups) {
  if (input.Kind == ItemKind::Input) {
    return groups ? "frmT3InputToGroupControl" : "frmT3InputToRelayControl";
  }
  return groups ? "frmT3FennlinkInputToGroupControl" : "frmT3FennlinkInputToRelayControl";
}

std::string_view ScreenOf(const Use& use) {
  const bool group = use.Used.Kind == ItemKind::Group;
  const bool follows = (use.Effect & EffectFollows) != 0;
  switch (use.User.Kind) {
    case ItemKind::Input:
      return follows ? "frmT3LocalInputPilots" : ActionScreen(use.User, group);
    case ItemKind::DeviceInput:
      return follows ? "frmT3FennlinkPilots" : ActionScreen(use.User, group);
    case ItemKind::Timer:
      return group                               ? "frmT3TimerToGroupControl"
             : use.Used.Kind == ItemKind::Preset ? "frmT3TimerToPresetControl"
                                                 : "frmT3TimerToRelayControl";
    case ItemKind::Group:
      return "frmT3RelayGrouping";
    case ItemKind::Preset:
      return "frmT3EditPresets";
    case ItemKind::DimmerOutput:
      return use.Used.Kind == ItemKind::Relay ? "frmT3DimmerRelayControl" : "frmT3DimmerOutput";
    default:
      return group ? "frmT3OffHoursSweepGroups" : "frmT3OffHoursSweepRelays";
  }
}

QString InputTypeWord(const Item& input) {
  if (input.Kind == ItemKind::Input) {
    return ToUnicode(Word(InputTypes, PanelRecord.InputType(input.Number)));
  }
  const FennlinkRecord& device = FennlinkRecords(input.Number);
  return ToUnicode(FennlinkInputCaption(device.DeviceType, device.DeviceInputType(input.Part)));
}
