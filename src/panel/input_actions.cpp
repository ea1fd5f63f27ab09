#include "panel/input_actions.h"

#include <algorithm>

#include "panel/fennlink_types.h"

namespace {

using enum InputKind;

constexpr auto SwitchActions = std::to_array<std::string_view>(
    {"No Action", "On Only", "Off Only", "On And Off", "Blink Alert"});
constexpr auto NoActions = std::to_array<std::string_view>({"."});
constexpr auto TimedOnActions = std::to_array<std::string_view>({"No Action", "Timed On"});
constexpr auto BiLevelActions =
    std::to_array<std::string_view>({"No Action", "On-Off", "Hi-Lo(NO)", "Hi-Lo(NC)"});
constexpr auto StepActions = std::to_array<std::string_view>({"No Action", "Step A", "Step B"});
constexpr auto DisableActions = std::to_array<std::string_view>({"No Action", "Disable"});
constexpr auto OverrideActions =
    std::to_array<std::string_view>({"No Action", "Hold On", "Hold Off", "Hold Status"});
constexpr auto ForceActions = std::to_array<std::string_view>({"No Action", "Force"});

constexpr auto ActionsWithBlink = WordTable(SwitchActions);
constexpr auto ActionsWithoutBlink = WordTable(SwitchActions).first(4);

/// By InputKind: the actions and what they act on in the relay table. A kind that acts on relays
/// acts on groups in the group table; the others have nothing there.
constexpr auto ActionTable = std::to_array<ControlOptions>({
    {ActionsWithBlink, ControlRows::Relays},     // Momentary On/Off
    {ActionsWithoutBlink, ControlRows::Relays},  // Momentary PB
    {ActionsWithBlink, ControlRows::Relays},     // Maint. On/Off
    {ActionsWithoutBlink, ControlRows::Relays},  // Maint. Multi-Way
    {NoActions, ControlRows::None},              // Set Preset
    {TimedOnActions, ControlRows::Relays},       // Timed On
    {BiLevelActions, ControlRows::Relays},       // HID Bi-Level
    {StepActions, ControlRows::Relays},          // 2 Step
    {StepActions, ControlRows::Relays},          // 4 Step
    {DisableActions, ControlRows::Inputs},       // Input Disable
    {DisableActions, ControlRows::Timers},       // Timer Disable
    {OverrideActions, ControlRows::Relays},      // Output Override
    {ForceActions, ControlRows::Timers},         // Force Timer
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
  if (options.Rows != ControlRows::Relays) return {NoActions, ControlRows::None};
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
