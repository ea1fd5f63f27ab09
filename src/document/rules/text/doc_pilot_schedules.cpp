#include "document/rules/text/doc_sections.h"
#include "panel/code_page.h"
#include "panel/fennlink_record.h"
#include "panel/fennlink_types.h"
#include "panel/field_facts.h"
#include "panel/panel_record.h"
#include "panel/pilot_code.h"
#include "panel/words.h"

namespace {

/// The local schedule lines its targets up; the bus schedule puts two blanks behind each.
std::string LinedUp(std::string_view target) {
  std::string word(target);
  word.resize(7, ' ');
  return word;
}

}  // namespace

void DocLocalInputPilotSchedule(DocumentText& text, const Project& project) {
  const auto& panel = project.Panel;
  text.Title("Local Input Pilot Schedule");
  text.Header({"Input Number", "Input Name", "Pilot"});
  const int ioCount = PanelIOCount(project.Panel);
  for (int input = 0; input < ioCount; ++input) {
    const Int16 pilot = panel.LocalPilot(input);
    const std::string_view source = Word(LocalPilotSources, PilotSource(pilot));
    if (source.empty()) continue;
    text.Cell(input + 1, 2).Cell(panel.InputName(input));
    text.Cell(LinedUp(PilotTarget(source))).Number(PilotNumber(pilot) + 1, 2);
    text.InSheet([&] { return FromUnicode(told::LocalPilot(project, {}, pilot)); }).EndRow();
  }
}

void DocFennlinkPilotSchedule(DocumentText& text, const Project& project) {
  text.Title("Fennlink Pilot Schedule");
  text.Header({"Fennlink Device", "Fennlink Input", "Pilot"});
  for (int d = 0; d <= DeviceCount; ++d) {
    const FennlinkRecord& device = project.Devices(d);
    if (device.DeviceType == DeviceTypePhotocell) continue;
    const int inputs = FennlinkDevice(device.DeviceType).DocumentInputs;
    for (int input = 0; input < inputs; ++input) {
      const Int16 pilot = device.DevicePilot(input);
      const int source = PilotSource(pilot);
      text.Cell(d, 2).Cell(d, 2).Text(".").Number(input + 1).Cell();
      const std::string_view word = Word(FennlinkPilotSources, source);
      if (!word.empty()) text.Text(PilotTarget(word)).Text("  ");
      if (source == 0) text.Text((pilot & 1) != 0 ? "On" : "Off");
      if (source != 0 && !word.empty()) text.Number(PilotNumber(pilot) + 1, 2);
      text.InSheet([&] { return FromUnicode(told::DevicePilot(project, {}, pilot)); }).EndRow();
    }
  }
}
