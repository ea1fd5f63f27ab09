#include <algorithm>

#include "document/rules/check/check.h"
#include "document/rules/report/report_writer.h"
#include "document/rules/text/doc_file.h"
#include "panel/defaults.h"
#include "panel/difference.h"
#include "panel/live_dimmers.h"
#include "panel/live_project.h"
#include "panel/project_file.h"
#include "ratio.h"

namespace {

constexpr DocumentChoice AllSections = [] {
  DocumentChoice all{};
  for (bool& chosen : all) chosen = true;
  return all;
}();

/// Switches everything on for the first `relays` relays and for every device and dimmer.
void FillPanel(int relays) {
  LoadDefaults();
  auto& panel = PanelRecord;
  panel.AddOnModuleType = 1;
  panel.IOCount.elements.fill(0);
  for (int i = 0; i < relays / 4; ++i) ++panel.IOCount(i % NodeCount);
  for (ItemTable* table :
       {&panel.InputRelayControl, &panel.InputGroupControl, &panel.GroupRelayInclude,
        &panel.TimerRelayControl, &panel.TimerGroupControl, &panel.TimerPresetControl,
        &panel.PresetRelayControl}) {
    table->elements.fill(1);
  }
  for (FennlinkRecord& device : FennlinkRecords.elements) {
    device.DeviceType = 8;
    device.DeviceRelayControl.elements.fill(1);
    device.DeviceGroupControl.elements.fill(1);
  }
  for (Int16 dev = 0; dev < DimmerDeviceCount; ++dev) {
    DimSetEnabled(dev, 1);
    for (Int16 out = 0; out < DimmerOutputCount; ++out) {
      DimSetTrackMode(dev, out, 3);
      for (Int16 slot = 0; slot < ControlSlotCount; ++slot) DimSetCtlType(dev, out, slot, 1);
      for (Int16 relay = 0; relay < ItemCount; ++relay) DimSetRelay(dev, out, relay, 1);
    }
  }
}

/// Names for all, and relays that differ.
void NameItems() {
  auto& panel = PanelRecord;
  for (Int16 i = 0; i < ItemCount; ++i) {
    const std::string number = std::to_string(i + 100);
    panel.RelayName(i) = "ROOM " + number;
    panel.GroupName(i) = "FLOOR " + number;
    panel.InputName(i) = "SWITCH " + number;
    panel.TimerName(i) = "EVENING " + number;
    panel.PresetName(i) = "SCENE " + number;
    panel.RelayPowerOnType(i) = i % 4;
  }
}

/// Leaves every second use, so that no report can tell items in a row as one.
void UseEverySecond() {
  auto& panel = PanelRecord;
  const auto thin = [](auto& table) {
    for (std::size_t i = 0; i < table.elements.size(); i += 2) table.elements[i] = 0;
  };
  for (ItemTable* table :
       {&panel.InputRelayControl, &panel.InputGroupControl, &panel.GroupRelayInclude,
        &panel.TimerRelayControl, &panel.TimerGroupControl, &panel.TimerPresetControl,
        &panel.PresetRelayControl}) {
    thin(*table);
  }
  for (FennlinkRecord& device : FennlinkRecords.elements) {
    thin(device.DeviceRelayControl);
    thin(device.DeviceGroupControl);
  }
}

double Render(const DocumentChoice& chosen, int runs = 300) {
  const auto render = [&] {
    Keep(RenderDocument(LiveProject, CurrentFileName, "03:05 PM 07/04/2026", chosen).data());
  };
  return BestMicroseconds(render, runs);
}

}  // namespace

int main() {
  RatioReport report;
  LoadDefaults();
  const double empty = Render(AllSections);
  report.Within("document, new panel", empty / 1000, 1);
  FillPanel(ItemCount);
  const double full = Render(AllSections);
  report.Within("document, full panel", full / 1000, 10);

  const auto best = [](auto work) { return BestMicroseconds(work, 30); };
  // In turns, as a machine that is shared is slower for seconds.
  const auto runCheck = [] {
    Keep(CheckProject(LiveProject, {.FileEndsEarly = FileEndsEarly()}).data());
  };
  double check = best(runCheck);
  double document = full;
  for (int turn = 0; turn < 8; ++turn) {
    document = std::min(document, Render(AllSections, 60));
    check = std::min(check, best(runCheck));
  }
  report.Line("check, full panel", check, "two documents", 2 * document, 1.25);
  const Project one = LiveProject;
  Project other = one;
  other.Panel.InputRelayControl.elements.fill(2);
  report.Line("compare, alike", best([&] { Keep(CompareProjects(one, one, true).data()); }),
              "three documents", 3 * full, 1);
  report.Line("compare, a table differs",
              best([&] { Keep(CompareProjects(one, other, true).data()); }), "three documents",
              3 * full, 1);

  NameItems();
  const auto pdf = [] {
    const ReportFacts facts{.FileName = CurrentFileName, .Date = QDateTime(QDate(2026, 7, 4), {})};
    Keep(LoadReportWriter()->Pdf(BuildReport(LiveProject, facts), Paper::A4, {}).data());
  };
  report.Within("report, full panel", BestMicroseconds(pdf, 3) / 1000, 1000);
  UseEverySecond();
  report.Within("report, every second use", BestMicroseconds(pdf, 3) / 1000, 2500);
  FillPanel(ItemCount);
  const auto workbook = [] {
    Keep(LoadReportWriter()->Workbook(BuildSheets(LiveProject), {}).data());
  };
  report.Within("spreadsheet, full panel", BestMicroseconds(workbook, 2) / 1000, 100);

  // The relay section has as many rows as relays, each as long as what acts on the relay.
  DocumentChoice relaySection{};
  relaySection[1] = true;
  FillPanel(12);
  const double quarter = Render(relaySection);
  FillPanel(48);
  report.Line("relay section, 48 relays", Render(relaySection), "four times 12 relays", 4 * quarter,
              1.25);
  return report.ExitCode();
}
