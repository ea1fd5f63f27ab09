#include "document/rules/text/doc_sections.h"
#include "panel/fennlink_record.h"
#include "panel/fennlink_types.h"
#include "panel/input_actions.h"
#include "panel/panel_record.h"
#include "panel/words.h"

namespace {

/// Takes the word of a code; a code without one leaves the word of the row before.
void Follow(std::string_view& word, WordTable table, int code) {
  const std::string_view next = Word(table, code);
  if (!next.empty()) word = next;
}

/// The items of a cell; in a spreadsheet those of them alone that act on what the row is for. The
/// cells of a Timer Disable input stand for timers, and the document tells them all the same.
template <typename AddItems>
void ControlCell(DocumentText& text, AddItems addItems) {
  addItems(text.Cell(), false);
  text.InSheet([&] {
    DocumentText sheet;
    addItems(sheet.Cell(), true);
    return sheet.Take();
  });
}

bool IsOf(const std::optional<ControlOptions>& options, ControlTable table) {
  const ControlRows rows = table == ControlTable::Relay ? ControlRows::Relays : ControlRows::Groups;
  return options && options->Rows == rows;
}

/// The bus inputs with an action on `row` of the given table, in one cell.
void FennlinkControlCell(DocumentText& text, const FennlinkRecordsType& devices, ControlTable kind,
                         DeviceControlTable FennlinkRecord::*table, int row) {
  ControlCell(text, [&](DocumentText& cell, bool acting) {
    for (int d = 0; d <= DeviceCount; ++d) {
      const FennlinkRecord& device = devices(d);
      if (device.DeviceType == 0) continue;
      for (int input = 0; input < DeviceInputCount; ++input) {
        const auto acts = [&] {
          return IsOf(
              FennlinkControlOptions(device.DeviceType, device.DeviceInputType(input), kind), kind);
        };
        if ((device.*table)(input, row) != 0 && (!acting || acts())) cell.FennlinkItem(d, input);
      }
    }
  });
}

/// The local inputs and timers that act on `row` of the given tables, in one cell.
void LocalControlCell(DocumentText& text, const PanelRecordType& panel, ControlTable kind,
                      const ItemTable& inputs, const ItemTable& timers, int row) {
  ControlCell(text, [&](DocumentText& cell, bool acting) {
    cell.Items("I", PanelIOCount(panel), [&](int input) {
      return inputs(input, row) != 0 &&
             (!acting || IsOf(LocalControlOptions(panel.InputType(input), kind), kind));
    });
    cell.Items("T", ItemCount, [&](int timer) { return timers(timer, row) != 0; });
  });
}

}  // namespace

void DocRelaySchedule(DocumentText& text, const Project& project) {
  const auto& panel = project.Panel;
  text.Title("Relay Schedule");
  text.Header({"Relay", "Relay Name", "Voltage", "Circuit", "Power On", "Timer Type",
               "Local Control", "Fennlink Control", "Groups", "Presets"});
  const int ioCount = PanelIOCount(project.Panel);
  std::string_view powerOn;
  std::string_view timerType;
  for (int relay = 0; relay < ioCount; ++relay) {
    Follow(powerOn, RelayPowerOnTypes, panel.RelayPowerOnType(relay));
    Follow(timerType, RelayTimerTypes, panel.RelayTimerType(relay));
    text.Cell(relay + 1, 2).Cell(panel.RelayName(relay));
    text.Skip(2);  // voltage and circuit are for the reader's pen
    text.Cell(powerOn).Cell(timerType);
    LocalControlCell(text, panel, ControlTable::Relay, panel.InputRelayControl,
                     panel.TimerRelayControl, relay);
    FennlinkControlCell(text, project.Devices, ControlTable::Relay,
                        &FennlinkRecord::DeviceRelayControl, relay);
    text.Cell().Items("G", ItemCount,
                      [&](int group) { return panel.GroupRelayInclude(group, relay) != 0; });
    text.Cell().Items("P", ItemCount,
                      [&](int preset) { return panel.PresetRelayControl(preset, relay) != 0; });
    text.EndRow();
  }
}

void DocGroupSchedule(DocumentText& text, const Project& project) {
  const auto& panel = project.Panel;
  text.Title("Group Schedule");
  text.Header({"Group", "Group Name", "Local Control", "Fennlink Control", "Relays"});
  const int ioCount = PanelIOCount(project.Panel);
  for (int group = 0; group < ItemCount; ++group) {
    text.Cell(group + 1, 2).Cell(panel.GroupName(group));
    LocalControlCell(text, panel, ControlTable::Group, panel.InputGroupControl,
                     panel.TimerGroupControl, group);
    FennlinkControlCell(text, project.Devices, ControlTable::Group,
                        &FennlinkRecord::DeviceGroupControl, group);
    text.Cell().Items("R", ioCount,
                      [&](int relay) { return panel.GroupRelayInclude(group, relay) != 0; });
    text.EndRow();
  }
}
