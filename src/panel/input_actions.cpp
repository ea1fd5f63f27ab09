#include "panel/input_actions.h"

#include <algorithm>

#include "panel/fennlink_types.h"

namespace {

using enum InputKind;

constexpr ControlAction NoAction{"No Action", 0, ""};

constexpr auto SwitchTable = std::to_array<ControlAction>({
    NoAction,
    {"On Only", EffectOn, "turns on"},
    {"Off Only", EffectOff, "turns off"},
    {"On And Off", EffectOnOff, "turns on and off"},
    {"Blink Alert", EffectOnOff, "turns on, and off with a warning"},
});
constexpr auto NothingTable = std::to_array<ControlAction>({{".", 0, ""}});
constexpr auto TimedOnTable =
    std::to_array<ControlAction>({NoAction, {"Timed On", EffectOnOff, "turns on for a time"}});
constexpr auto BiLevelTable = std::to_array<ControlAction>({
    NoAction,
    {"On-Off", EffectOnOff, "turns on and off"},
    {"Hi-Lo(NO)", EffectOnOff, "switches between high and low (NO)"},
    {"Hi-Lo(NC)", EffectOnOff, "switches between high and low (NC)"},
});
constexpr auto StepTable = std::to_array<ControlAction>({
    NoAction,
    {"Step A", EffectOnOff, "switches as step A"},
    {"Step B", EffectOnOff, "switches as step B"},
});
constexpr auto DisableTable =
    std::to_array<ControlAction>({NoAction, {"Disable", EffectDisables, "disables"}});
constexpr auto OverrideTable = std::to_array<ControlAction>({
    NoAction,
    {"Hold On", EffectOn | EffectDisables, "holds on"},
    {"Hold Off", EffectOff | EffectDisables, "holds off"},
    {"Hold Status", EffectDisables, "holds as it is"},
});
constexpr auto ForceTable =
    std::to_array<ControlAction>({NoAction, {"Force", EffectRuns, "forces"}});

/// The words of a table of actions.
template <const auto& Table>
constexpr auto ActionWords = [] {
  std::array<std::string_view, Table.size()> words;
  for (std::size_t i = 0; i < words.size(); ++i) words[i] = Table[i].Word;
  return words;
}();

/// The first `count` actions of a table, all of them unless told otherwise.
template <const auto& Table>
constexpr ControlOptions Offered(ControlRows rows, std::size_t count = Table.size()) {
  return {WordTable(ActionWords<Table>).first(count), std::span(Table).first(count), rows};
}

constexpr std::size_t WithoutBlink = 4;

/// By InputKind: the actions and what they act on in the relay table. A kind that acts on relays
/// acts on groups in the group table; the others have nothing there.
constexpr auto ActionTable = std::to_array<ControlOptions>({
    Offered<SwitchTable>(ControlRows::Relays),                // Momentary On/Off
    Offered<SwitchTable>(ControlRows::Relays, WithoutBlink),  // Momentary PB
    Offered<SwitchTable>(ControlRows::Relays),                // Maint. On/Off
    Offered<SwitchTable>(ControlRows::Relays, WithoutBlink),  // Maint. Multi-Way
    Offered<NothingTable>(ControlRows::None),                 // Set Preset
    Offered<TimedOnTable>(ControlRows::Relays),               // Timed On
    Offered<BiLevelTable>(ControlRows::Relays),               // HID Bi-Level
    Offered<StepTable>(ControlRows::Relays),                  // 2 Step
    Offered<StepTable>(ControlRows::Relays),                  // 4 Step
    Offered<DisableTable>(ControlRows::Inputs),               // Input Disable
    Offered<DisableTable>(ControlRows::Timers),               // Timer Disable
    Offered<OverrideTable>(ControlRows::Relays),              // Output Override
    Offered<ForceTable>(ControlRows::Timers),                 // Force Timer
});
static_assert(ActionTable.size() == InputTypes.size());

constexpr auto ButtonKinds =
    std::to_array<InputKind>({MomentaryPB, SetPreset, TimedOn, TwoStep, FourStep});
constexpr auto FourInputKinds =
    std::to_array<InputKind>({MomentaryOnOff, MomentaryPB, MaintOnOff, SetPreset, TimedOn,
                              HIDBiLevel, TwoStep, FourStep, TimerDisable, OutputOverride});
constexpr auto EightInputKinds =
    std::to_array<InputKind>({MaintOnOff, SetPreset, TimedOn, TwoStep, FourStep});

}  // namespace

ControlOptions KindControlOptions(InputKind kind, ControlTable table) {
  ControlOptions options = ActionTable[static_cast<std::size_t>(kind)];
  if (table == ControlTable::Relay) return options;
  if (options.Rows != ControlRows::Relays) return Offered<NothingTable>(ControlRows::None);
  options.Rows = ControlRows::Groups;
  return options;
}

std::optional<InputKind> LocalInputKind(int inputType) {
  if (inputType < 0 || static_cast<std::size_t>(inputType) >= ActionTable.size()) return {};
  return static_cast<InputKind>(inputType);
}

std::span<const InputKind> FennlinkInputKinds(int deviceType) {
  if (deviceType >= 1 && deviceType <= LargestButtonStation) return ButtonKinds;
  if (deviceType == DeviceType4Input) return FourInputKinds;
  if (deviceType == DeviceType8Input) return EightInputKinds;
  return {};
}

std::optional<InputKind> FennlinkInputKind(int deviceType, int deviceInputType) {
  const auto kinds = FennlinkInputKinds(deviceType);
  if (deviceInputType < 0 || static_cast<std::size_t>(deviceInputType) >= kinds.size()) return {};
  return kinds[static_cast<std::size_t>(deviceInputType)];
}

int FennlinkTimedOnIndex(int deviceType) {
  const auto kinds = FennlinkInputKinds(deviceType);
  const auto found = std::find(kinds.begin(), kinds.end(), TimedOn);
  return found == kinds.end() ? -1 : static_cast<int>(found - kinds.begin());
}

std::string_view FennlinkListText(InputKind kind) {
  return kind == MaintOnOff ? "Maintained On/Off" : Word(InputTypes, static_cast<int>(kind));
}

std::string_view FennlinkInputCaption(int deviceType, int deviceInputType) {
  if (deviceType == DeviceTypePhotocell) return FennlinkListText(MaintOnOff);
  const int wrapped = deviceType == DeviceType4Input
                          ? deviceInputType
                          : deviceInputType % static_cast<int>(ButtonKinds.size());
  const auto kind = FennlinkInputKind(deviceType, wrapped);
  return kind ? Word(InputTypes, static_cast<int>(*kind)) : std::string_view();
}

std::optional<ControlOptions> LocalControlOptions(int inputType, ControlTable table) {
  const auto kind = LocalInputKind(inputType);
  if (!kind) return {};
  return KindControlOptions(*kind, table);
}

std::optional<ControlOptions> FennlinkControlOptions(int deviceType, int deviceInputType,
                                                     ControlTable table) {
  if (deviceType == DeviceTypePhotocell) return KindControlOptions(MaintOnOff, table);
  const auto kind = FennlinkInputKind(deviceType, deviceInputType);
  if (!kind) return {};
  const bool withoutBlink = deviceType == DeviceType8Input && *kind == MaintOnOff;
  return KindControlOptions(withoutBlink ? MomentaryPB : *kind, table);
}
