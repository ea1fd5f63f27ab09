#include "document/rules/text/doc_sections.h"
#include "panel/format.h"
#include "panel/hex.h"
#include "panel/panel_record.h"
#include "panel/words.h"

namespace {

void WordLine(DocumentText& text, std::string_view label, std::string_view word) {
  if (!word.empty()) text.Cell(label).Cell(word).EndRow();
}

void NumberLine(DocumentText& text, std::string_view label, int number, int digits = 1) {
  text.Cell(label).Cell(number, digits).EndRow();
}

void DegreesLine(DocumentText& text, std::string_view label, int degrees, const char* unit) {
  text.Cell(label).Cell(degrees, 3).InSheet([&] { return NumberText(degrees) + unit; }).EndRow();
}

void NodeLines(DocumentText& text, const Project& project) {
  int last = 0;
  for (int node = 0; node < NodeCount; ++node) {
    text.Cell("Node ").Text(HexByte(node + 1).substr(1));
    const int points = project.Panel.IOCount(node) * PointsOfBlock;
    if (points == 0) {
      text.Cell("No I/O").EndRow();
      continue;
    }
    text.Cell(points, 2).Text(" I/O");
    text.Cell(last + 1, 2).Text("-").Number(last + points, 2).EndRow();
    last += points;
  }
}

void DaylightSavingLines(DocumentText& text, const Project& project) {
  const auto& panel = project.Panel;
  WordLine(text, "Automatic DST Adjustment", panel.DSTEnabled != 0 ? "Enabled" : "Disabled");
  if (panel.DSTEnabled == 0) return;
  const auto monthWord = [](Int16 month) { return ShortName(Word(MonthNames, month - 1)); };
  WordLine(text, "DST Start Week", Word(DSTWeeks, panel.DSTStartWeek - 1));
  WordLine(text, "DST Start Month", monthWord(panel.DSTStartMonth));
  WordLine(text, "DST End Week", Word(DSTWeeks, panel.DSTEndWeek - 1));
  WordLine(text, "DST End Month", monthWord(panel.DSTEndMonth));
}

void AddOnLines(DocumentText& text, const Project& project) {
  const auto& panel = project.Panel;
  if (panel.AddOnModuleType == AddOnModuleDMX) {
    NumberLine(text, "DMX Off Level(%)", panel.DMXOffLevel, 3);
    NumberLine(text, "DMX On  Level(%)", panel.DMXOnLevel, 3);
    // The editor counts from 1.
    text.Cell("DMX Filter").Cell(panel.DMXFilter, 2).InSheet([&] {
      return NumberText(panel.DMXFilter + 1);
    });
    text.EndRow();
  }
  if (panel.AddOnModuleType == AddOnModuleModBus) {
    WordLine(text, "MODBus Protocol", Word(ModBusModes, panel.ModBusMode));
    WordLine(text, "MODBus Baud Rate", Word(ModBusBauds, panel.ModBusBaud));
    WordLine(text, "MODBus Parity", Word(ModBusParities, panel.ModBusParity));
  }
}

}  // namespace

void DocPanelSettings(DocumentText& text, const Project& project) {
  const auto& panel = project.Panel;
  text.Title("Panel Settings");
  text.Cell("Panel Name").Cell(panel.PanelName).EndRow();
  NumberLine(text, "I/O Count", PanelIOCount(project.Panel), 2);
  NodeLines(text, project);
  WordLine(text, "AddOn Module Type", AddOnModuleOf(panel.AddOnModuleType).DocumentWord);
  DegreesLine(text, "Latitude", panel.Latitude, " degrees north");
  DegreesLine(text, "Longitude", panel.Longitude, " degrees west");
  WordLine(text, "Time Zone", Word(TimeZones, panel.TimeZone));
  DaylightSavingLines(text, project);
  NumberLine(text, "Blink Alert (Min)", panel.BlinkAlertMinutes, 3);
  NumberLine(text, "Override (Min)", panel.OverrideMinutes, 3);
  NumberLine(text, "Alarm (Sec)", panel.AlarmSeconds, 3);
  WordLine(text, TimedOnOperationLead, Word(TimedOnOperations, panel.TimedOnOperation != 0));
  NumberLine(text, "Off Hours Sweep Interval (Hours)", panel.OffHoursSweepInterval + 1);
  WordLine(text, "Photocell Filter Time (Seconds)",
           FirstWord(Word(PhotocellFilters, panel.PhotocellFilter != 0)));
  NumberLine(text, "Comm Port: ", panel.ComPort);
  WordLine(text, "Connection Type", "RS232");  // also for the links that came later
  AddOnLines(text, project);
}
