#include <optional>

#include "document/rules/text/doc_sections.h"
#include "panel/fennlink_record.h"
#include "panel/fennlink_types.h"
#include "panel/input_actions.h"
#include "panel/panel_record.h"

namespace {

/// The cell of the input's kind; empty for an input without one.
void KindCell(DocumentText& text, std::optional<InputKind> kind, int timedOnMinutes) {
  text.Cell();
  if (!kind) return;
  text.Text(Word(InputTypes, static_cast<int>(*kind)));
  if (*kind == InputKind::TimedOn) text.Text(" ").Number(timedOnMinutes, 3).Text(" Min");
}

/// What an input acts on, in one cell. `relayCell` and `groupCell` read the input's row of the two
/// control tables.
template <typename RelayCell, typename GroupCell>
void ControlCell(DocumentText& text, int ioCount, std::optional<InputKind> kind, int preset,
                 RelayCell relayCell, GroupCell groupCell) {
  text.Cell();
  if (!kind) return;
  if (*kind == InputKind::SetPreset) text.Item("P", preset + 1);
  switch (KindControlOptions(*kind, ControlTable::Relay).Rows) {
    case ControlRows::Relays:
      text.Items("R", ioCount, relayCell).Items("G", ItemCount, groupCell);
      break;
    case ControlRows::Inputs:
      text.Items("I", ioCount, relayCell);
      break;
    case ControlRows::Timers:
      text.Items("T", ItemCount, relayCell);
      break;
    case ControlRows::Groups:
    case ControlRows::None:
      break;
  }
}

void FennlinkInputRow(DocumentText& text, const FennlinkRecord& device, int ioCount, int d,
                      int input) {
  const FennlinkDeviceType& type = FennlinkDevice(device.DeviceType);
  const auto relayCell = [&](int row) { return device.DeviceRelayControl(input, row) != 0; };
  const auto groupCell = [&](int row) { return device.DeviceGroupControl(input, row) != 0; };

  text.DeviceCell(d);
  text.Cell(type.DocumentText.empty() ? type.ListText : type.DocumentText);
  text.DeviceInputCell(d, input);
  const auto kind = FennlinkInputKind(device.DeviceType, device.DeviceInputType(input));
  KindCell(text, kind, device.DeviceTimedOnTime(input));
  if (device.DeviceType == DeviceTypePhotocell) {
    text.Cell("Off:").Number(device.DeviceOffLevel(input), 3);
    text.Text("% On:").Number(device.DeviceOnLevel(input), 3).Text("%");
    text.Items("R", ioCount, relayCell);
  } else {
    ControlCell(text, ioCount, kind, device.DevicePreset(input), relayCell, groupCell);
  }
  text.EndRow();
}

}  // namespace

void DocLocalInputSchedule(DocumentText& text, const Project& project) {
  const auto& panel = project.Panel;
  text.Title("Local Input Schedule");
  text.Header(
      {"Input Number", "Input Name", "Input Type", "Enable Time", "Disable Time", "Control"});
  const int ioCount = PanelIOCount(project.Panel);
  for (int input = 0; input < ioCount; ++input) {
    const auto kind = LocalInputKind(panel.InputType(input));
    text.Cell(input + 1, 2).Cell(panel.InputName(input));
    KindCell(text, kind, panel.InputTimedOnTime(input));
    text.Cell().QuarterHours(panel.InputEnableTime(input));
    text.Cell().QuarterHours(panel.InputDisableTime(input));
    ControlCell(
        text, ioCount, kind, panel.InputPreset(input),
        [&](int row) { return panel.InputRelayControl(input, row) != 0; },
        [&](int row) { return panel.InputGroupControl(input, row) != 0; });
    text.EndRow();
  }
}

void DocFennlinkInputSchedule(DocumentText& text, const Project& project) {
  text.Title("Fennlink Input Schedule");
  text.Header(
      {"Fennlink Device", "Fennlink Device Type", "Fennlink Input", "Input Type", "Control"});
  const int ioCount = PanelIOCount(project.Panel);
  for (int d = 0; d <= DeviceCount; ++d) {
    const FennlinkRecord& device = project.Devices(d);
    const int inputs = FennlinkDevice(device.DeviceType).DocumentInputs;
    for (int input = 0; input < inputs; ++input) FennlinkInputRow(text, device, ioCount, d, input);
  }
}
