#include "document/rules/text/doc_sections.h"
#include "panel/fennlink_record.h"
#include "panel/panel_record.h"
#include "panel/words.h"

namespace {

/// Takes the word of a code; a code without one leaves the word of the row before.
void Follow(std::string_view& word, WordTable table, int code) {
  const std::string_view next = Word(table, code);
  if (!next.empty()) word = next;
}

/// The bus inputs with an action on `row` of the given table, in one cell.
void FennlinkControlCell(DocumentText& text, const FennlinkRecordsType& devices,
                         DeviceControlTable FennlinkRecord::*table, int row) {
  text.Cell();
  for (int d = 0; d <= DeviceCount; ++d) {
    const FennlinkRecord& device = devices(d);
    if (device.DeviceType == 0) continue;
    for (int input = 0; input < DeviceInputCount; ++input) {
      if ((device.*table)(input, row) != 0) text.FennlinkItem(d, input);
    }
  }
}

/// The local inputs and timers that act on `row` of the given tables, in one cell.
void LocalControlCell(DocumentText& text, int ioCount, const ItemTable& inputs,
                      const ItemTable& timers, int row) {
  text.Cell();
  text.Items("I", ioCount, [&](int input) { return inputs(input, row) != 0; });
  text.Items("T", ItemCount, [&](int timer) { return timers(timer, row) != 0; });
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
    LocalControlCell(text, ioCount, panel.InputRelayControl, panel.TimerRelayControl, relay);
    FennlinkControlCell(text, project.Devices, &FennlinkRecord::DeviceRelayControl, relay);
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
    LocalControlCell(text, ioCount, panel.InputGroupControl, panel.TimerGroupControl, group);
    FennlinkControlCell(text, project.Devices, &FennlinkRecord::DeviceGroupControl, group);
    text.Cell().Items("R", ioCount,
                      [&](int relay) { return panel.GroupRelayInclude(group, relay) != 0; });
    text.EndRow();
  }
}
